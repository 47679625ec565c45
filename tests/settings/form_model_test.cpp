#include "settings/form_model.h"

#include <gtest/gtest.h>

namespace voxtrel::settings {
namespace {

StringTable Texts()
{
    StringTable table;
    table.Set(1000, L"Voxtrel");
    table.Set(1101, L"Show &Speech Options");
    table.Set(1103, L"Hide &Toolbar");
    table.Set(7, L"seven");
    table.Set(8, L"eight");
    return table;
}

ControlModel Control(const wchar_t* typeName)
{
    ControlModel control;
    control.typeName = typeName;
    return control;
}

// Localises a window with this one control.
ControlModel Localised(ControlModel control, const StringTable& table = Texts())
{
    FormModel form;
    form.controls.push_back(std::move(control));
    LocaliseForm(form, table);
    return form.controls[0];
}

TEST(LocaliseForm, TitlesTheWindowByItsTag)
{
    FormModel form;
    form.tag = L"1000";
    form.caption = L"designed";
    LocaliseForm(form, Texts());
    EXPECT_EQ(form.caption, L"Voxtrel");

    form.tag = L"";
    form.caption = L"designed";
    LocaliseForm(form, Texts());
    EXPECT_EQ(form.caption, L"designed");
}

TEST(LocaliseForm, TakesAMenuEntrysNumberFromItsCaption)
{
    ControlModel entry = Control(L"Menu");
    entry.caption = L"1103:Hide &Toolbar as designed";
    entry.tag = L"7";
    EXPECT_EQ(Localised(entry).caption, L"Hide &Toolbar");
}

TEST(LocaliseForm, KeepsTheMenusRoot)
{
    ControlModel root = Control(L"Menu");
    root.caption = L"ROOT";
    root.tag = L"7";
    EXPECT_EQ(Localised(root).caption, L"ROOT");
}

TEST(LocaliseForm, TakesALabelsNumberFromItsTagAndLeavesItsToolTip)
{
    ControlModel label = Control(L"Label");
    label.caption = L"8:designed";
    label.toolTipText = L"8";
    label.tag = L"7";
    EXPECT_EQ(Localised(label).caption, L"seven");
    EXPECT_EQ(Localised(label).toolTipText, L"8");
}

TEST(LocaliseForm, KeepsALabelWithoutATag)
{
    ControlModel label = Control(L"Label");
    label.caption = L"8:designed";
    EXPECT_EQ(Localised(label).caption, L"8:designed");
}

TEST(LocaliseForm, LocalisesButtonsAndTheirMenus)
{
    ControlModel toolbar = Control(L"Toolbar");
    toolbar.caption = L"7";
    toolbar.toolTipText = L"7";
    toolbar.buttons = {{L"7:tip", {}}, {L"tip", {L"8:entry", L"entry"}}};
    const ControlModel localised = Localised(toolbar);
    EXPECT_EQ(localised.buttons[0].toolTipText, L"seven");
    EXPECT_EQ(localised.buttons[1].toolTipText, L"tip");
    EXPECT_EQ(localised.buttons[1].buttonMenus, (std::vector<std::wstring>{L"eight", L"entry"}));
    EXPECT_EQ(localised.caption, L"7");
    EXPECT_EQ(localised.toolTipText, L"7");
}

TEST(LocaliseForm, LocalisesColumnHeadersByTheirTagsAndTheListsToolTip)
{
    ControlModel list = Control(L"ListView");
    list.columnHeaders = {{L"7", L"8"}, {L"", L"8"}};
    list.toolTipText = L"8: tip";
    list.tag = L"7";
    list.caption = L"7";
    const ControlModel localised = Localised(list);
    EXPECT_EQ(localised.columnHeaders[0].text, L"seven");
    EXPECT_EQ(localised.columnHeaders[1].text, L"8");
    EXPECT_EQ(localised.toolTipText, L"eight");
    EXPECT_EQ(localised.caption, L"7");
}

TEST(LocaliseForm, LocalisesATextBoxsTextAndToolTip)
{
    ControlModel box = Control(L"TextBox");
    box.tag = L"7";
    box.text = L"8";
    box.caption = L"8";
    box.toolTipText = L"8";
    const ControlModel localised = Localised(box);
    EXPECT_EQ(localised.text, L"seven");
    EXPECT_EQ(localised.toolTipText, L"eight");
    EXPECT_EQ(localised.caption, L"8");
}

TEST(LocaliseForm, LocalisesAnyOtherKindByTagAndToolTip)
{
    for (const wchar_t* typeName : {L"CommandButton", L"label", L"MENU", L""}) {
        ControlModel other = Control(typeName);
        other.tag = L"7:caption";
        other.caption = L"1000";
        other.toolTipText = L"8:tip";
        other.text = L"8";
        const ControlModel localised = Localised(other);
        EXPECT_EQ(localised.caption, L"seven");
        EXPECT_EQ(localised.toolTipText, L"eight");
        EXPECT_EQ(localised.text, L"8");
    }
}

TEST(LocaliseForm, KeepsTheDesignWithoutAUsableNumber)
{
    for (const wchar_t* tag : {L"0", L"-7", L"7.5", L"999", L"1e30", L"seven", L".7"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(tag)));
        ControlModel label = Control(L"Label");
        label.tag = tag;
        label.caption = L"designed";
        EXPECT_EQ(Localised(label).caption, L"designed");
    }
}

TEST(LocaliseForm, LeavesFontsAloneWithoutText20)
{
    StringTable table = Texts();
    table.Set(21, L"30");
    FormModel form;
    form.font = {L"designed", 8};
    form.controls.push_back(Control(L"Label"));
    form.controls[0].font = FontModel{L"label's own", 9};
    LocaliseForm(form, table);
    EXPECT_EQ(form.font.name, L"designed");
    EXPECT_EQ(form.font.size, 8);
    EXPECT_EQ(form.controls[0].font->name, L"label's own");
    EXPECT_EQ(form.controls[0].font->size, 9);
}

TEST(LocaliseForm, GivesWindowAndControlsTheFontOfTexts20And21)
{
    StringTable table = Texts();
    table.Set(20, L"Tahoma");
    table.Set(21, L"9.5");
    FormModel form;
    form.font = {L"designed", 8};
    form.controls = {Control(L"Label"), Control(L"Timer")};
    form.controls[0].font = FontModel{L"label's own", 12};
    LocaliseForm(form, table);
    EXPECT_EQ(form.font.name, L"Tahoma");
    EXPECT_EQ(form.font.size, 9.5);
    EXPECT_EQ(form.controls[0].font->name, L"Tahoma");
    EXPECT_EQ(form.controls[0].font->size, 9.5);
    EXPECT_FALSE(form.controls[1].font.has_value());
}

TEST(LocaliseForm, KeepsTheSizeWithoutAUsableText21)
{
    StringTable table = Texts();
    table.Set(20, L"Tahoma");
    FormModel form;
    form.font = {L"designed", 8};
    LocaliseForm(form, table);
    EXPECT_EQ(form.font.name, L"Tahoma");
    EXPECT_EQ(form.font.size, 8);
}

} // namespace
} // namespace voxtrel::settings
