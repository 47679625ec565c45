#include "tests/agent/stage/stage_test.h"

#include <deque>
#include <random>

namespace voxtrel::agent::stage {
namespace {

// Whatever is asked of a character in whatever order: every request begins and ends once and in its turn,
// only the bookmarks of what is spoken arrive, and in the end the stage comes to rest.
class RandomOperations : public StageTest, public ::testing::WithParamInterface<unsigned> {
protected:
    int Draw(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(generator); }

    void Follow(const std::wstring& line)
    {
        const std::size_t blank = line.find(L' ');
        const std::wstring verb = line.substr(0, blank);
        const std::wstring name = line.substr(blank == std::wstring::npos ? line.size() : blank + 1);
        if (verb == L"start") {
            ASSERT_TRUE(running.empty()) << "two requests at once";
            ASSERT_FALSE(asked.empty());
            ASSERT_EQ(asked.front(), name);
            running = name;
        } else if (verb == L"done" || verb == L"hidden" || verb == L"interrupted") {
            ASSERT_EQ(running, name);
            ASSERT_EQ(asked.front(), name);
            asked.pop_front();
            running.clear();
        } else if (verb == L"removed") {
            ASSERT_TRUE(running.empty());
            ASSERT_EQ(asked.front(), name);
            asked.pop_front();
        } else if (verb == L"bookmark") {
            ASSERT_GT(std::stoi(name), lastBookmark) << "an old bookmark";
            ASSERT_GT(std::stoi(name), stoppedBookmark) << "a bookmark of what was stopped";
            lastBookmark = std::stoi(name);
        }
    }

    void Ask()
    {
        static const wchar_t* const kPlays[] = {
            L"GetAttention", L"getattentionreturn", L"Wave", L"Loop", L"Spin", L"Yawn", L"Sleep", L"Blink"};
        switch (Draw(12)) {
        case 0:
        case 1:
            asked.emplace_back(L"Show");
            return Ignore(genie->Show());
        case 2:
            asked.emplace_back(L"Hide");
            return Ignore(genie->Hide());
        case 3:
        case 4: {
            const std::wstring name = kPlays[Draw(8)];
            asked.push_back(L"Play " + name);
            return Ignore(genie->Play(name));
        }
        case 5:
        case 6:
        case 7: {
            std::wstring markup;
            for (int i = Draw(5); i >= 0; --i)
                markup += L"#" + std::to_wstring(++nextBookmark) + (Draw(2) == 0 ? L" word " : L" ~word ");
            asked.emplace_back(L"Speak");
            return Ignore(genie->Speak(markup));
        }
        case 8:
            stoppedBookmark = nextBookmark;
            return Ignore(genie->StopAll());
        case 9:
            Ignore(genie->SetLeft(Draw(1400) - 200));
            return Ignore(genie->SetWidth(1 + Draw(40)));
        case 10:
            return Ignore(
                genie->GetBalloon().SetStyle(1U << 24 | 20U << 16 | static_cast<unsigned>(Draw(16))));
        default:
            Windows().input->Press(1, 0, {0, 0});
            Windows().input->Move({Draw(100), Draw(100)});
            return Windows().input->Release(1, 0, {Draw(100), Draw(100)});
        }
    }

    std::minstd_rand generator{GetParam()};
    std::deque<std::wstring> asked; // and not yet told to be over
    std::wstring running;
    int nextBookmark = 0;
    int lastBookmark = 0;
    int stoppedBookmark = 0;
};

TEST_P(RandomOperations, NeverHangAndNeverLoseTheirOrder)
{
    chance = [this](int bound) { return Draw(bound); };
    events.onEvent = [this](const std::wstring& line) { Follow(line); };
    for (int step = 0; step < 2000 && !HasFatalFailure(); ++step) {
        Ask();
        if (Draw(3) != 0)
            view->Run(Draw(10) == 0 ? Draw(200'000) : Draw(400));
    }
    stoppedBookmark = nextBookmark;
    Ignore(genie->StopAll());
    Ignore(genie->Hide());
    asked.emplace_back(L"Hide");
    view->Run(10'000);
    EXPECT_TRUE(asked.empty());
    EXPECT_FALSE(genie->Visible());
    EXPECT_FALSE(Windows().balloon);
    EXPECT_EQ(view->ticker->NextTick(), kNever);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOperations, ::testing::Range(1U, 13U));

} // namespace
} // namespace voxtrel::agent::stage
