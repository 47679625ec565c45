#include "agent/speech/balloon_text.h"

#include "agent/speech/speech_engine.h"
#include "agent/speech/tag_parser.h"
#include "agent/speech/text_characters.h"

namespace voxtrel::agent::speech {

namespace {

using Kind = MarkupToken::Kind;

// Enough for any balloon; a book of which nothing is shown must not hold up the first word.
constexpr std::size_t kMostMarkupRead = 262144;

// Joins words with single blanks, or with line breaks where the text has them.
class BalloonWriter {
public:
    explicit BalloonWriter(std::size_t maxLength) : maxLength_(maxLength) {}

    bool Full() const { return text_.size() >= maxLength_; }

    void Write(std::wstring_view shown)
    {
        for (std::size_t i = 0; i < shown.size() && !Full();) {
            const CodePoint point = CodePointAt(shown, i);
            if (IsWhiteSpace(point.value))
                Separate(point.value);
            else
                WriteCharacter(shown.substr(i, point.length), point.value);
            i += point.length;
        }
    }

    std::wstring Text() { return std::move(text_); }

private:
    void Separate(char32_t c)
    {
        const bool secondHalf = c == U'\n' && lastSpace_ == U'\r';
        lastSpace_ = secondHalf ? 0 : c;
        if (!IsLineBreak(c))
            blank_ = true;
        else if (!secondHalf && !text_.empty())
            ++lineBreaks_;
    }

    void WriteCharacter(std::wstring_view character, char32_t c)
    {
        if (c < 0x20 || (c >= 0x7F && c < 0xA0))
            return;
        std::wstring before(lineBreaks_, L'\n');
        if (before.empty() && blank_ && !text_.empty())
            before = L" ";
        lastSpace_ = 0;
        lineBreaks_ = 0;
        blank_ = false;
        if (text_.size() + before.size() + character.size() > maxLength_) {
            maxLength_ = text_.size();
            return;
        }
        text_ += before;
        text_ += character;
    }

    std::size_t maxLength_;
    std::wstring text_;
    std::size_t lineBreaks_ = 0;
    bool blank_ = false;
    char32_t lastSpace_ = 0;
};

} // namespace

std::wstring MappedBalloonText(std::wstring_view balloon)
{
    std::wstring shown;
    TagParser parser(balloon);
    for (MarkupToken token = parser.Next(); token.kind != Kind::End; token = parser.Next()) {
        if (token.kind == Kind::Text)
            shown += token.text;
    }
    return shown;
}

std::wstring BalloonText(std::wstring_view markup, std::size_t maxLength)
{
    BalloonWriter writer(maxLength);
    TagParser parser(markup);
    bool inMap = false;
    for (MarkupToken token = parser.Next(); token.kind != Kind::End; token = parser.Next()) {
        if (token.kind == Kind::MapEnd)
            writer.Write(MappedBalloonText(token.text));
        else if (token.kind == Kind::Text && !inMap)
            writer.Write(token.text);
        inMap = token.kind == Kind::MapBegin || (inMap && token.kind != Kind::MapEnd);
        if (writer.Full() || parser.Position() > kMostMarkupRead)
            break;
    }
    return writer.Text();
}

} // namespace voxtrel::agent::speech
