// Speech tags.
//
// A tag stands between two backslashes: \Name\, \Name=value\ or \Name="value"\. Outside of a tag two
// backslashes are a literal one; what does not read as a tag is ordinary text, backslash included. A known
// tag whose value means nothing is passed over in silence.
//
// \Map="spoken"="balloon"\ has a spoken part that is read as markup again, Map itself excepted. Texts put
// quotes and equal signs into it, so it ends only at a "=" in quotes whose next quote is directly followed by
// a backslash (a separator, below). A spoken part can be a whole book: its separator is searched a little way
// ahead, then from the end of the markup backwards just to know that there is one, and then found in passing.

#include "agent/speech/tag_parser.h"

#include "agent/speech/text_characters.h"

#include <array>
#include <string>
#include <vector>

namespace voxtrel::agent::speech {

namespace {

using Kind = MarkupToken::Kind;

constexpr std::size_t kNone = std::wstring_view::npos;
constexpr std::size_t kNameLength = 3;
constexpr std::size_t kLongestText = 512;
constexpr std::size_t kLongestValue = 256;
constexpr std::size_t kMapLookAhead = 65536;
constexpr std::int64_t kLastMark = 2147483645;

enum class Value { None, Number, Name, Spoken };

struct KnownTag {
    std::wstring_view name;
    Kind kind;
    Value value;
    std::int64_t least = 0, most = 0;
};

constexpr std::array kKnownTags{
    KnownTag{L"chr", Kind::Style, Value::Name},
    KnownTag{L"ctx", Kind::Context, Value::Name},
    KnownTag{L"emp", Kind::Emphasis, Value::None},
    KnownTag{L"lst", Kind::Repeat, Value::None},
    KnownTag{L"map", Kind::MapBegin, Value::Spoken},
    KnownTag{L"mrk", Kind::Mark, Value::Number, 1, kLastMark},
    KnownTag{L"pau", Kind::Pause, Value::Number, kMinPauseMs, kMaxPauseMs},
    KnownTag{L"pit", Kind::Pitch, Value::Number, kMinPitch, kMaxPitch},
    KnownTag{L"rst", Kind::Reset, Value::None},
    KnownTag{L"spd", Kind::Speed, Value::Number, kMinSpeed, kMaxSpeed},
    KnownTag{L"vol", Kind::Volume, Value::Number, kMinVolume, kMaxVolume},
};

bool IsWord(std::wstring_view text, std::wstring_view lower)
{
    if (text.size() != lower.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (static_cast<wchar_t>(LowerAscii(text[i])) != lower[i])
            return false;
    }
    return true;
}

// A whole number with blanks around it at most; one too long to count is as good as infinite.
std::optional<std::int64_t> ReadNumber(std::wstring_view text)
{
    while (!text.empty() && text.front() == L' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == L' ')
        text.remove_suffix(1);
    const bool negative = !text.empty() && text.front() == L'-';
    if (negative || (!text.empty() && text.front() == L'+'))
        text.remove_prefix(1);
    if (text.empty())
        return std::nullopt;
    std::int64_t number = 0;
    for (const wchar_t c : text) {
        if (!IsAsciiDigit(c))
            return std::nullopt;
        number = std::min<std::int64_t>(number * 10 + (c - L'0'), std::int64_t{1} << 40);
    }
    return negative ? -number : number;
}

std::optional<VoiceStyle> ReadStyle(std::wstring_view name)
{
    if (IsWord(name, L"normal"))
        return VoiceStyle::Normal;
    if (IsWord(name, L"whisper"))
        return VoiceStyle::Whisper;
    if (IsWord(name, L"monotone"))
        return VoiceStyle::Monotone;
    return std::nullopt;
}

std::optional<ReadingContext> ReadContext(std::wstring_view name)
{
    if (IsWord(name, L"unknown"))
        return ReadingContext::Unknown;
    if (IsWord(name, L"address"))
        return ReadingContext::Address;
    if (IsWord(name, L"e-mail") || IsWord(name, L"email"))
        return ReadingContext::EMail;
    return std::nullopt;
}

// Puts the value into the token; false when it means nothing to this tag.
bool TakeValue(const KnownTag& tag, std::wstring_view value, MarkupToken& token)
{
    if (tag.value == Value::Number) {
        const auto number = ReadNumber(value);
        const bool mark = tag.kind == Kind::Mark;
        if (!number || (mark && (*number < tag.least || *number > tag.most)))
            return false;
        token.number = static_cast<std::int32_t>(std::clamp(*number, tag.least, tag.most));
        return true;
    }
    if (tag.kind == Kind::Style) {
        const auto style = ReadStyle(value);
        token.style = style.value_or(VoiceStyle::Normal);
        return style.has_value();
    }
    if (tag.kind == Kind::Context) {
        const auto context = ReadContext(value);
        token.context = context.value_or(ReadingContext::Unknown);
        return context.has_value();
    }
    return false;
}

} // namespace

MarkupToken TagParser::Next()
{
    while (true) {
        if (inMap_ && !Has(position_))
            return EndMap();
        if (position_ >= markup_.size())
            return {};
        if (markup_[position_] == L'\\') {
            if (At(position_ + 1) == L'\\') {
                position_ += 2;
                return {.kind = Kind::Text, .text = markup_.substr(position_ - 1, 1)};
            }
            if (const auto tag = ReadTag()) {
                position_ += tag->length;
                if (tag->says)
                    return tag->token;
                continue;
            }
        }
        const std::size_t begin = position_;
        position_ = TextEnd();
        return {.kind = Kind::Text, .text = markup_.substr(begin, position_ - begin)};
    }
}

bool TagParser::Has(std::size_t index)
{
    if (inMap_ && mapSeparator_ == kNone)
        mapSeparator_ = SeparatorIn(position_, index + 1);
    return index < std::min(mapSeparator_, markup_.size());
}

wchar_t TagParser::At(std::size_t index) { return Has(index) ? markup_[index] : L'\0'; }

// The first character, whatever it is, belongs to the text; the next backslash does not.
std::size_t TagParser::TextEnd()
{
    const std::size_t longest = position_ + kLongestText;
    static_cast<void>(Has(longest));
    std::size_t end = std::min({longest, mapSeparator_, markup_.size()});
    end = std::min(end, markup_.substr(0, end).find(L'\\', position_ + 1));
    if (end < markup_.size() && end > position_ + 1 && SplitsPair(markup_[end - 1], markup_[end]))
        --end;
    return end;
}

std::optional<TagParser::Tag> TagParser::ReadTag()
{
    std::size_t end = position_ + 1;
    while (end <= position_ + kNameLength && IsAsciiLetter(At(end)))
        ++end;
    const auto name = markup_.substr(position_ + 1, end - position_ - 1);
    for (std::size_t i = 0; i < kKnownTags.size(); ++i) {
        if (!IsWord(name, kKnownTags[i].name))
            continue;
        if (kKnownTags[i].kind != Kind::MapBegin)
            return ReadParameter(static_cast<int>(i), end);
        if (inMap_)
            return std::nullopt;
        if (At(end) == L'=' && At(end + 1) == L'"')
            return ReadMap();
        return ReadParameter(static_cast<int>(i), end);
    }
    return std::nullopt;
}

std::optional<TagParser::Tag> TagParser::ReadParameter(int known, std::size_t from)
{
    const KnownTag& tag = kKnownTags[static_cast<std::size_t>(known)];
    Tag found{.token = {.kind = tag.kind}};
    if (At(from) == L'\\') {
        found.length = from + 1 - position_;
        found.says = tag.value == Value::None;
        return found;
    }
    if (At(from) != L'=')
        return std::nullopt;
    const bool quoted = At(from + 1) == L'"';
    const std::size_t begin = from + (quoted ? 2 : 1);
    const wchar_t closing = quoted ? L'"' : L'\\';
    std::size_t end = begin;
    while (end < begin + kLongestValue && Has(end) && markup_[end] != closing)
        ++end;
    if (At(end) != closing || (quoted && At(end + 1) != L'\\'))
        return std::nullopt;
    found.length = end + (quoted ? 2 : 1) - position_;
    found.says = TakeValue(tag, markup_.substr(begin, end - begin), found.token);
    return found;
}

std::optional<TagParser::Tag> TagParser::ReadMap()
{
    const std::size_t length = kNameLength + 3; // the backslash, the name, the equal sign and the quote
    const std::size_t begin = position_ + length;
    const std::size_t near = SeparatorIn(begin, begin + kMapLookAhead);
    if (near == kNone && (LastSeparator() == kNone || LastSeparator() < begin))
        return std::nullopt;
    inMap_ = true;
    mapSeparator_ = near;
    Tag found{.token = {.kind = Kind::MapBegin}, .length = length, .says = true};
    if (near != kNone) {
        found.token.text = markup_.substr(near + 3, NextQuote(near + 3) - near - 3);
        found.token.balloonKnown = true;
    }
    return found;
}

MarkupToken TagParser::EndMap()
{
    const std::size_t begin = mapSeparator_ + 3;
    const std::size_t end = NextQuote(begin);
    position_ = end + 2;
    inMap_ = false;
    mapSeparator_ = kNone;
    return {.kind = Kind::MapEnd, .text = markup_.substr(begin, end - begin)};
}

std::size_t TagParser::NextQuote(std::size_t from)
{
    if (from < quoteFrom_ || from > quoteAt_) {
        quoteFrom_ = from;
        quoteAt_ = markup_.find(L'"', from);
    }
    return quoteAt_;
}

bool TagParser::IsSeparator(std::size_t index)
{
    if (markup_.substr(index, 3) != L"\"=\"")
        return false;
    const std::size_t quote = NextQuote(index + 3);
    return quote != kNone && quote + 1 < markup_.size() && markup_[quote + 1] == L'\\';
}

// The first separator between from and limit. Calls come with growing places, so the search goes on where the
// last one stopped.
std::size_t TagParser::SeparatorIn(std::size_t from, std::size_t limit)
{
    limit = std::min(limit, markup_.size());
    if (found_ != kNone && found_ >= from)
        return found_ < limit ? found_ : kNone;
    searched_ = std::max(searched_, from);
    while (searched_ < limit) {
        const std::size_t quote = markup_.substr(0, limit).find(L'"', searched_);
        searched_ = quote == kNone ? limit : quote + 1;
        if (quote != kNone && IsSeparator(quote)) {
            found_ = quote;
            return quote;
        }
    }
    return kNone;
}

std::size_t TagParser::LastSeparator()
{
    if (last_)
        return *last_;
    last_ = kNone;
    std::size_t following = kNone; // the quote after the one looked at
    for (std::size_t i = markup_.size(); i-- > 0;) {
        if (markup_[i] != L'"')
            continue;
        const bool closed =
            following != kNone && following + 1 < markup_.size() && markup_[following + 1] == L'\\';
        if (closed && i >= 2 && markup_.substr(i - 2, 2) == L"\"=") {
            last_ = i - 2;
            break;
        }
        following = i;
    }
    return *last_;
}

std::wstring_view PickAlternative(std::wstring_view markup, std::size_t (*pick)(std::size_t count))
{
    std::vector<std::size_t> bars;
    TagParser parser(markup);
    bool inMap = false;
    for (MarkupToken token = parser.Next(); token.kind != Kind::End; token = parser.Next()) {
        inMap = token.kind == Kind::MapBegin || (inMap && token.kind != Kind::MapEnd);
        if (inMap || token.kind != Kind::Text)
            continue;
        const auto start = static_cast<std::size_t>(token.text.data() - markup.data());
        for (std::size_t bar = token.text.find(L'|'); bar != kNone; bar = token.text.find(L'|', bar + 1))
            bars.push_back(start + bar);
    }
    if (bars.empty())
        return markup;
    const std::size_t chosen = pick(bars.size() + 1);
    const std::size_t begin = chosen == 0 ? 0 : bars[chosen - 1] + 1;
    const std::size_t end = chosen < bars.size() ? bars[chosen] : markup.size();
    return markup.substr(begin, end - begin);
}

} // namespace voxtrel::agent::speech
