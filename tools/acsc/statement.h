#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// The outer form of character.txt: lines of words, some with a block in braces.
namespace voxtrel::acsc {

// A mistake in a source; line counts from 1, 0 when it is not about one line.
class SourceError : public std::runtime_error {
public:
    SourceError(int line, const std::string& what) : std::runtime_error(what), line_(line) {}
    int Line() const { return line_; }

private:
    int line_;
};

struct Word {
    std::string text; // UTF-8
    bool quoted = false;
};

struct Statement {
    int line = 0; // from 1
    std::vector<Word> words;
    bool hasBlock = false;
    std::vector<Statement> block;
};

// Throws SourceError for an open quote or braces that do not match.
std::vector<Statement> ParseStatements(std::string_view text);

struct Point {
    double x = 0;
    double y = 0;
    friend auto operator<=>(const Point&, const Point&) = default;
};

// Takes the words of a statement one after the other; what is not as expected is a SourceError.
class WordReader {
public:
    explicit WordReader(const Statement& statement) : statement_(statement) {}

    int Line() const { return statement_.line; }
    bool AtEnd() const { return next_ >= statement_.words.size(); }

    // Takes the next word if it is this one, unquoted.
    bool Accept(std::string_view word);

    // expected tells the reader of the message what should stand here: "a pose".
    std::string Name(std::string_view expected);
    std::string Quoted(std::string_view expected);
    std::string Any(std::string_view expected); // quoted or not
    double Number(std::string_view expected);
    int Integer(std::string_view expected, int lowest, int highest);
    Point Pair(std::string_view expected); // 12,-8
    bool OnOff();

    // The statement must end here.
    void Finish() const;

    [[noreturn]] void Fail(const std::string& what) const;

private:
    const Word& Take(std::string_view expected);

    const Statement& statement_;
    std::size_t next_ = 0;
};

} // namespace voxtrel::acsc
