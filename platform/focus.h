#pragma once

class wxListBox;
class wxWindow;

namespace voxtrel::platform {

// Lets the content of a control that scrolls take the focus, never the frame around it: keys that reach the
// frame do nothing.
void FocusContent(wxWindow& control);

// Lets a list in which nothing is chosen take the focus without choosing an entry. To be called whenever its
// entries have changed.
void FocusWithoutChoice(wxListBox& list);

// Switches a control on or off. Tab finds it as long as it is on.
void EnableInTabOrder(wxWindow& control, bool enabled);

} // namespace voxtrel::platform
