#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/control_questions.h"

#include <optional>

// The items of the system's own controls that have no windows of their own, asked with the controls'
// messages. The point counts from the upper left of the control's client area. Nothing where no item is.
namespace voxtrel::platform {

std::optional<AccessibleObject> TreeItem(ControlQuestions& questions, HWND tree, POINT point);

// Or a cell, in a table.
std::optional<AccessibleObject> ListViewItem(ControlQuestions& questions, HWND list, POINT point);

std::optional<AccessibleObject> ColumnHeader(ControlQuestions& questions, HWND header, POINT point);

std::optional<AccessibleObject> TabOfPages(ControlQuestions& questions, HWND tabs, POINT point);

std::optional<AccessibleObject> ToolbarButton(ControlQuestions& questions, HWND toolbar, POINT point);

std::optional<AccessibleObject> StatusBarPart(ControlQuestions& questions, HWND bar, POINT point);

// Of a list box, or of the open list of a combo box.
std::optional<AccessibleObject> ListBoxItem(ControlQuestions& questions, HWND list, POINT point);

} // namespace voxtrel::platform
