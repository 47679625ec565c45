// Any markup must come through the parser, the normaliser and the clause cutter in bounded pieces; nothing is
// synthesized.

#include "agent/speech/clause_cutter.h"
#include "agent/speech/speech_engine.h"
#include "agent/speech/tag_parser.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace voxtrel::agent::speech;

// Three quarters of the code units are bytes, so that the fuzzer finds the tags; the byte 0xFF takes two
// more.
std::wstring MarkupFrom(const std::uint8_t* data, std::size_t size)
{
    std::wstring markup;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0xFF && i + 2 < size) {
            markup += static_cast<wchar_t>(data[i + 1] << 8 | data[i + 2]);
            i += 2;
        } else {
            markup += static_cast<wchar_t>(data[i]);
        }
    }
    return markup;
}

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void CutIntoClauses(std::wstring_view markup, ClauseCutter::Wording wording, std::size_t longestToken)
{
    ClauseCutter cutter(markup, ClauseCutter::Bookmarks::Report, wording);
    while (true) {
        const Clause clause = cutter.Next();
        Require(clause.tokens.size() <= 64 && clause.cues.size() <= 1024);
        std::size_t last = 0;
        for (const Cue& cue : clause.cues) {
            Require(cue.token >= last && cue.token <= clause.tokens.size());
            last = cue.token;
        }
        for (const SpokenToken& token : clause.tokens)
            Require(!token.name.empty() && token.name.size() <= longestToken);
        if (clause.last)
            break;
    }
}

std::size_t PickLast(std::size_t count) { return count - 1; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring markup = MarkupFrom(data, size);

    TagParser parser(markup);
    std::size_t position = 0;
    for (MarkupToken token = parser.Next(); token.kind != MarkupToken::Kind::End; token = parser.Next()) {
        Require(parser.Position() > position && parser.Position() <= markup.size());
        position = parser.Position();
    }
    Require(position <= markup.size());

    CutIntoClauses(markup, ClauseCutter::Wording::English, 40);
    CutIntoClauses(markup, ClauseCutter::Wording::AsWritten, 4 * 130); // bytes of a run of any script
    Require(BalloonText(markup, 100).size() <= 100);
    Require(PickAlternative(markup, PickLast).size() <= markup.size());
    return 0;
}
