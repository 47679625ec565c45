// From a run of text to words that an English synthesizer can take.
//
// The run is first folded to plain ASCII (text_folding.h), then read from left to right: figures in the forms
// that the synthesizer reads as a whole, words, dotted abbreviations. What stands between is punctuation,
// which stays with the token before it, or is left out. Two things the synthesizer must never meet are taken
// care of here: tokens without a sound, and tokens of unbounded length.

#include "agent/speech/text_normalizer.h"

#include "agent/speech/text_characters.h"
#include "agent/speech/text_folding.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>

namespace voxtrel::agent::speech {

namespace {

constexpr std::size_t kLongestWord = 32;
constexpr std::size_t kLongestFigure = 12;
constexpr std::size_t kLongestMixedWord = 16;

struct Respelling {
    std::string_view written, said;
};

// Written forms that the synthesizer does not know or takes for something else: some of them for the names of
// states, which it finds everywhere.
constexpr Respelling kRespellings[] = {
    {"I", "i"},          {"OK", "okay"},        {"Ok", "okay"},   {"ok", "okay"},
    {"Ms", "miz"},       {"Prof", "professor"}, {"Jr", "junior"}, {"Sr", "senior"},
    {"etc", "etcetera"}, {"vs", "versus"},      {"Hi", "hi"},     {"HI", "high"},
    {"Me", "me"},        {"ME", "me"},          {"Oh", "oh"},     {"OH", "oh"},
    {"Ma", "ma"},        {"MA", "ma"},          {"Pa", "pa"},     {"PA", "pa"},
    {"OR", "or"},        {"Or", "or"},          {"Miss", "miss"}, {"Mass", "mass"},
    {"Wash", "wash"},    {"Al", "al"},          {"US", "u.s"},    {"e.g", "for example"},
    {"i.e", "that is"},
};

constexpr Respelling kAddressWords[] = {
    {"N", "north"},        {"S", "south"},   {"E", "east"},      {"W", "west"},       {"Ave", "avenue"},
    {"Blvd", "boulevard"}, {"Rd", "road"},   {"Ln", "lane"},     {"Ct", "court"},     {"Pl", "place"},
    {"Apt", "apartment"},  {"Ste", "suite"}, {"Hwy", "highway"}, {"Pkwy", "parkway"}, {"Sq", "square"},
};

constexpr std::string_view kSmallNumbers[] = {
    "zero",     "one",     "two",     "three",     "four",     "five",     "six",
    "seven",    "eight",   "nine",    "ten",       "eleven",   "twelve",   "thirteen",
    "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen",
};
constexpr std::string_view kTens[] = {"",      "",      "twenty",  "thirty", "forty",
                                      "fifty", "sixty", "seventy", "eighty", "ninety"};

// After these a full stop is no end of a sentence.
constexpr std::string_view kAbbreviations[] = {
    "mr",  "mrs", "ms",     "dr",   "st",   "prof", "jr",  "sr",     "vs",   "e.g", "i.e",
    "rev", "gen", "col",    "capt", "lt",   "sgt",  "hon", "approx", "fig",  "cf",  "al",
    "inc", "ltd", "messrs", "mt",   "dept", "est",  "jan", "feb",    "mar",  "apr", "jun",
    "jul", "aug", "sep",    "sept", "oct",  "nov",  "dec", "ave",    "blvd", "rd",
};

bool IsDigit(char c) { return IsAsciiDigit(static_cast<unsigned char>(c)); }
bool IsLetter(char c) { return IsAsciiLetter(static_cast<unsigned char>(c)); }
bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }

std::string Lower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = static_cast<char>(LowerAscii(static_cast<unsigned char>(c)));
    return lower;
}

template <typename Table> std::string_view FindRespelling(const Table& table, std::string_view word)
{
    const auto* found = std::find_if(std::begin(table), std::end(table),
                                     [word](const auto& row) { return row.written == word; });
    return found == std::end(table) ? std::string_view{} : found->said;
}

Break BreakAfter(char punctuation)
{
    switch (punctuation) {
    case '.':
    case '?':
    case '!':
        return Break::Sentence;
    case ';':
    case ':':
        return Break::Semicolon;
    case ',':
        return Break::Comma;
    default:
        return Break::None;
    }
}

class RunReader {
public:
    RunReader(std::string text, ReadingContext context) : text_(std::move(text)), context_(context) {}

    NormalizedRun Read()
    {
        while (at_ < text_.size()) {
            const char c = text_[at_];
            if (IsDigit(c) || (c == '$' && IsDigit(Peek(1))))
                ReadFigure();
            else if (IsLetter(c))
                ReadWord();
            else
                ReadPunctuation();
        }
        return std::move(run_);
    }

private:
    char Peek(std::size_t steps) const { return at_ + steps < text_.size() ? text_[at_ + steps] : '\0'; }

    std::size_t SpanFrom(std::size_t from, bool (*what)(char)) const
    {
        std::size_t end = from;
        while (end < text_.size() && what(text_[end]))
            ++end;
        return end;
    }

    std::string Take(std::size_t end)
    {
        std::string taken = text_.substr(at_, end - at_);
        at_ = end;
        return taken;
    }

