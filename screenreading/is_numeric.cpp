#include "screenreading/role_table.h"

// The test takes the text apart from the outside: blanks, then brackets, sign and currency sign in any order
// on either side but each at most once, then the digits with what may stand between them.

namespace voxtrel::screenreading {
namespace {

constexpr std::wstring_view kWhiteSpace = L" \t\n\v\f\r\u00A0\u3000";
constexpr std::wstring_view kCurrencySigns = L"$\u00A3\u00A5\u20AC";

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// The text that is not yet understood, from both its ends.
class Rest {
public:
    explicit Rest(std::wstring_view text) : text_(text) {}

    void SkipBlanks()
    {
        TakeAll(kWhiteSpace);
        while (!text_.empty() && kWhiteSpace.find(text_.back()) != std::wstring_view::npos)
            text_.remove_suffix(1);
    }
    bool TakeFirst(std::wstring_view anyOf)
    {
        if (text_.empty() || anyOf.find(text_.front()) == std::wstring_view::npos)
            return false;
        text_.remove_prefix(1);
        return true;
    }
    bool TakeLast(std::wstring_view anyOf)
    {
        if (text_.empty() || anyOf.find(text_.back()) == std::wstring_view::npos)
            return false;
        text_.remove_suffix(1);
        return true;
    }
    void TakeAll(std::wstring_view anyOf)
    {
        while (TakeFirst(anyOf)) {
        }
    }
    std::size_t TakeDigits()
    {
        std::size_t count = 0;
        for (; !text_.empty() && IsDigit(text_.front()); ++count)
            text_.remove_prefix(1);
        return count;
    }
    bool Empty() const { return text_.empty(); }

private:
    std::wstring_view text_;
};

// Takes brackets, signs and currency signs, each at most once; false when a bracket stands alone.
bool TakeWrapping(Rest& rest)
{
    bool sign = false;
    bool currency = false;
    bool changed = true;
    while (changed) {
        rest.SkipBlanks();
        changed = false;
        if (!sign && rest.TakeFirst(L"(")) {
            rest.SkipBlanks();
            if (!rest.TakeLast(L")"))
                return false;
            sign = changed = true;
        }
        if (!sign && (rest.TakeFirst(L"+-") || rest.TakeLast(L"+-")))
            sign = changed = true;
        if (!currency && (rest.TakeFirst(kCurrencySigns) || rest.TakeLast(kCurrencySigns)))
            currency = changed = true;
    }
    return true;
}

// An exponent may follow; false when it is begun and not ended.
bool TakeExponent(Rest& rest)
{
    if (!rest.TakeFirst(L"eEdD"))
        return true;
    rest.TakeFirst(L"+-");
    return rest.TakeDigits() > 0;
}

} // namespace

bool IsNumeric(std::wstring_view text)
{
    Rest rest(text);
    if (!TakeWrapping(rest))
        return false;
    std::size_t digits = rest.TakeDigits();
    while (digits > 0 && rest.TakeFirst(L","))
        digits += rest.TakeDigits();
    if (rest.TakeFirst(L"."))
        digits += rest.TakeDigits();
    return digits > 0 && TakeExponent(rest) && rest.Empty();
}

} // namespace voxtrel::screenreading
