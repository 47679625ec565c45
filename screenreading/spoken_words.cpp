#include "screenreading/spoken_words.h"

#include "screenreading/role_table.h"
#include "settings/number_conversions.h"
#include "settings/text_case.h"
#include "speech/pronunciation_table.h"
#include "speech/speech_markup.h"

#include <utility>

namespace voxtrel::screenreading {
namespace {

using settings::CodePoint;
using settings::FormatNumber;

constexpr std::wstring_view kCarriageReturnPause = L"\r\\pau=600\\";

class WordWriter {
public:
    explicit WordWriter(const speech::PronunciationTable& table) : table_(table) {}

    void Take(std::wstring_view character, char32_t codePoint)
    {
        if (speech::IsLetter(codePoint) || (codePoint >= U'0' && codePoint <= U'9'))
            word_ += character;
        else if ((codePoint == U',' || codePoint == U'.') && IsNumeric(word_))
            word_ += character;
        else if (codePoint == U'\r')
            word_ += kCarriageReturnPause;
        else
            Separate(character);
    }

    std::wstring words;

private:
    void Separate(std::wstring_view separator)
    {
        if (!word_.empty())
            Say(word_);
        word_.clear();
        words += L' ';
        Say(separator);
        words += L' ';
    }

    void Say(std::wstring_view token)
    {
        const std::wstring* const spoken = table_.Find(token);
        words += spoken != nullptr ? std::wstring_view(*spoken) : token;
    }

    const speech::PronunciationTable& table_;
    std::wstring word_;
};

} // namespace

std::wstring SpokenWords(std::wstring_view text, const speech::PronunciationList& pronunciations)
{
    WordWriter writer(pronunciations.Table());
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint next = settings::CodePointAt(text, i);
        writer.Take(text.substr(i, next.length), next.value);
        i += next.length;
    }
    // One blank more, to end the last word.
    writer.Take(L" ", U' ');
    return std::move(writer.words);
}

std::wstring ScreenMarkup(std::wstring_view words, const settings::SharedSettings& shared)
{
    std::wstring markup = shared.VoiceType;
    markup += L"\\Spd=" + FormatNumber(shared.Speed);
    markup += L"\\\\Pit=" + FormatNumber(shared.Pitch);
    markup += L"\\\\Vol=" + FormatNumber(shared.Volume);
    markup += L"\\\\map=\"";
    markup += words;
    markup += L"\"=\"\"\\";
    return markup;
}

} // namespace voxtrel::screenreading
