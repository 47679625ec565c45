#include "settings/view/wx_form.h"

#include "platform/window_fonts.h"

#include <wx/listctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <functional>
#include <optional>

namespace voxtrel::settings {
namespace {

class Tag final : public wxClientData {
public:
    explicit Tag(std::wstring_view number) : text(number) {}

    std::wstring text;
};

std::wstring TagOf(const wxWindow& window)
{
    const auto* tag = dynamic_cast<const Tag*>(window.GetClientObject());
    return tag ? tag->text : std::wstring();
}

std::wstring TypeName(const wxWindow& control)
{
    if (dynamic_cast<const ToolbarTexts*>(&control))
        return L"Toolbar";
    if (dynamic_cast<const wxStaticText*>(&control))
        return L"Label";
    if (dynamic_cast<const wxListCtrl*>(&control))
        return L"ListView";
    if (dynamic_cast<const wxTextCtrl*>(&control))
        return L"TextBox";
    return control.GetClassInfo()->GetClassName();
}

// Calls visit for every control below parent. The parts that a toolbar is built of are no controls of the form.
void ForEachControl(wxWindow& parent, const std::function<void(wxWindow&)>& visit)
{
    for (wxWindow* child : parent.GetChildren()) {
        if (child->IsTopLevel())
            continue;
        visit(*child);
        if (!dynamic_cast<ToolbarTexts*>(child))
            ForEachControl(*child, visit);
    }
}

FontModel ReadFont(const wxFont& font) { return {font.GetFaceName().ToStdWstring(), font.GetFractionalPointSize()}; }

void ApplyFont(wxWindow& window, const FontModel& model)
{
    wxFont font = window.GetFont();
    const FontModel now = ReadFont(font);
    if (now.name == model.name && now.size == model.size)
        return;
    font.SetFaceName(wxString(model.name));
    font.SetFractionalPointSize(model.size);
    window.SetFont(font);
}

ControlModel ReadControl(wxWindow& control)
{
    ControlModel model;
    model.typeName = TypeName(control);
    model.tag = TagOf(control);
    model.caption = control.GetLabel().ToStdWstring();
    model.toolTipText = control.GetToolTipText().ToStdWstring();
    model.font = ReadFont(control.GetFont());
    if (const auto* toolbar = dynamic_cast<const ToolbarTexts*>(&control))
        model.buttons = toolbar->Buttons();
    if (const auto* text = dynamic_cast<const wxTextCtrl*>(&control))
        model.text = text->GetValue().ToStdWstring();
    if (const auto* list = dynamic_cast<const wxListCtrl*>(&control)) {
        for (int column = 0; column < list->GetColumnCount(); ++column) {
            wxListItem header;
            header.SetMask(wxLIST_MASK_TEXT);
            list->GetColumn(column, header);
            // The designed text of a header carries its number, as a tool tip's does.
            const std::wstring text = header.GetText().ToStdWstring();
            model.columnHeaders.push_back({text, text});
        }
    }
    return model;
}

void ApplyHeaders(wxListCtrl& list, const std::vector<ColumnHeaderModel>& headers)
{
    for (std::size_t column = 0; column < headers.size(); ++column) {
        wxListItem header;
        header.SetMask(wxLIST_MASK_TEXT);
        header.SetText(wxString(headers[column].text));
        list.SetColumn(static_cast<int>(column), header);
    }
}

void ApplyControl(wxWindow& control, const ControlModel& model)
{
    if (model.font)
        ApplyFont(control, *model.font);
    if (control.GetLabel() != wxString(model.caption))
        control.SetLabel(wxString(model.caption));
    if (control.GetToolTipText() != wxString(model.toolTipText))
        control.SetToolTip(wxString(model.toolTipText));
    if (auto* toolbar = dynamic_cast<ToolbarTexts*>(&control))
        toolbar->SetButtons(model.buttons);
    if (auto* text = dynamic_cast<wxTextCtrl*>(&control); text && text->GetValue() != wxString(model.text))
        text->ChangeValue(wxString(model.text));
    if (auto* list = dynamic_cast<wxListCtrl*>(&control))
        ApplyHeaders(*list, model.columnHeaders);
}

} // namespace

void SetTag(wxWindow& window, std::wstring_view tag) { window.SetClientObject(new Tag(tag)); }

FormModel ReadForm(wxTopLevelWindow& form)
{
    FormModel model;
    model.tag = TagOf(form);
    model.caption = form.GetTitle().ToStdWstring();
    model.font = ReadFont(form.GetFont());
    ForEachControl(form, [&model](wxWindow& control) { model.controls.push_back(ReadControl(control)); });
    return model;
}

void ApplyForm(wxTopLevelWindow& form, const FormModel& model)
{
    form.SetTitle(wxString(model.caption));
    ApplyFont(form, model.font);
    std::size_t next = 0;
    ForEachControl(form, [&](wxWindow& control) { ApplyControl(control, model.controls.at(next++)); });
    platform::SettleFonts(form);
    ForEachControl(form, [](wxWindow& control) { control.InvalidateBestSize(); });
    form.Layout();
}

void LocaliseForm(wxTopLevelWindow& form, const StringTable& table)
{
    FormModel model = ReadForm(form);
    LocaliseForm(model, table);
    ApplyForm(form, model);
}

} // namespace voxtrel::settings
