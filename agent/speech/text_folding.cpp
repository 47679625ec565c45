#include "agent/speech/text_folding.h"

#include "agent/speech/text_characters.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace voxtrel::agent::speech {

namespace {

struct Replacement {
    char32_t c;
    std::string_view text;
};

// Letters that do not come apart into a plain letter and an accent, and signs with a plain look-alike.
constexpr Replacement kPlain[] = {
    {U'ß', "ss"},
    {U'ẞ', "SS"},
    {U'æ', "ae"},
    {U'Æ', "Ae"},
    {U'œ', "oe"},
    {U'Œ', "Oe"},
    {U'ø', "o"},
    {U'Ø', "O"},
    {U'đ', "d"},
    {U'Đ', "D"},
    {U'ð', "th"},
    {U'Ð', "Th"},
    {U'þ', "th"},
    {U'Þ', "Th"},
    {U'ł', "l"},
    {U'Ł', "L"},
    {U'ı', "i"},
    {U'ħ', "h"},
    {U'Ħ', "H"},
    {U'ŋ', "ng"},
    {U'Ŋ', "Ng"},
    {U'ŧ', "t"},
    {U'Ŧ', "T"},
    {U'ə', "a"},
    {U'ƒ', "f"},
    {U'ĸ', "k"},
    {U'\u2018', "'"},
    {U'\u2019', "'"},
    {U'\u201A', " "},
    {U'\u201B', "'"},
    {U'\u02BC', "'"},
    {U'\u2032', "'"},
    {U'\u00B4', "'"},
    {U'\u2212', "-"},
    {U'\u2010', "-"},
    {U'\u2011', "-"},
    {U'\u00AD', ""},
    {U'\u2044', "/"},
    {U'\u00BF', " "},
    {U'\u00A1', " "},
    {U'\u3002', ". "},
    {U'\u3001', ", "},
    {U'\u2116', " number "},
};

constexpr Replacement kSymbols[] = {
    {U'©', "copyright"},
    {U'®', "registered"},
    {U'™', "trademark"},
    {U'§', "section"},
    {U'¶', "paragraph"},
    {U'±', "plus or minus"},
    {U'×', "times"},
    {U'÷', "divided by"},
    {U'≤', "less than or equal to"},
    {U'≠', "not equal to"},
    {U'≈', "approximately"},
    {U'≥', "greater than or equal to"},
    {U'∞', "infinity"},
    {U'√', "square root of"},
    {U'‰', "per thousand"},
    {U'℃', "degrees Celsius"},
    {U'℉', "degrees Fahrenheit"},
    {U'µ', "micro"},
    {U'Ω', "ohm"},
    {U'†', ""},
    {U'‡', ""},
};

struct Currency {
    char32_t sign;
    std::string_view one, many;
};

constexpr Currency kCurrencies[] = {
    {U'€', "euro", "euros"},   {U'£', "pound", "pounds"},   {U'¥', "yen", "yen"},
    {U'₹', "rupee", "rupees"}, {U'¢', "cent", "cents"},     {U'₽', "ruble", "rubles"},
    {U'₩', "won", "won"},      {U'₪', "shekel", "shekels"}, {U'₿', "bitcoin", "bitcoins"},
};

// From alpha on, final sigma included.
constexpr std::string_view kGreekLetters[] = {
    "alpha", "beta",   "gamma",   "delta", "epsilon", "zeta",    "eta",   "theta", "iota",
    "kappa", "lambda", "mu",      "nu",    "xi",      "omicron", "pi",    "rho",   "sigma",
    "sigma", "tau",    "upsilon", "phi",   "chi",     "psi",     "omega",
};

template <typename Table> const auto* FindIn(const Table& table, char32_t c)
{
    const auto* found =
        std::find_if(std::begin(table), std::end(table), [c](const auto& row) { return row.c == c; });
    return found == std::end(table) ? nullptr : found;
}

bool IsAlnum(char32_t c) { return IsAsciiLetter(c) || IsAsciiDigit(c); }

class Folder {
public:
    Folder(std::wstring_view text, ReadingContext context) : context_(context)
    {
        for (std::size_t i = 0; i < text.size();) {
            const CodePoint point = CodePointAt(text, i);
            i += point.length;
            text_.push_back(point.value);
        }
    }

