#include "agent/stage/embedded_control.h"
#include "agent/view/balloon_window.h"
#include "agent/view/make_stage_view.h"
#include "tests/windows/drawn_character.h"
#include "tests/windows/screen_pixel.h"
#include "tests/windows/silent_speech_engine.h"
#include "tests/windows/until.h"

#include <gtest/gtest.h>

#include <wx/dcclient.h>
#include <wx/display.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace voxtrel::agent {
namespace {

using tests::Until;

// The drawn character on a desktop where a plain green frame with a text box has the focus.
class CharacterOnDesktop : public testing::Test, protected ControlEvents {
protected:
    void SetUp() override
    {
        backdrop = new wxFrame(nullptr, wxID_ANY, "backdrop", wxPoint(0, 0), wxSize(700, 600));
        auto* page = new wxPanel(backdrop);
        page->SetBackgroundColour(kGreen);
        text = new wxTextCtrl(page, wxID_ANY, {}, wxPoint(0, 0), wxSize(100, 30));
        backdrop->Show();
        backdrop->Raise();
        text->SetFocus();
        ASSERT_TRUE(Until([&] { return ScreenPixel(300, 300) == kGreen; }));
        ASSERT_TRUE(Until([&] { return text->HasFocus(); }));

        stage::ControlParts parts;
        parts.engine = std::make_unique<SilentSpeechEngine>();
        parts.view = view::MakeStageView({[this](wxWindow&, const wxPoint& at) { menuAt = at; }});
        parts.loadCharacter = [](std::wstring_view) {
            return acs::ReadOutcome{Result::Success(), DrawCharacter()};
        };
        parts.balloonText = SilentBalloonText;
        parts.random = [](int) { return 0; };
        control = std::make_unique<stage::EmbeddedControl>(std::move(parts));
        control->SetEvents(this);
        ASSERT_TRUE(control->Load(L"round", L"").Ok());
        character = control->Find(L"round");
        Ignore(character->SetLeft(300));
        Ignore(character->SetTop(300));
    }

    void TearDown() override
    {
        control.reset();
        backdrop->Destroy();
        wxYield();
    }

    void ShowCharacter()
    {
        Ignore(character->Show());
        ASSERT_TRUE(Until([&] { return Told(L"Show"); }));
        ASSERT_TRUE(
            Until([&] { return ScreenPixel(303, 303) == kGreen && ScreenPixel(364, 330) != kGreen; }));
    }

    void RequestComplete(std::wstring_view request, const Result&) override
    {
        complete.emplace_back(request);
    }
    void Click(const PointerEvent& event) override { clicks.push_back(event); }
    bool Told(const std::wstring& request) const
    {
        return std::find(complete.begin(), complete.end(), request) != complete.end();
    }

    // The character's windows have the character's name and what the balloon says as their titles.
    static wxTopLevelWindow* Window(const wxString& title)
    {
        return wxDynamicCast(wxFindWindowByLabel(title), wxTopLevelWindow);
    }

    static void Mouse(wxWindow& window, wxEventType type, int button, int x, int y)
    {
        wxMouseEvent event(type);
        event.SetEventObject(&window);
        event.m_x = x;
        event.m_y = y;
        event.m_leftDown = button == 1 && type != wxEVT_LEFT_UP;
        window.GetEventHandler()->ProcessEvent(event);
    }

    const wxColour kGreen{10, 200, 30};
    wxFrame* backdrop = nullptr;
    wxTextCtrl* text = nullptr;
    std::unique_ptr<stage::EmbeddedControl> control;
    Character* character = nullptr;
    std::vector<std::wstring> complete;
    std::vector<PointerEvent> clicks;
    wxPoint menuAt{-1, -1};
};

TEST_F(CharacterOnDesktop, HasItsPlaceAndSizeAndAnAccessibleName)
{
    ShowCharacter();
    wxTopLevelWindow* window = Window("Round");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->IsShown());
    EXPECT_EQ(window->GetSize(), wxSize(128, 128));
    // The face is round and nearly as wide as its window.
    EXPECT_NE(ScreenPixel(315, 364), kGreen);
    EXPECT_NE(ScreenPixel(413, 364), kGreen);
    EXPECT_EQ(ScreenPixel(299, 364), kGreen);
    EXPECT_EQ(ScreenPixel(428, 364), kGreen);
}

