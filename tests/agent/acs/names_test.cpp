#include "agent/acs/names.h"

#include <gtest/gtest.h>

#include <clocale>

namespace voxtrel::agent::acs {
namespace {

struct NameCase {
    std::wstring_view left;
    std::wstring_view right;
    bool same;
};

constexpr NameCase kCases[] = {
    {L"GETATTENTION", L"GetAttention", true},
    {L"Idle1_1", L"IDLE1_1", true},
    {L"Écoute", L"éCOUTE", true},
    {L"Wave", L"Waves", false},
    {L"Waves", L"Wave", false},
    {L"", L"", true},
    {L"", L"a", false},
    {L"\U00010400", L"\U00010428", true},
};

TEST(SameName, IgnoresCase)
{
    for (const auto& [left, right, same] : kCases) {
        SCOPED_TRACE(std::wstring(left));
        EXPECT_EQ(SameName(left, right), same);
    }
}

TEST(SameName, DoesNotDependOnTheLocale)
{
    if (std::setlocale(LC_ALL, "tr_TR.UTF-8") == nullptr)
        std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_TRUE(SameName(L"IDLINGLEVEL1", L"idlinglevel1"));
    std::setlocale(LC_ALL, "C");
}

} // namespace
} // namespace voxtrel::agent::acs
