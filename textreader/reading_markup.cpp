// Speech markup with a bookmark in front of every word.
//
// A word is a run of letters, digits, marks and carriage returns; blanks, line feeds, tabs and everything
// else end it and are not spoken. A mark is replaced by its pronunciation where it has one, a carriage return
// brings a pause, and the whole word is looked up at its end. A word that is spoken as it stands in the text,
// nearly every one, is not collected but copied from there.

#include "textreader/reading_markup.h"

#include "settings/number_conversions.h"
#include "settings/text_case.h"
#include "speech/speech_markup.h"

#include <algorithm>
#include <array>

namespace voxtrel::textreader {

namespace {

using speech::PronunciationTable;

constexpr std::wstring_view kCarriageReturnPause = L"\r\\pau=700\\";
constexpr std::wstring_view kNumbers = L"1234567890,.";
constexpr std::wstring_view kMarks = L"-=+_)(*&^%$\u00A3\"![]{}#~;:@'/?.>,<`\u00AC|";

enum class Kind : unsigned char { Other, InWord, Mark, CarriageReturn };

Kind KindOf(char32_t c)
{
    if (speech::IsLetter(c))
        return Kind::InWord;
    if (c > 0xFF)
        return Kind::Other;
    const auto element = static_cast<wchar_t>(c);
    if (kNumbers.find(element) != std::wstring_view::npos)
        return Kind::InWord;
    if (kMarks.find(element) != std::wstring_view::npos)
        return Kind::Mark;
    return c == U'\r' ? Kind::CarriageReturn : Kind::Other;
}

struct Latin1Character {
    Kind kind = Kind::Other;
    unsigned char lower = 0;
};

const std::array<Latin1Character, 256>& Latin1Characters()
{
    static const std::array<Latin1Character, 256> characters = [] {
        std::array<Latin1Character, 256> made;
        for (char32_t c = 0; c < made.size(); ++c)
            made[c] = {KindOf(c), static_cast<unsigned char>(settings::SimpleLower(c))};
        return made;
    }();
    return characters;
}

void AppendDecimal(std::wstring& markup, std::int32_t number)
{
    std::array<wchar_t, 12> digits;
    std::size_t first = digits.size();
    for (std::int32_t rest = number; rest > 0; rest /= 10)
        digits[--first] = static_cast<wchar_t>(L'0' + rest % 10);
    markup.append(digits.data() + first, digits.size() - first);
}

bool BeginsWithSurrogatePair(std::wstring_view text)
{
    const auto unit = [&](std::size_t i) { return static_cast<std::uint32_t>(text[i]) & 0xFFFFFC00U; };
    return text.size() >= 2 && unit(0) == 0xD800U && unit(1) == 0xDC00U;
}

class WordWriter {
public:
    // blank stands for every blank of the markup.
    WordWriter(std::wstring_view text, const PronunciationTable& table, std::wstring_view blank,
               ReadingMarkup& out)
        : text_(text), table_(table), blank_(blank), out_(out)
    {
    }

    // Takes the first characters of the text into the word, whatever they are.
    void BeginWith(std::size_t count)
    {
        for (; position_ < count; ++position_)
            hash_ = PronunciationTable::Hash(hash_,
                                             settings::SimpleLower(static_cast<char32_t>(text_[position_])));
        // A backslash would open a tag that the next bookmark closes. The hash of a pair is not worth a
        // special way.
        const bool opensTag = text_.front() == L'\\';
        copied_ = opensTag || count > 1 || text_.front() == L' ';
        if (copied_)
            word_.assign(text_.substr(opensTag ? 1 : 0, opensTag ? 0 : count));
    }

    // From the position up to the end; from joinOnly on no word begins.
    void Write(std::size_t position, std::size_t end, std::size_t joinOnly)
    {
        const std::array<Latin1Character, 256>& latin1 = Latin1Characters();
        if (wordStart_ == position_)
            wordStart_ = position;
        for (position_ = position; position_ < end; ++position_) {
            const auto c = static_cast<char32_t>(text_[position_]);
            if (position_ >= joinOnly && wordStart_ == position_)
                break;
            const Latin1Character character = c < latin1.size() ? latin1[c] : BeyondLatin1(c);
            switch (character.kind) {
            case Kind::InWord:
                Take(character.lower);
                break;
            case Kind::Mark:
                TakeMark(character.lower, static_cast<unsigned char>(c));
                break;
            case Kind::CarriageReturn:
                Replace(kCarriageReturnPause);
                break;
            case Kind::Other:
                EndWord();
                wordStart_ = position_ + 1;
                break;
            }
        }
        EndWord();
    }

private:
    // A few code points beyond Latin-1 have a Latin-1 letter for their lower case.
    static Latin1Character BeyondLatin1(char32_t c)
    {
        const Kind kind = KindOf(c);
        return {kind, kind == Kind::InWord ? static_cast<unsigned char>(settings::SimpleLower(c))
                                           : static_cast<unsigned char>(0)};
    }

