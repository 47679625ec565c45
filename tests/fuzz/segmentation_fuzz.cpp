// Any text and any sequence of the reader's operations: all of them end, and nothing keeps a colour.

#include "textreader/text_reader.h"

#include "settings/memory_backend.h"
#include "settings/settings_store.h"
#include "textreader/memory_text_box.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace voxtrel;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void Operate(textreader::TextReader& reader, tests::MemoryTextBox& box, std::uint8_t operation)
{
    using Select = void (textreader::TextReader::*)();
    static constexpr Select kSelects[] = {&textreader::TextReader::SelectCurrentWord,
                                          &textreader::TextReader::SelectCurrentSentence,
                                          &textreader::TextReader::SelectCurrentParagraph,
                                          &textreader::TextReader::SelectNextWord,
                                          &textreader::TextReader::SelectNextSentence,
                                          &textreader::TextReader::SelectNextParagraph,
                                          &textreader::TextReader::SelectPreviousWord,
                                          &textreader::TextReader::SelectPreviousSentence,
                                          &textreader::TextReader::SelectPreviousParagraph,
                                          &textreader::TextReader::speakWindowText,
                                          &textreader::TextReader::PauseSpeech,
                                          &textreader::TextReader::ResumeSpeech,
                                          &textreader::TextReader::ResetToBlack,
                                          &textreader::TextReader::SpeakSelection};
    if (operation < std::size(kSelects)) {
        const Select select = kSelects[operation];
        (reader.*select)();
        return;
    }
    const auto place = static_cast<std::int32_t>(box.Text().size() * (operation % 16) / 15);
    if (operation < 128) {
        box.SetSelStart(place);
    } else if (operation < 160) {
        reader.agent1_Bookmark(100000 * (operation % 4 + 1) + place);
    } else if (operation < 170) {
        reader.agent1_Bookmark(textreader::kEndOfSection);
    } else {
        const auto rest = static_cast<std::int32_t>(box.Text().size()) - place;
        const textreader::TextEdit edit{place, std::min(rest, operation % 5), operation % 3};
        box.Edit(edit, std::wstring(static_cast<std::size_t>(edit.added), L'.'));
        reader.TextEdited(edit);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2 || size > 4096)
        return 0;
    const std::size_t operations = std::min<std::size_t>(data[0] % 32, size - 1);
    std::wstring text;
    for (std::size_t i = 1 + operations; i < size; ++i)
        text += static_cast<wchar_t>(data[i] < 0xF0 ? data[i] : 0x1F600 + data[i]);

    tests::MemoryTextBox box(text);
    tests::FakeReaderWindow window;
    settings::MemoryBackend backend;
    settings::SettingsStore store(backend);
    settings::SharedSettings shared;
    const speech::PronunciationList pronunciations(store);
    textreader::TextReader reader(box, window, shared, pronunciations);
    for (std::size_t i = 1; i <= operations; ++i) {
        Operate(reader, box, data[i]);
        Require(reader.startpos >= 0);
        Require(reader.strlength >= 0);
        Require(!box.sawNegativeStart);
    }
    reader.ResetToBlack();
    Require(box.Coloured() == 0);
    return 0;
}