    void Add(std::string name)
    {
        run_.tokens.push_back({.name = std::move(name)});
        run_.ending = Break::None;
    }

    void AddWords(std::string_view words)
    {
        while (!words.empty()) {
            const std::size_t blank = std::min(words.find(' '), words.size());
            Add(std::string(words.substr(0, blank)));
            words.remove_prefix(std::min(blank + 1, words.size()));
        }
    }

    void ReadFigure();
    void ReadTime();
    void AddNumber(int number); // 0..99
    void AddYear(int year);     // 1000..9999
    bool IsDate(char link, std::size_t end) const;
    void ReadDate(std::size_t end);
    bool ReadChain(char link, std::size_t from);
    void ReadWord();
    void ReadWordAndFigures(std::size_t end);
    void ReadPunctuation();
    void Punctuate(char mark);
    bool EndsSentence() const;

    std::string text_;
    ReadingContext context_;
    std::size_t at_ = 0;
    NormalizedRun run_;
};

// $1,234.50  10:30  1998-1999  1/2  1.2.3  2nd  5kg  007
void RunReader::ReadFigure()
{
    std::size_t end = SpanFrom(at_ + (text_[at_] == '$' ? 1 : 0), IsDigit);
    const auto digitsAt = [this](std::size_t from) { return SpanFrom(from, IsDigit) - from; };
    while (end < text_.size() && text_[end] == ',' && digitsAt(end + 1) == 3)
        end += 4;
    const char next = end < text_.size() ? text_[end] : '\0';
    if (next == ':' && text_[at_] != '$' && end - at_ <= 2 && digitsAt(end + 1) == 2)
        return ReadTime();
    if ((next == '-' || next == '/' || next == '.') && ReadChain(next, end))
        return;
    if (next == '.' && digitsAt(end + 1) > 0 && end - at_ <= kLongestFigure)
        end += 1 + std::min(digitsAt(end + 1), kLongestFigure);
    if (end - at_ > kLongestFigure * 2 || (text_.find(',', at_) >= end && digitsAt(at_) > kLongestFigure)) {
        // Too long for a number: digit by digit.
        for (const char digit : Take(end)) {
            if (IsDigit(digit))
                Add(std::string(1, digit));
        }
        return;
    }
    const std::size_t letters = SpanFrom(end, IsLetter);
    if (letters - end <= 3)
        end = letters; // a unit or the letters of an ordinal number; more is a word of its own
    Add(Take(end));
}

void RunReader::ReadTime()
{
    const int hours = std::stoi(Take(text_.find(':', at_)));
    const int minutes = std::stoi(text_.substr(at_ + 1, 2));
    at_ += 3;
    // In words, since the synthesizer reads figures after a word such as "at" digit by digit.
    AddNumber(hours);
    if (minutes > 0 && minutes < 10)
        Add("oh");
    if (minutes > 0)
        AddNumber(minutes);
}

void RunReader::AddNumber(int number)
{
    if (number < 20)
        return Add(std::string(kSmallNumbers[static_cast<std::size_t>(number)]));
    Add(std::string(kTens[static_cast<std::size_t>(number / 10)]));
    if (number % 10 > 0)
        Add(std::string(kSmallNumbers[static_cast<std::size_t>(number % 10)]));
}

// Figures with the same sign between them: a range, a telephone number, a fraction, a date, a version.
bool RunReader::ReadChain(char link, std::size_t from)
{
    std::size_t end = from;
    std::size_t links = 0;
    while (end + 1 < text_.size() && text_[end] == link && IsDigit(text_[end + 1])) {
        end = SpanFrom(end + 1, IsDigit);
        ++links;
    }
    const bool decimal = link == '.' && links < 2;
    if (links == 0 || decimal || text_[at_] == '$' || end - at_ > kLongestMixedWord)
        return false;
    if (links == 2 && IsDate(link, end)) {
        ReadDate(end);
        return true;
    }
    if (link == '-' || (link == '/' && links == 1)) {
        Add(Take(end));
        return true;
    }
    while (at_ < end) {
        if (!IsDigit(text_[at_])) {
            ++at_;
            if (link == '.')
                Add("point");
        }
        Add(Take(SpanFrom(at_, IsDigit)));
    }
    return true;
}

// Three figures of which one at the edge is a year; with slashes the year may be short.
bool RunReader::IsDate(char link, std::size_t end) const
{
    const std::size_t first = SpanFrom(at_, IsDigit) - at_;
    const std::size_t last = end - (text_.rfind(link, end - 1) + 1);
    const std::size_t middle = end - at_ - first - last - 2;
    const bool yearFirst = first == 4 && last <= 2, yearLast = last == 4 && first <= 2;
    const bool shortYear = link == '/' && first <= 2 && last == 2;
    return middle <= 2 && (yearFirst || yearLast || shortYear);
}

void RunReader::ReadDate(std::size_t end)
{
    while (at_ < end) {
        const std::string figure = Take(SpanFrom(at_, IsDigit));
        if (figure.size() <= 2)
            AddNumber(std::stoi(figure));
        else if (figure.front() != '0')
            AddYear(std::stoi(figure));
        else
            Add(figure);
        at_ = std::min(at_ + 1, end);
    }
}