    void Take(unsigned char lower)
    {
        hash_ = PronunciationTable::Hash(hash_, lower);
        if (copied_)
            word_ += text_[position_];
    }

    void TakeMark(unsigned char lower, unsigned char mark)
    {
        if (const std::wstring* const spoken = table_.FindLatin1(mark))
            Replace(*spoken);
        else
            Take(lower);
    }

    // From here on the word is no longer a piece of the text.
    void Replace(std::wstring_view spoken)
    {
        if (!copied_)
            word_.assign(text_.substr(wordStart_, position_ - wordStart_));
        copied_ = true;
        word_ += spoken;
    }

    void EndWord()
    {
        if (wordStart_ < position_)
            Emit();
        hash_ = PronunciationTable::kEmptyHash;
        copied_ = false;
    }

    void Emit()
    {
        const WordMark mark{static_cast<std::int32_t>(wordStart_) + 1,
                            static_cast<std::int32_t>(position_ - wordStart_)};
        const std::wstring_view word =
            copied_ ? std::wstring_view(word_) : text_.substr(wordStart_, position_ - wordStart_);
        const std::wstring* const spoken = copied_ ? table_.Find(word) : table_.Find(word, hash_);
        out_.words.push_back(mark);
        out_.markup += L"\\Mrk=";
        AppendDecimal(out_.markup, PackWordMark(mark));
        out_.markup += L'\\';
        // Only what is not the text's own can have a blank inside.
        if (spoken != nullptr || copied_)
            AppendWithBlanks(spoken != nullptr ? std::wstring_view(*spoken) : word);
        else
            out_.markup += word;
        out_.markup += blank_;
    }

    void AppendWithBlanks(std::wstring_view words)
    {
        for (const wchar_t c : words) {
            if (c == L' ')
                out_.markup += blank_;
            else
                out_.markup += c;
        }
    }

    std::wstring_view text_;
    const PronunciationTable& table_;
    std::wstring_view blank_;
    ReadingMarkup& out_;

    std::size_t position_ = 0;  // 0-based, as everything in here
    std::size_t wordStart_ = 0; // the position itself while there is no word
    std::uint64_t hash_ = PronunciationTable::kEmptyHash;
    bool copied_ = false; // the word is in word_, since it differs from the text
    std::wstring word_;
};

std::wstring Prosody(const settings::SharedSettings& shared)
{
    return shared.SAPITags + L"\\Spd=" + settings::FormatNumber(shared.Speed) + L"\\\\Pit=" +
           settings::FormatNumber(shared.Pitch) + L"\\\\Vol=" + settings::FormatNumber(shared.Volume) +
           L"\\  " + shared.VoiceType + L" ";
}

// What stands for a blank. The semicolon makes the voice end a phrase there.
std::wstring BlankOf(const settings::SharedSettings& shared)
{
    if (shared.interwordpause <= 0)
        return L" ";
    return L";\\pau=" + settings::FormatNumber(shared.interwordpause) + L"\\";
}

} // namespace

ReadingMarkup BuildReadingMarkup(std::wstring_view text, std::int32_t start, std::int32_t length,
                                 const settings::SharedSettings& shared,
                                 const PronunciationTable& pronunciations)
{
    ReadingMarkup result;
    const auto first = static_cast<std::size_t>(std::max(start, 0));
    if (length <= 0 || first >= text.size())
        return result;
    const std::size_t sectionEnd = std::min(first + static_cast<std::size_t>(length), text.size());

    result.markup = Prosody(shared);
    const std::wstring blank = BlankOf(shared);
    result.markup.reserve(result.markup.size() + (sectionEnd - first) * (3 + blank.size() / 3) + 64);
    result.words.reserve((sectionEnd - first) / 5 + 1);
    result.markup += L"\\map=\"";
    WordWriter writer(text, pronunciations, blank, result);
    if (first == 0) {
        // The first character of the text belongs to its first word whatever it is, and the character behind
        // the section is read as well, but only into a word that has begun.
        const std::size_t begun = BeginsWithSurrogatePair(text) ? 2 : 1;
        writer.BeginWith(begun);
        writer.Write(begun, std::min(sectionEnd + 1, text.size()), sectionEnd);
    } else {
        writer.Write(first, sectionEnd, sectionEnd);
    }
    if (result.words.empty())
        return {};
    result.markup += L"\\Mrk=999999999\\" + blank + L"\"=\"\"\\";
    return result;
}

} // namespace voxtrel::textreader