TEST_F(CharacterOnDesktop, StandsInTheCornerOfTheScreenFromTheStart)
{
    Ignore(character->SetLeft(0));
    Ignore(character->SetTop(0));
    Ignore(character->Show());
    EXPECT_TRUE(Until([&] { return Told(L"Show") && ScreenPixel(64, 66) != kGreen; }));
    EXPECT_EQ(ScreenPixel(300, 300), kGreen);
}

// On a screen of any resolution.
TEST_F(CharacterOnDesktop, TextIsMeasuredAsItIsPainted)
{
    const std::unique_ptr<stage::StageView> view = view::MakeStageView({});
    const stage::FontSpec font{L"DejaVu Sans", 14, false, false};
    wxClientDC dc(backdrop);
    dc.SetFont(view::FontOf(font));
    const std::wstring sample = L"The quick brown fox jumps over the lazy dog";
    EXPECT_NEAR(view->Width(font, sample), dc.GetTextExtent(sample).GetWidth(), 3);
    EXPECT_NEAR(view->LineHeight(font), dc.GetCharHeight(), 1);
}

TEST_F(CharacterOnDesktop, OneSeesAroundIt)
{
    ShowCharacter();
    EXPECT_EQ(ScreenPixel(303, 303), kGreen);
    EXPECT_EQ(ScreenPixel(424, 424), kGreen);
    EXPECT_NE(ScreenPixel(364, 366), kGreen);
}

TEST_F(CharacterOnDesktop, NeverTakesTheFocus)
{
    ShowCharacter();
    Ignore(character->Speak(L"hello there"));
    ASSERT_TRUE(Until([&] { return Told(L"Speak"); }));
    EXPECT_TRUE(text->HasFocus());
    EXPECT_TRUE(backdrop->IsActive());
}

TEST_F(CharacterOnDesktop, IsScaledWithItsOutline)
{
    ShowCharacter();
    Ignore(character->SetWidth(50));
    Ignore(character->SetHeight(50));
    EXPECT_TRUE(Until([&] { return ScreenPixel(364, 366) == kGreen && ScreenPixel(325, 325) != kGreen; }));
}

TEST_F(CharacterOnDesktop, IsHiddenWhileItIsParkedOffTheScreen)
{
    ShowCharacter();
    Ignore(character->SetLeft(-128));
    EXPECT_FALSE(Window("Round")->IsShown());
    EXPECT_TRUE(character->Visible());
    Ignore(character->SetLeft(300));
    EXPECT_TRUE(Window("Round")->IsShown());
    EXPECT_TRUE(Until([&] { return ScreenPixel(364, 366) != kGreen; }));
}

TEST_F(CharacterOnDesktop, AppearsWhereItWasMovedToWhileItWasHidden)
{
    ShowCharacter();
    Ignore(character->SetLeft(400));
    Ignore(character->SetLeft(-128));
    ASSERT_TRUE(Until([&] { return ScreenPixel(464, 366) == kGreen; }));
    Ignore(character->SetLeft(150));
    EXPECT_TRUE(Until([&] { return ScreenPixel(214, 366) != kGreen; }));
    EXPECT_EQ(ScreenPixel(464, 366), kGreen);
}

TEST_F(CharacterOnDesktop, BalloonShowsTheWordsAndGoes)
{
    ShowCharacter();
    Balloon& balloon = character->GetBalloon();
    Ignore(balloon.SetStyle(balloon.Style() & ~balloon_style::kAutoHide));
    Ignore(character->Speak(L"hello there"));
    ASSERT_TRUE(Until([&] { return Window("hello there") != nullptr; }));
    wxTopLevelWindow* window = Window("hello there");
    EXPECT_TRUE(window->IsShown());
    // Above the middle of the character, its tip at most a little over the head.
    const int right = 364 + window->GetSize().x / 2;
    EXPECT_TRUE(Until([&] { return ScreenPixel(right - 8, 270) == wxColour(255, 251, 240); }));
    EXPECT_EQ(ScreenPixel(right - 8, 314), kGreen);
    ASSERT_TRUE(Until([&] { return Told(L"Speak"); }));
    Ignore(character->Hide());
    EXPECT_TRUE(Until([&] { return !window->IsShown(); }));
}

