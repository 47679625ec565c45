// Speech markup builder.
//
// The text is cut into tokens: runs of letters, digits, commas, full stops and carriage returns (which bring
// their pause with them), and each other code point by itself. Every token is looked up in the pronunciation
// list and written as it is, as a \map= tag, or not at all, as the balloon mode has it. The user's prosody
// stands in front.
//
// Most of a text is written as it is. Such stretches are not copied token by token but in one piece, when the
// next token comes that is written differently.

#include "speech/speech_markup.h"

#include "settings/number_conversions.h"
#include "settings/text_case.h"

#include <array>
#include <optional>
#include <string_view>

namespace voxtrel::speech {

namespace {

constexpr std::wstring_view kCarriageReturnPause = L"\r\\pau=600\\";

// How the tokens of a text are shown in the balloon while they are spoken.
enum class Shown { AsWritten, Nothing };

// What a code point is to the cutting of a text.
enum class Kind : unsigned char { Separator, InToken, CarriageReturn };

struct Latin1Character {
    Kind kind = Kind::Separator;
    unsigned char lower = 0;
};

constexpr bool IsLowerCaseLetter(char32_t c)
{
    return (c >= U'a' && c <= U'z') || (c >= 0xE0 && c <= 0xF6) || (c >= 0xF8 && c <= 0xFF) || c == U'\'';
}

constexpr std::array<Latin1Character, 256> MakeLatin1Characters()
{
    std::array<Latin1Character, 256> characters;
    for (char32_t c = 0; c < characters.size(); ++c) {
        Latin1Character& character = characters[c];
        character.lower = static_cast<unsigned char>(settings::SimpleLower(c));
        if (IsLowerCaseLetter(character.lower) || (c >= U'0' && c <= U'9') || c == U',' || c == U'.')
            character.kind = Kind::InToken;
        else if (c == U'\r')
            character.kind = Kind::CarriageReturn;
    }
    return characters;
}

constexpr std::array<Latin1Character, 256> kLatin1Characters = MakeLatin1Characters();

// A text of several lines without a blank is a single word too: only the blank counts.
bool IsSingleWord(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos)
        return true;
    const std::size_t last = text.find_last_not_of(L' ');
    return text.substr(first, last - first + 1).find(L' ') == std::wstring_view::npos;
}

// Nothing for a mode that writes no token at all.
std::optional<Shown> ShownIn(int balloonMode, bool singleWord)
{
    switch (balloonMode) {
    case 0:
        return Shown::AsWritten;
    case 1:
        return singleWord ? Shown::Nothing : Shown::AsWritten;
    case 2:
        return Shown::Nothing;
    default:
        return std::nullopt;
    }
}

void AppendProsody(settings::SharedSettings& shared)
{
    std::wstring& markup = shared.PendingSpeech;
    markup += shared.SAPITags;
    markup += L"\\Spd=" + settings::FormatNumber(shared.Speed);
    markup += L"\\\\Pit=" + settings::FormatNumber(shared.Pitch);
    markup += L"\\\\Vol=" + settings::FormatNumber(shared.Volume);
    markup += L"\\  ";
    markup += shared.VoiceType;
    markup += L' ';
}

class TokenWriter {
public:
    TokenWriter(std::wstring_view text, const PronunciationTable& table, Shown shown, std::wstring& markup)
        : text_(text), table_(table), shown_(shown), markup_(markup)
    {
    }

    void WriteAll()
    {
        markup_.reserve(markup_.size() + ExpectedSize());
        while (position_ < text_.size()) {
            TakeRun();
            if (position_ < text_.size())
                TakeOther();
        }
        EndToken();
        CopyUpTo(text_.size());
    }

private:
    // A little more than most texts need: to grow a long markup costs more than to make it.
    std::size_t ExpectedSize() const
    {
        constexpr std::size_t kHiddenGrowth = 5; // a tag around each word and each blank
        return shown_ == Shown::Nothing ? text_.size() * kHiddenGrowth : text_.size() + text_.size() / 4;
    }

    // Takes Latin-1 characters as long as they belong to a token.
    void TakeRun()
    {
        std::size_t position = position_;
        std::uint64_t hash = hash_;
        for (; position < text_.size(); ++position) {
            const auto c = static_cast<char32_t>(text_[position]);
            if (c >= kLatin1Characters.size() || kLatin1Characters[c].kind != Kind::InToken)
                break;
            hash = PronunciationTable::Hash(hash, kLatin1Characters[c].lower);
        }
        position_ = position;
        hash_ = hash;
    }

