#include "agent/voices/phrase_markup.h"

#include "agent/acs/unicode.h"

#include <algorithm>
#include <functional>

namespace voxtrel::agent::voices {

namespace {

using namespace speech;

std::size_t CodePoints(std::string_view utf8)
{
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string Escaped(std::wstring_view text)
{
    std::string escaped;
    for (const char c : acs::Utf8FromWide(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

PhraseMarkup XmlMarkup(const Phrase& phrase, const std::function<std::string(std::size_t word)>& before)
{
    PhraseMarkup markup{.text = "<speak>", .offsets = {}, .isXml = true};
    for (std::size_t i = 0; i < phrase.words.size(); ++i) {
        const PhraseWord& word = phrase.words[i];
        if (i > 0)
            markup.text += ' ';
        markup.text += before(i);
        if (word.emphasized)
            markup.text += "<emphasis level=\"strong\">";
        markup.offsets.push_back(CodePoints(markup.text));
        markup.text += Escaped(word.text);
        if (word.emphasized)
            markup.text += "</emphasis>";
    }
    markup.text += "</speak>";
    return markup;
}

} // namespace

PhraseMarkup PlainMarkup(const Phrase& phrase)
{
    PhraseMarkup markup;
    for (const PhraseWord& word : phrase.words) {
        if (!markup.text.empty())
            markup.text += ' ';
        markup.offsets.push_back(CodePoints(markup.text));
        markup.text += acs::Utf8FromWide(word.text);
    }
    return markup;
}

PhraseMarkup EmphasizedMarkup(const Phrase& phrase)
{
    return XmlMarkup(phrase, [](std::size_t) { return std::string(); });
}

PhraseMarkup MarkedMarkup(const Phrase& phrase, std::string_view prefix)
{
    return XmlMarkup(phrase, [prefix](std::size_t word) {
        return "<mark name=\"" + std::string(prefix) + std::to_string(word) + "\"/>";
    });
}

} // namespace voxtrel::agent::voices
