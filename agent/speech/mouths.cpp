#include "agent/speech/mouths.h"

#include <algorithm>
#include <array>

namespace voxtrel::agent::speech {

namespace {

using acs::Mouth;

struct Row {
    std::string_view phoneme;
    Mouth mouth;
};

constexpr std::array kRows{
    Row{"pau", Mouth::Closed}, Row{"p", Mouth::Closed},  Row{"b", Mouth::Closed},  Row{"m", Mouth::Closed},
    Row{"f", Mouth::Closed},   Row{"v", Mouth::Closed},  Row{"k", Mouth::Slight},  Row{"g", Mouth::Slight},
    Row{"ng", Mouth::Slight},  Row{"l", Mouth::Slight},  Row{"y", Mouth::Slight},  Row{"hh", Mouth::Slight},
    Row{"iy", Mouth::Slight},  Row{"ih", Mouth::Slight}, Row{"t", Mouth::Partly},  Row{"d", Mouth::Partly},
    Row{"n", Mouth::Partly},   Row{"s", Mouth::Partly},  Row{"z", Mouth::Partly},  Row{"th", Mouth::Partly},
    Row{"dh", Mouth::Partly},  Row{"sh", Mouth::Partly}, Row{"zh", Mouth::Partly}, Row{"ch", Mouth::Partly},
    Row{"jh", Mouth::Partly},  Row{"r", Mouth::Partly},  Row{"ah", Mouth::Open},   Row{"eh", Mouth::Open},
    Row{"er", Mouth::Open},    Row{"ax", Mouth::Open},   Row{"ey", Mouth::Open},   Row{"ae", Mouth::Fully},
    Row{"aw", Mouth::Fully},   Row{"ay", Mouth::Fully},  Row{"oy", Mouth::Medium}, Row{"aa", Mouth::Medium},
    Row{"ao", Mouth::Medium},  Row{"uw", Mouth::Narrow}, Row{"uh", Mouth::Narrow}, Row{"ow", Mouth::Narrow},
    Row{"w", Mouth::Narrow},
};

} // namespace

Mouth MouthOf(std::string_view phoneme)
{
    const auto found = std::find_if(kRows.begin(), kRows.end(),
                                    [phoneme](const Row& row) { return row.phoneme == phoneme; });
    return found == kRows.end() ? Mouth::Partly : found->mouth;
}

} // namespace voxtrel::agent::speech