    std::string Fold()
    {
        for (at_ = 0; at_ < text_.size(); ++at_)
            FoldOne(text_[at_]);
        return std::move(out_);
    }

private:
    char32_t Following(std::size_t steps = 1) const
    {
        return at_ + steps < text_.size() ? text_[at_ + steps] : 0;
    }
    char32_t Preceding() const { return at_ > 0 ? text_[at_ - 1] : 0; }
    bool Between(bool (*what)(char32_t)) const { return what(Preceding()) && what(Following()); }

    void Word(std::string_view word)
    {
        out_ += ' ';
        out_ += word;
        out_ += ' ';
    }

    void FoldOne(char32_t c)
    {
        if (c < 0x80)
            FoldAscii(static_cast<char>(c));
        else if (!FoldCurrency(c) && !FoldSign(c))
            FoldLetter(c);
    }

    // "€20" is said as "20 euros".
    bool FoldCurrency(char32_t c)
    {
        const auto* found = std::find_if(std::begin(kCurrencies), std::end(kCurrencies),
                                         [c](const Currency& row) { return row.sign == c; });
        if (found == std::end(kCurrencies))
            return false;
        std::string amount;
        while (IsAsciiDigit(Following()) ||
               ((Following() == U'.' || Following() == U',') && IsAsciiDigit(Following(2)))) {
            amount += static_cast<char>(Following());
            ++at_;
        }
        out_ += amount;
        const bool one = amount.empty() ? !IsAsciiDigit(Preceding()) : amount == "1";
        Word(one ? found->one : found->many);
        return true;
    }

    bool FoldSign(char32_t c)
    {
        if (const auto* symbol = FindIn(kSymbols, c)) {
            WordIf(SkipRepetition(c) < 3, symbol->text);
            return true;
        }
        if (const auto* plain = FindIn(kPlain, c)) {
            out_ += plain->text;
            return true;
        }
        switch (c) {
        case U'°':
        case U'º':
            FoldDegrees();
            return true;
        case U'²':
        case U'³':
            if (!IsAlnum(Preceding()))
                return false;
            Word(c == U'²' ? "squared" : "cubed");
            return true;
        case U'¼':
        case U'½':
        case U'¾':
            out_ += IsAsciiDigit(Preceding()) ? " and " : " ";
            out_ += c == U'½' ? "1/2 " : c == U'¼' ? "1/4 " : "3/4 ";
            return true;
        case U'\u2012':
        case U'\u2013':
        case U'\u2014':
        case U'\u2015':
            out_ += Between(IsAsciiDigit) ? "-" : ", ";
            return true;
        case U'«':
        case U'»':
        case U'\u201C':
        case U'\u201D':
        case U'\u201E':
            out_ += '"';
            return true;
        default:
            return false;
        }
    }

    void FoldDegrees()
    {
        Word("degrees");
        const char32_t scale = Following();
        if ((scale == U'C' || scale == U'F') && !IsAlnum(Following(2))) {
            Word(scale == U'C' ? "Celsius" : "Fahrenheit");
            ++at_;
        }
    }

    void FoldLetter(char32_t c)
    {
        if (c >= U'α' && c <= U'ω' && !IsGreek(Preceding()) && !IsGreek(Following())) {
            Word(kGreekLetters[c - U'α']);
            return;
        }
        std::array<utf8proc_int32_t, 32> parts{};
        int boundary = 0;
        const auto count = utf8proc_decompose_char(
            static_cast<utf8proc_int32_t>(c), parts.data(), static_cast<utf8proc_ssize_t>(parts.size()),
            static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT), &boundary);
        if (count < 0 || count > static_cast<utf8proc_ssize_t>(parts.size()))
            return;
        for (utf8proc_ssize_t i = 0; i < count; ++i)
            FoldPart(static_cast<char32_t>(parts[static_cast<std::size_t>(i)]), count == 1);
    }

