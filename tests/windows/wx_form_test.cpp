#include "settings/view/wx_form.h"

#include <gtest/gtest.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/listctrl.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace voxtrel::settings {
namespace {

class LocaliseFormOnWindows : public testing::Test {
protected:
    void SetUp() override
    {
        table.Set(10, L"Fenster");
        table.Set(11, L"Beschriftung");
        table.Set(12, L"Inhalt");
        table.Set(13, L"Hinweis");
        table.Set(14, L"Spalte");
        table.Set(15, L"Knopf");
    }

    void TearDown() override { frame->Destroy(); }

    wxFrame* frame = new wxFrame(nullptr, wxID_ANY, "designed");
    wxPanel* page = new wxPanel(frame); // controls stand on pages, not on the frame itself
    StringTable table;
};

TEST_F(LocaliseFormOnWindows, PutsTheTextsInPlace)
{
    SetTag(*frame, L"10");
    auto* label = new wxStaticText(page, wxID_ANY, "designed label");
    SetTag(*label, L"11");
    auto* text = new wxTextCtrl(page, wxID_ANY, "designed text");
    SetTag(*text, L"12");
    text->SetToolTip("13:designed tip");
    auto* list = new wxListCtrl(page, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLC_REPORT);
    list->AppendColumn("14:designed column");
    auto* button = new wxButton(page, wxID_ANY, "designed button");
    SetTag(*button, L"15");
    button->SetToolTip("13:designed tip");

    LocaliseForm(*frame, table);

    EXPECT_EQ(frame->GetTitle(), "Fenster");
    EXPECT_EQ(label->GetLabel(), "Beschriftung");
    EXPECT_EQ(text->GetValue(), "Inhalt");
    EXPECT_EQ(text->GetToolTipText(), "Hinweis");
    wxListItem header;
    header.SetMask(wxLIST_MASK_TEXT);
    list->GetColumn(0, header);
    EXPECT_EQ(header.GetText(), "Spalte");
    EXPECT_EQ(button->GetLabel(), "Knopf");
    EXPECT_EQ(button->GetToolTipText(), "Hinweis");
}

TEST_F(LocaliseFormOnWindows, LeavesWhatHasNoNumberOrNoText)
{
    auto* label = new wxStaticText(page, wxID_ANY, "designed label");
    auto* box = new wxCheckBox(page, wxID_ANY, "designed box");
    SetTag(*box, L"999");
    const wxFont font = label->GetFont();

    LocaliseForm(*frame, table);

    EXPECT_EQ(frame->GetTitle(), "designed");
    EXPECT_EQ(label->GetLabel(), "designed label");
    EXPECT_EQ(box->GetLabel(), "designed box");
    EXPECT_EQ(label->GetFont(), font);
}

TEST_F(LocaliseFormOnWindows, GivesEveryControlTheFontOfTheTable)
{
    auto* label = new wxStaticText(page, wxID_ANY, "label");
    table.Set(20, label->GetFont().GetFaceName().ToStdWstring());
    table.Set(21, L"17");

    LocaliseForm(*frame, table);

    EXPECT_EQ(label->GetFont().GetPointSize(), 17);
    EXPECT_EQ(page->GetFont().GetPointSize(), 17);
}

TEST_F(LocaliseFormOnWindows, ControlsAreMeasuredInTheFontOfTheTable)
{
    wxWindow* const controls[] = {new wxStaticText(page, wxID_ANY, "label"),
                                  new wxCheckBox(page, wxID_ANY, "box"),
                                  new wxButton(page, wxID_ANY, "a rather long button")};
    std::vector<wxSize> before;
    for (wxWindow* control : controls)
        before.push_back(control->GetBestSize());
    table.Set(20, page->GetFont().GetFaceName().ToStdWstring());
    table.Set(21, std::to_wstring(page->GetFont().GetPointSize() * 3));

    LocaliseForm(*frame, table);

    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_GT(controls[i]->GetBestSize().x, before[i].x * 3 / 2) << controls[i]->GetLabel();
        EXPECT_GT(controls[i]->GetBestSize().y, before[i].y * 5 / 4) << controls[i]->GetLabel();
    }
}

} // namespace
} // namespace voxtrel::settings