TEST_F(CharacterOnDesktop, ClickOnTheBalloonHidesIt)
{
    ShowCharacter();
    Ignore(character->Speak(L"hello there"));
    ASSERT_TRUE(Until([&] { return Window("hello there") != nullptr; }));
    wxTopLevelWindow* window = Window("hello there");
    Mouse(*window, wxEVT_LEFT_DOWN, 1, 10, 10);
    EXPECT_FALSE(window->IsShown());
}

TEST_F(CharacterOnDesktop, ClicksReachTheProgram)
{
    ShowCharacter();
    wxTopLevelWindow* window = Window("Round");
    Mouse(*window, wxEVT_LEFT_DOWN, 1, 60, 60);
    Mouse(*window, wxEVT_LEFT_UP, 1, 60, 60);
    ASSERT_TRUE(Until([&] { return !clicks.empty(); }));
    EXPECT_EQ(clicks[0].button, 1);
    EXPECT_EQ(clicks[0].characterId, L"round");
}

TEST_F(CharacterOnDesktop, RightClickAsksForTheMenu)
{
    ShowCharacter();
    wxTopLevelWindow* window = Window("Round");
    Mouse(*window, wxEVT_RIGHT_DOWN, 2, 60, 61);
    Mouse(*window, wxEVT_RIGHT_UP, 2, 60, 61);
    EXPECT_EQ(menuAt, wxPoint(60, 61));
    ASSERT_TRUE(Until([&] { return !clicks.empty(); }));
    EXPECT_EQ(clicks[0].button, 2);
}

TEST_F(CharacterOnDesktop, UnloadTakesItsWindowsAway)
{
    ShowCharacter();
    Ignore(character->Speak(L"hello there"));
    ASSERT_TRUE(Until([&] { return Window("hello there") != nullptr; }));
    ASSERT_TRUE(control->Unload(L"round").Ok());
    EXPECT_TRUE(Until([&] { return Window("Round") == nullptr && Window("hello there") == nullptr; }));
    EXPECT_TRUE(Until([&] { return ScreenPixel(364, 366) == kGreen; }));
}

TEST_F(CharacterOnDesktop, FontIsHonoured)
{
    const std::unique_ptr<stage::StageView> measure = view::MakeStageView({});
    const stage::FontSpec small{L"DejaVu Sans", 10, false, false};
    const stage::FontSpec large{L"DejaVu Sans", 20, false, false};
    const double ratio =
        static_cast<double>(measure->Width(large, L"hello there")) / measure->Width(small, L"hello there");
    EXPECT_NEAR(ratio, 2, 0.2);
    EXPECT_GT(measure->LineHeight(large), measure->LineHeight(small));
    EXPECT_GT(measure->Width({L"No such font anywhere", 10, false, false}, L"hello"), 0);
}

TEST_F(CharacterOnDesktop, WorkAreaIsThatOfTheMonitorThatShowsTheMiddle)
{
    const std::unique_ptr<stage::StageView> desktop = view::MakeStageView({});
    const wxRect screen = wxDisplay(0U).GetGeometry();
    EXPECT_TRUE(desktop->WorkAreaAt({300, 300, 128, 128}));
    EXPECT_TRUE(desktop->WorkAreaAt({-100, -100, 128, 128}));
    EXPECT_FALSE(desktop->WorkAreaAt({-128, -128, 128, 128}));
    EXPECT_FALSE(desktop->WorkAreaAt({screen.width, screen.height, 128, 128}));
}

} // namespace
} // namespace voxtrel::agent
