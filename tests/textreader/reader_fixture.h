#pragma once

#include "fakes/fake_character.h"
#include "memory_text_box.h"
#include "settings/memory_backend.h"
#include "settings/settings_store.h"
#include "speech/pronunciation_list.h"
#include "textreader/text_reader.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace voxtrel::tests {

// The bookmark numbers of a markup, in order, without the end marks.
inline std::vector<std::int32_t> BookmarksOf(const std::wstring& markup)
{
    const std::wstring tag = L"\\Mrk=";
    std::vector<std::int32_t> numbers;
    for (std::size_t at = markup.find(tag); at != std::wstring::npos; at = markup.find(tag, at + 1)) {
        const auto number = static_cast<std::int32_t>(std::stol(markup.substr(at + tag.size(), 10)));
        if (number != textreader::kEndOfSection && number != textreader::kEndOfText)
            numbers.push_back(number);
    }
    return numbers;
}

// A reader on a text of its own, with everything around it that it needs.
struct ReadingRoom {
    explicit ReadingRoom(std::wstring text) : box(std::move(text))
    {
        shared.character = &character;
        shared.Speed = shared.Pitch = 150;
        shared.Volume = 30000;
    }

    std::vector<std::int32_t> LastBookmarks() const
    {
        return character.utterances.empty() ? std::vector<std::int32_t>()
                                            : BookmarksOf(character.utterances.back());
    }

    void Edit(std::int32_t position, std::int32_t removed, const std::wstring& inserted)
    {
        const textreader::TextEdit edit{position, removed, static_cast<std::int32_t>(inserted.size())};
        box.Edit(edit, inserted);
        reader.TextEdited(edit);
    }

    std::wstring Section() const
    {
        const auto start = static_cast<std::size_t>(reader.startpos);
        return box.Text().substr(std::min(start, box.Text().size()),
                                 static_cast<std::size_t>(reader.strlength));
    }

    MemoryTextBox box;
    FakeReaderWindow window;
    CallLog log;
    FakeCharacter character{log};
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    speech::PronunciationList pronunciations{store};
    textreader::TextReader reader{box, window, shared, pronunciations};
};

} // namespace voxtrel::tests
