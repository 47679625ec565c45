#include "agent/acs/guid.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::acs {

namespace {

constexpr GuidBytes kBytes{0xD0, 0x1F, 0x14, 0xCA, 0x7F, 0xAC, 0xD1, 0x11,
                           0x97, 0xA3, 0x00, 0x60, 0x08, 0x27, 0x30, 0x0A};

} // namespace

TEST(GuidText, TurnsTheFirstThreeGroupsRound)
{
    EXPECT_EQ(GuidText(kBytes), "{CA141FD0-AC7F-11D1-97A3-00600827300A}");
}

TEST(ParseGuid, ReadsEitherCaseWithAndWithoutBraces)
{
    EXPECT_EQ(ParseGuid("{CA141FD0-AC7F-11D1-97A3-00600827300A}"), kBytes);
    EXPECT_EQ(ParseGuid("ca141fd0-ac7f-11d1-97a3-00600827300a"), kBytes);
}

TEST(ParseGuid, RefusesOtherTexts)
{
    for (const char* text :
         {"", "{}", "CA141FD0", "{CA141FD0-AC7F-11D1-97A3-00600827300A",
          "{CA141FD0-AC7F-11D1-97A3-00600827300G}", "{CA141FD0AAC7F-11D1-97A3-00600827300A}",
          "{CA141FD0-AC7F-11D1-97A3-00600827300A} "})
        EXPECT_FALSE(ParseGuid(text).has_value()) << text;
}

} // namespace voxtrel::agent::acs
