#include "tools/acsc/statement.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

namespace voxtrel::acsc {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// Cuts the text into words, line ends and braces, and hangs blocks below the statement that opens them.
class StatementParser {
public:
    explicit StatementParser(std::string_view text) : text_(text)
    {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (text_.starts_with(kByteOrderMark))
            text_.remove_prefix(kByteOrderMark.size());
    }

    std::vector<Statement> ParseBlock(int openedAt)
    {
        std::vector<Statement> statements;
        while (true) {
            Statement statement = ParseWords();
            const char end = text_.empty() ? '\0' : text_.front();
            if (!text_.empty())
                text_.remove_prefix(1);
            if (end == '{') {
                if (statement.words.empty())
                    throw SourceError(line_, "'{' follows nothing that takes a block");
                statement.hasBlock = true;
                statement.block = ParseBlock(line_);
            }
            if (end == '\n')
                ++line_;
            if (!statement.words.empty())
                statements.push_back(std::move(statement));
            if (end == '}' && openedAt == 0)
                throw SourceError(line_, "'}' closes nothing");
            if (end == '\0' && openedAt != 0)
                throw SourceError(openedAt, "the block that starts here is not closed by '}'");
            if (end == '}' || end == '\0')
                return statements;
        }
    }

private:
    // Up to, not including, a line end, a brace or the end of the text.
    Statement ParseWords()
    {
        Statement statement;
        statement.line = line_;
        while (!text_.empty()) {
            const char c = text_.front();
            if (c == '\n' || c == '{' || c == '}')
                break;
            if (IsBlank(c))
                text_.remove_prefix(1);
            else if (text_.starts_with("//"))
                text_.remove_prefix(std::min(text_.find('\n'), text_.size()));
            else if (c == '"')
                statement.words.push_back(QuotedWord());
            else
                statement.words.push_back(PlainWord());
        }
        return statement;
    }

    Word QuotedWord()
    {
        const std::size_t end = text_.find_first_of("\"\n", 1);
        if (end == std::string_view::npos || text_[end] == '\n')
            throw SourceError(line_, "a text has no closing quote");
        Word word{std::string(text_.substr(1, end - 1)), true};
        text_.remove_prefix(end + 1);
        return word;
    }

    Word PlainWord()
    {
        std::size_t end = 1;
        if (text_.front() != '+') {
            while (end < text_.size() && !IsBlank(text_[end]) &&
                   std::string_view("\n{}\"+").find(text_[end]) == std::string_view::npos &&
                   !text_.substr(end).starts_with("//"))
                ++end;
        }
        Word word{std::string(text_.substr(0, end)), false};
        text_.remove_prefix(end);
        return word;
    }

    std::string_view text_;
    int line_ = 1;
};

bool IsName(std::string_view text)
{
    for (const char c : text) {
        const bool good = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                          c == '_' || c == '-';
        if (!good)
            return false;
    }
    return !text.empty();
}

std::optional<double> ParseNumber(std::string_view text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

std::vector<Statement> ParseStatements(std::string_view text) { return StatementParser(text).ParseBlock(0); }

const Word& WordReader::Take(std::string_view expected)
{
    if (AtEnd())
        Fail(std::string(expected) + " is missing at the end of the line");
    return statement_.words[next_++];
}

bool WordReader::Accept(std::string_view word)
{
    if (AtEnd() || statement_.words[next_].quoted || statement_.words[next_].text != word)
        return false;
    ++next_;
    return true;
}

std::string WordReader::Name(std::string_view expected)
{
    const Word& word = Take(expected);
    if (word.quoted || !IsName(word.text))
        Fail("'" + word.text + "' stands where " + std::string(expected) + " should be");
    return word.text;
}

std::string WordReader::Quoted(std::string_view expected)
{
    const Word& word = Take(expected);
    if (!word.quoted)
        Fail(std::string(expected) + " must stand in double quotes: \"" + word.text + "\"");
    return word.text;
}

std::string WordReader::Any(std::string_view expected) { return Take(expected).text; }

double WordReader::Number(std::string_view expected)
{
    const Word& word = Take(expected);
    const auto value = ParseNumber(word.text);
    if (word.quoted || !value)
        Fail("'" + word.text + "' stands where " + std::string(expected) + ", a number, should be");
    return *value;
}

int WordReader::Integer(std::string_view expected, int lowest, int highest)
{
    const double value = Number(expected);
    if (value != std::floor(value) || value < lowest || value > highest)
        Fail(std::string(expected) + " must be a whole number from " + std::to_string(lowest) + " to " +
             std::to_string(highest));
    return static_cast<int>(value);
}

Point WordReader::Pair(std::string_view expected)
{
    std::string text = Take(expected).text;
    if (text.ends_with(',') && !AtEnd())
        text += Take(expected).text;
    const std::size_t comma = text.find(',');
    const auto x = ParseNumber(std::string_view(text).substr(0, comma));
    const auto y =
        comma == std::string::npos ? std::nullopt : ParseNumber(std::string_view(text).substr(comma + 1));
    if (!x || !y)
        Fail("'" + text + "' stands where " + std::string(expected) + ", two numbers like 12,-8, should be");
    return {*x, *y};
}

bool WordReader::OnOff()
{
    if (Accept("on"))
        return true;
    if (Accept("off"))
        return false;
    Fail("'on' or 'off' is missing");
}

void WordReader::Finish() const
{
    if (!AtEnd())
        Fail("'" + statement_.words[next_].text + "' was not expected here");
}

void WordReader::Fail(const std::string& what) const { throw SourceError(statement_.line, what); }

} // namespace voxtrel::acsc