    void TakeOther()
    {
        const auto c = static_cast<char32_t>(text_[position_]);
        if (c >= kLatin1Characters.size()) {
            TakeBeyondLatin1();
        } else if (kLatin1Characters[c].kind == Kind::CarriageReturn) {
            AddPause();
        } else {
            EndToken();
            Emit(position_, position_ + 1, table_.FindLatin1(static_cast<unsigned char>(c)));
            tokenStart_ = ++position_;
        }
    }

    // A few code points beyond Latin-1 have a Latin-1 letter for their lower case (the Kelvin sign).
    void TakeBeyondLatin1()
    {
        const settings::CodePoint next = settings::CodePointAt(text_, position_);
        const char32_t lower = settings::SimpleLower(next.value);
        if (IsLowerCaseLetter(lower)) {
            hash_ = PronunciationTable::Hash(hash_, lower);
            position_ += next.length;
            return;
        }
        EndToken();
        const std::size_t end = position_ + next.length;
        Emit(position_, end, table_.Find(text_.substr(position_, next.length)));
        position_ = end;
        tokenStart_ = end;
    }

    // From the carriage return on the token is no longer a piece of the text.
    void AddPause()
    {
        pausedToken_.append(text_.substr(tokenStart_, position_ - tokenStart_));
        pausedToken_ += kCarriageReturnPause;
        if (!pausedTokenStart_)
            pausedTokenStart_ = tokenStart_;
        tokenStart_ = ++position_;
    }

    void EndToken()
    {
        if (pausedTokenStart_)
            EmitPausedToken();
        else if (tokenStart_ < position_)
            Emit(tokenStart_, position_,
                 table_.Find(text_.substr(tokenStart_, position_ - tokenStart_), hash_));
        hash_ = PronunciationTable::kEmptyHash;
    }

    void Emit(std::size_t start, std::size_t end, const std::wstring* spoken)
    {
        if (spoken == nullptr && shown_ == Shown::AsWritten)
            return;
        CopyUpTo(start);
        AppendMap(text_.substr(start, end - start), spoken);
        copied_ = end;
    }

    void EmitPausedToken()
    {
        pausedToken_.append(text_.substr(tokenStart_, position_ - tokenStart_));
        CopyUpTo(*pausedTokenStart_);
        const std::wstring* const spoken = table_.Find(pausedToken_);
        if (spoken == nullptr && shown_ == Shown::AsWritten)
            markup_ += pausedToken_;
        else
            AppendMap(pausedToken_, spoken);
        copied_ = position_;
        pausedToken_.clear();
        pausedTokenStart_.reset();
    }

    void AppendMap(std::wstring_view token, const std::wstring* spoken)
    {
        markup_ += L"\\map=\"";
        markup_ += spoken != nullptr ? std::wstring_view(*spoken) : token;
        if (shown_ == Shown::Nothing) {
            markup_ += L"\"=\"\"\\";
            return;
        }
        markup_ += L"\"=\"";
        markup_ += token;
        markup_ += L"\"\\";
    }

    void CopyUpTo(std::size_t end)
    {
        markup_ += text_.substr(copied_, end - copied_);
        copied_ = end;
    }

    std::wstring_view text_;
    const PronunciationTable& table_;
    Shown shown_;
    std::wstring& markup_;

    std::size_t position_ = 0;
    std::size_t tokenStart_ = 0;
    std::size_t copied_ = 0; // up to here the text is in the markup
    std::uint64_t hash_ = PronunciationTable::kEmptyHash;
    std::wstring pausedToken_; // a token with a carriage return, up to its last one
    std::optional<std::size_t> pausedTokenStart_;
};

} // namespace

void BuildSpeechText(std::wstring& text, settings::SharedSettings& shared,
                     const PronunciationList& pronunciations)
{
    const auto shown = ShownIn(shared.Agent_Balloon_Always, IsSingleWord(text));
    text += L" x";
    AppendProsody(shared);
    if (!shown)
        return;
    // The blank ends the last word like every other and is a token of its own; the x is never visited.
    const std::wstring_view visited = std::wstring_view(text).substr(0, text.size() - 1);
    TokenWriter(visited, pronunciations.Table(), *shown, shared.PendingSpeech).WriteAll();
}

bool IsLetter(char32_t codePoint) { return IsLowerCaseLetter(settings::SimpleLower(codePoint)); }

} // namespace voxtrel::speech