// 1998: nineteen ninety eight; 2005: two thousand five; 1800: eighteen hundred.
void RunReader::AddYear(int year)
{
    const int century = year / 100, rest = year % 100;
    if (century % 10 == 0 && rest < 10) {
        AddNumber(year / 1000);
        Add("thousand");
    } else {
        AddNumber(century);
    }
    if (rest == 0 && century % 10 != 0)
        Add("hundred");
    if (rest > 0 && rest < 10 && century % 10 != 0)
        Add("oh");
    if (rest > 0)
        AddNumber(rest);
}

void RunReader::ReadWord()
{
    std::size_t end = SpanFrom(at_, IsLetter);
    const bool dotted = end == at_ + 1 && end + 1 < text_.size() && text_[end] == '.' &&
                        IsLetter(text_[end + 1]) && !(end + 2 < text_.size() && IsLetter(text_[end + 2]));
    if (dotted) { // U.S.A
        while (end + 1 < text_.size() && text_[end] == '.' && IsLetter(text_[end + 1]) &&
               end - at_ < kLongestWord && !(end + 2 < text_.size() && IsLetter(text_[end + 2])))
            end += 2;
    }
    while (end + 1 < text_.size() && text_[end] == '\'' && IsLetter(text_[end + 1]))
        end = SpanFrom(end + 1, IsLetter);
    if (end < text_.size() && IsDigit(text_[end]))
        return ReadWordAndFigures(end);
    end = std::min(end, at_ + kLongestWord);
    std::string word = Take(end);
    std::string_view said = FindRespelling(kRespellings, word);
    if (context_ == ReadingContext::Address) {
        // In an address the names of states are meant.
        said = FindRespelling(kAddressWords, word);
    }
    if (said.empty())
        Add(std::move(word));
    else
        AddWords(said);
}

// MP3, B2B, Windows95
void RunReader::ReadWordAndFigures(std::size_t end)
{
    while (end < text_.size() && (IsLetter(text_[end]) || IsDigit(text_[end])))
        ++end;
    if (end - at_ <= kLongestMixedWord)
        return Add(Take(end));
    Add(Take(std::min(SpanFrom(at_, IsLetter), at_ + kLongestWord)));
}

void RunReader::ReadPunctuation()
{
    const char c = text_[at_];
    const bool joined = at_ > 0 && text_[at_ - 1] != ' ' && Peek(1) != ' ' && Peek(1) != '\0';
    const bool wordBefore = at_ > 0 && (IsLetter(text_[at_ - 1]) || IsDigit(text_[at_ - 1]));
    if (c == '.' && joined && wordBefore && (IsLetter(Peek(1)) || IsDigit(Peek(1))) &&
        !(IsUpper(Peek(1)) && !IsUpper(text_[at_ - 1])))
        Add("dot"); // inside of a name; before a capital it ends a sentence that lacks its blank
    else if (c == '-' && IsDigit(Peek(1)) && !wordBefore)
        Add("minus");
    else if (c == '-' && joined && wordBefore && context_ == ReadingContext::EMail)
        Add("dash");
    else if (c == '-' && (Peek(1) == '-' || (at_ == 0 && text_.size() == 1)))
        Punctuate(',');
    else
        Punctuate(c);
    ++at_;
}

void RunReader::Punctuate(char mark)
{
    Break strength = BreakAfter(mark);
    if (mark == '.' && !EndsSentence())
        strength = Break::None;
    if (strength == Break::None)
        return;
    run_.ending = std::max(run_.ending, strength);
    if (run_.tokens.empty())
        return;
    char& said = run_.tokens.back().punctuation;
    if (BreakAfter(said) <= strength && said != '?')
        said = mark;
}

// Not after an abbreviation, nor after the first letter of a name.
bool RunReader::EndsSentence() const
{
    if (run_.tokens.empty() || at_ == 0 || text_[at_ - 1] == '.')
        return true;
    std::size_t begin = at_;
    while (begin > 0 && (IsLetter(text_[begin - 1]) || text_[begin - 1] == '.'))
        --begin;
    const std::string word = Lower(std::string_view(text_).substr(begin, at_ - begin));
    if (word.size() == 1 && word != "i" && word != "a" && IsUpper(text_[begin]))
        return false;
    if (word.find('.') != std::string::npos && word.size() <= 4)
        return false;
    return std::find(std::begin(kAbbreviations), std::end(kAbbreviations), word) == std::end(kAbbreviations);
}

} // namespace

NormalizedRun NormalizeRun(std::wstring_view run, ReadingContext context)
{
    return RunReader(FoldToAscii(run, context), context).Read();
}

bool StandsAlone(char32_t c)
{
    if (c < 0x80)
        return c != U'\'' && c != U'$' && c > U' ' && std::ispunct(static_cast<int>(c)) == 0;
    return c >= 0xC0 && c <= 0xFF && c != U'×' && c != U'÷' && c != U'ß';
}

} // namespace voxtrel::agent::speech
