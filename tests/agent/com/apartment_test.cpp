#include "agent/com/apartment.h"

#include "platform/windows/windows_headers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <vector>

namespace voxtrel::agent::com {
namespace {

using IfLate = Apartment::IfLate;
using std::chrono::milliseconds;

constexpr milliseconds kShort{50};
constexpr milliseconds kLong{5000};

// Work that does not end before the test lets it.
struct Held {
    std::shared_ptr<std::promise<void>> open = std::make_shared<std::promise<void>>();
    std::shared_future<void> opened = open->get_future().share();
    std::function<int()> Work() const
    {
        return [opened = opened] {
            opened.wait();
            return 1;
        };
    }
};

int ThreadNumber() { return static_cast<int>(GetCurrentThreadId()); }

TEST(ApartmentTest, WorksInOneThreadThatIsNotTheCallers)
{
    Apartment apartment;
    const auto first = apartment.Ask<int>(ThreadNumber, kLong, IfLate::StillDo);
    const auto second = apartment.Ask<int>(ThreadNumber, kLong, IfLate::StillDo);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(*first, *second);
    EXPECT_NE(*first, ThreadNumber());
}

TEST(ApartmentTest, LateWorkIsDoneInItsTurn)
{
    Apartment apartment;
    const Held held;
    const auto order = std::make_shared<std::vector<int>>();
    EXPECT_FALSE(apartment.Ask<int>(held.Work(), kShort, IfLate::StillDo));
    for (int i = 0; i < 3; ++i) {
        const auto note = [order, i] {
            order->push_back(i);
            return i;
        };
        EXPECT_FALSE(apartment.Ask<int>(note, kLong, IfLate::StillDo));
    }
    held.open->set_value();
    // Left out as long as something is overdue.
    std::optional<int> last;
    while (!last)
        last =
            apartment.Ask<int>([order] { return static_cast<int>(order->size()); }, kLong, IfLate::LeaveOut);
    EXPECT_EQ(*order, (std::vector<int>{0, 1, 2}));
}

TEST(ApartmentTest, WorkThatMayBeLeftOutIsNotDoneLater)
{
    Apartment apartment;
    const Held held;
    const auto done = std::make_shared<std::atomic<int>>(0);
    EXPECT_FALSE(apartment.Ask<int>(held.Work(), kShort, IfLate::StillDo));
    EXPECT_FALSE(apartment.Ask<int>([done] { return ++*done; }, kLong, IfLate::LeaveOut));
    held.open->set_value();
    std::optional<int> seen;
    while (!seen)
        seen = apartment.Ask<int>([done] { return done->load(); }, kLong, IfLate::LeaveOut);
    EXPECT_EQ(*seen, 0);
}

TEST(ApartmentTest, WhatWaitsForAHungThreadIsLimited)
{
    Apartment apartment;
    const Held held;
    const auto done = std::make_shared<std::atomic<int>>(0);
    EXPECT_FALSE(apartment.Ask<int>(held.Work(), kShort, IfLate::StillDo));
    for (int i = 0; i < 1000; ++i)
        EXPECT_FALSE(apartment.Ask<int>([done] { return ++*done; }, kLong, IfLate::StillDo));
    held.open->set_value();
    std::optional<int> seen;
    while (!seen)
        seen = apartment.Ask<int>([done] { return done->load(); }, kLong, IfLate::LeaveOut);
    EXPECT_EQ(*seen, 100);
}

TEST(ApartmentTest, LastWorkIsDoneBeforeTheEnd)
{
    const auto done = std::make_shared<std::atomic<bool>>(false);
    {
        Apartment apartment;
        apartment.Post([done] { *done = true; });
    }
    EXPECT_TRUE(*done);
}

} // namespace
} // namespace voxtrel::agent::com
