#include "tests/tools/sample_source.h"

#include <algorithm>

namespace voxtrel::acsc::samples {

namespace {

constexpr const char* kBeginning = R"(guid "{5B9E1C46-2F0D-4C57-9C3B-6B3F1B0E7A11}"
size 40,40
drawing figure.svg
language en {
    name "Figure"
}
part body              pivot 20,30
part head on body      pivot 20,20
part mouth on head     pivot 20,16  variants m_open m_wide
part star hidden       pivot 5,5
pose rest {
}
pose left {
    body rotate -20 move -4,2
}
pose right {
    body rotate 20
    mouth draw m_open
}
mouths talk {
    closed mouth draw mouth
    slight mouth draw m_open
    partly mouth draw m_open
    open   mouth draw m_wide
    fully  mouth draw m_wide
    medium mouth draw m_open
    narrow mouth draw m_open
}
)";

} // namespace

std::string Source(const std::string& more) { return kBeginning + more; }

CharacterSource Parsed(const std::string& more) { return ParseCharacterSource(Source(more)); }

std::string MistakeIn(const std::string& more)
{
    const std::string beginning = kBeginning;
    const auto lines = std::count(beginning.begin(), beginning.end(), '\n');
    try {
        ParseCharacterSource(beginning + more);
    } catch (const SourceError& error) {
        return std::to_string(error.Line() - lines) + ": " + error.what();
    }
    return "";
}

} // namespace voxtrel::acsc::samples