    static bool IsGreek(char32_t c) { return c >= 0x370 && c <= 0x3FF; }

    void FoldPart(char32_t c, bool whole)
    {
        if (c < 0x80) {
            // A sign inside of a compatibility character, such as the brackets of a number in parentheses.
            out_ +=
                IsAlnum(c) || c == U'.' || c == U'/' || c == U'!' || c == U'?' ? static_cast<char>(c) : ' ';
            return;
        }
        if (const auto* plain = FindIn(kPlain, c)) {
            out_ += plain->text;
            return;
        }
        switch (utf8proc_category(static_cast<utf8proc_int32_t>(c))) {
        case UTF8PROC_CATEGORY_MN:
        case UTF8PROC_CATEGORY_MC:
        case UTF8PROC_CATEGORY_ME:
        case UTF8PROC_CATEGORY_CC:
        case UTF8PROC_CATEGORY_CF:
        case UTF8PROC_CATEGORY_CS:
        case UTF8PROC_CATEGORY_LM:
        case UTF8PROC_CATEGORY_SK:
            break;
        default:
            if (whole || !out_.empty())
                out_ += ' ';
        }
    }

    void FoldAscii(char c)
    {
        if (IsAlnum(static_cast<char32_t>(c))) {
            out_ += c;
            return;
        }
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            return;
        constexpr std::string_view kKept = ".,:;!?'\"-";
        if (kKept.find(c) != std::string_view::npos) {
            out_ += c;
            return;
        }
        const std::size_t repeated = SkipRepetition(static_cast<char32_t>(c));
        if (repeated >= 3)
            out_ += ' ';
        else
            FoldAsciiSymbol(c, repeated);
    }

    // Rows of the same sign are drawings, not words. Moves to the last of the row and tells how many there
    // are.
    std::size_t SkipRepetition(char32_t c)
    {
        const std::size_t first = at_;
        while (Following() == c)
            ++at_;
        return at_ - first + 1;
    }

    void FoldAsciiSymbol(char c, std::size_t repeated)
    {
        const char32_t before = at_ >= repeated ? text_[at_ - repeated] : 0;
        const char32_t after = Following();
        const bool digits = IsAsciiDigit(before) && IsAsciiDigit(after);
        const bool touches = IsAlnum(before) || IsAlnum(after);
        switch (c) {
        case '$':
            IsAsciiDigit(after) ? Keep(c) : Word("dollar");
            break;
        case '%':
            Word("percent");
            break;
        case '&':
            Word("and");
            break;
        case '@':
            Word("at");
            break;
        case '#':
            Word(IsAsciiDigit(after) ? "number" : "hash");
            break;
        case '=':
            Word("equals");
            break;
        case '+':
            Word(repeated == 2 ? "plus plus" : "plus");
            break;
        case '/':
            digits&& repeated == 1 ? Keep(c) : WordIf(touches && repeated == 1, "slash");
            break;
        case '\\':
            WordIf(touches, "backslash");
            break;
        case '<':
            WordIf(after == 0 || IsAsciiDigit(after), "less than");
            break;
        case '>':
            WordIf(IsAlnum(before) && (after == 0 || IsAsciiDigit(after)), "greater than");
            break;
        case '*':
            WordIf(digits, "times");
            break;
        case '_':
            WordIf(touches && context_ == ReadingContext::EMail, "underscore");
            break;
        case '~':
            WordIf(IsAsciiDigit(after), "about");
            break;
        default:
            out_ += ' ';
        }
    }

    void Keep(char c) { out_ += c; }

    void WordIf(bool said, std::string_view word) { said ? Word(word) : Keep(' '); }

    ReadingContext context_;
    std::u32string text_;
    std::size_t at_ = 0;
    std::string out_;
};

} // namespace

std::string FoldToAscii(std::wstring_view text, ReadingContext context)
{
    return Folder(text, context).Fold();
}

} // namespace voxtrel::agent::speech
