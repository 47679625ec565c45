#pragma once

#include "agent/speech/prosody.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace voxtrel::agent::speech {

// One piece of speech markup.
struct MarkupToken {
    enum class Kind {
        Text,     // text
        Mark,     // number: 1..2147483645
        Pause,    // number: milliseconds, in range
        Pitch,    // number, in range
        Speed,    // number, in range
        Volume,   // number, in range
        Style,    // style
        Context,  // context
        Emphasis, // of the next word
        Reset,    // all settings back to their defaults
        Repeat,   // the statement before is said again
        MapBegin, // the spoken part follows; text is the balloon part, if it is already known
        MapEnd,   // text is the balloon part, tags and all
        End,
    };
    Kind kind = Kind::End;
    std::wstring_view text = {}; // into the markup
    std::int32_t number = 0;
    VoiceStyle style = VoiceStyle::Normal;
    ReadingContext context = ReadingContext::Unknown;
    bool balloonKnown = false; // of MapBegin
};

// Cuts speech markup into its pieces, one at each call. The whole text is never looked at in advance, so the
// first piece of a book comes as fast as that of a sentence, and the whole takes linear time whatever the
// text.
class TagParser {
public:
    // markup must outlive the parser.
    explicit TagParser(std::wstring_view markup) : markup_(markup) {}

    // A piece of kind End closes the markup and is repeated from then on.
    MarkupToken Next();

    // How far the markup has been read, in characters.
    std::size_t Position() const { return position_; }

private:
    struct Tag {
        MarkupToken token;
        std::size_t length = 0;
        bool says = false; // false: a known tag with a parameter that means nothing
    };

    wchar_t At(std::size_t index);
    bool Has(std::size_t index);
    std::size_t TextEnd();
    std::optional<Tag> ReadTag();
    std::optional<Tag> ReadMap();
    std::optional<Tag> ReadParameter(int known, std::size_t from);

    std::size_t NextQuote(std::size_t from);
    std::size_t SeparatorIn(std::size_t from, std::size_t limit);
    std::size_t LastSeparator();
    bool IsSeparator(std::size_t index);
    MarkupToken EndMap();

    std::wstring_view markup_;
    std::size_t position_ = 0;

    bool inMap_ = false;
    std::size_t mapSeparator_ = std::wstring_view::npos; // where the spoken part ends, once it is known

    // What the searches have found so far, so that no character is searched twice.
    std::size_t quoteFrom_ = 1, quoteAt_ = 0;
    std::size_t searched_ = 0, found_ = std::wstring_view::npos;
    std::optional<std::size_t> last_;
};

// The markup cut down to one of its alternatives, which bars outside of tags separate; pick gives a number
// below the count it is given. Markup without such a bar comes back whole.
std::wstring_view PickAlternative(std::wstring_view markup, std::size_t (*pick)(std::size_t count));

} // namespace voxtrel::agent::speech
