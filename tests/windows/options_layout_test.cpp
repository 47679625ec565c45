// How the options dialog looks: its texts, its size, its place.

#include "options_window_fixture.h"

#include <wx/display.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include <cstdlib>
#include <set>

namespace voxtrel::options {
namespace {

TEST_F(OptionsWindow, TextsComeFromTheTableOnEveryPage)
{
    strings.Set(3920, L"Einstellungen");
    strings.Set(3923, L"Stimme");
    strings.Set(3930, L"&Figur:");
    strings.Set(3926, L"Gut");
    Open();
    EXPECT_EQ(window->GetTitle(), "Einstellungen");
    EXPECT_EQ(Find<wxNotebook>("tabs").GetPageText(kVoice), "Stimme");
    EXPECT_EQ(Find<wxButton>("ok_but").GetLabel(), "Gut");
    bool found = false;
    ForEachWindow([&](wxWindow& child) { found = found || child.GetLabel() == "&Figur:"; });
    EXPECT_TRUE(found);
}

TEST_F(OptionsWindow, NoTextIsLeftAsItWasDesigned)
{
    for (int number = 3000; number < 4000; ++number) {
        if (const auto text = strings.Find(number))
            strings.Set(number, L"~" + *text);
    }
    Open();
    ForEachWindow([&](wxWindow& child) {
        const bool shows = dynamic_cast<wxButton*>(&child) || dynamic_cast<wxCheckBox*>(&child) ||
                           dynamic_cast<wxStaticText*>(&child) || dynamic_cast<wxRadioButton*>(&child);
        const wxString label = child.GetLabel();
        const bool isValue = wxString("0123456789").Contains(label.Left(1));
        if (shows && !label.empty() && !isValue) {
            EXPECT_EQ(label[0], '~') << label;
        }
        if (!child.GetToolTipText().empty()) {
            EXPECT_EQ(child.GetToolTipText()[0], '~') << child.GetToolTipText();
        }
    });
}

TEST_F(OptionsWindow, MnemonicsOfAPageDifferFromEachOtherAndFromTheButtons)
{
    Open();
    const auto& tabs = Find<wxNotebook>("tabs");
    const auto mnemonic = [](const wxString& label) {
        const auto place = label.find('&');
        return place == wxString::npos ? wxString() : label.Mid(place + 1, 1).Upper();
    };
    for (std::size_t page = 0; page < tabs.GetPageCount(); ++page) {
        std::multiset<wxString> used;
        ForEachWindow([&](wxWindow& child) {
            if (tabs.GetPage(page)->IsDescendant(&child) || child.GetParent() == window)
                used.insert(mnemonic(child.GetLabel()));
        });
        used.erase(wxString());
        EXPECT_GE(used.size(), 3u);
        for (const wxString& letter : used)
            EXPECT_EQ(used.count(letter), 1u) << letter << " on page " << page;
    }
}

TEST_F(OptionsWindow, NothingIsClippedInALanguageAThirdLonger)
{
    for (int number = 3000; number < 4000; ++number) {
        if (const auto text = strings.Find(number))
            strings.Set(number, *text + std::wstring(text->size() / 3 + 1, L'm'));
    }
    Open();
    const auto& tabs = Find<wxNotebook>("tabs");
    for (std::size_t page = 0; page < tabs.GetPageCount(); ++page) {
        ShowPage(page);
        // The page is laid out once the screen has given it its size.
        EXPECT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    }
}

TEST_F(OptionsWindow, NothingIsClippedInALargeFontOfTheTranslation)
{
    strings.Set(20, L"DejaVu Serif");
    strings.Set(21, L"17");
    Open();
    const auto& tabs = Find<wxNotebook>("tabs");
    for (std::size_t page = 0; page < tabs.GetPageCount(); ++page) {
        ShowPage(page);
        EXPECT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    }
    EXPECT_EQ(Find<wxButton>("ok_but").GetFont().GetPointSize(), 17);
}

TEST_F(OptionsWindow, DetailsOfScreenReadingMakeTheDialogHigherWhileTheyAreOpen)
{
    shared.usescreenreading = true;
    Open();
    ShowPage(kScreenReading);
    ASSERT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    const int height = window->GetSize().y;
    Click("cmdDetails");
    EXPECT_GT(window->GetSize().y, height);
    EXPECT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    Click("cmdDetails");
    EXPECT_EQ(window->GetSize().y, height);
}

TEST_F(OptionsWindow, OpensInTheMiddleOfThePointersMonitor)
{
    Open();
    const int display = wxDisplay::GetFromPoint(wxGetMousePosition());
    ASSERT_NE(display, wxNOT_FOUND);
    const wxRect area = wxDisplay(static_cast<unsigned>(display)).GetClientArea();
    const auto isCentred = [&] {
        const wxRect place = window->GetScreenRect();
        // The window manager's frame may be counted or not.
        return area.Contains(place) && std::abs(place.x - area.x - (area.GetRight() - place.GetRight())) < 40;
    };
    EXPECT_TRUE(Until(isCentred)) << window->GetScreenRect().x << " on the monitor at " << area.x;
}

} // namespace
} // namespace voxtrel::options
