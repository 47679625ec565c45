#pragma once

#include "agent/stage/stage_view.h"
#include "agent/view/shaped_window.h"

#include <functional>
#include <memory>

namespace voxtrel::agent::view {

// Asked for the character's menu, at a place inside the window.
using MenuHook = std::function<void(wxWindow& character, const wxPoint& at)>;

// The character itself.
class CharacterWindow : public ShapedWindow {
public:
    // input outlives the window.
    CharacterWindow(const wxString& name, stage::PointerInput& input, MenuHook menu);

    void ShowFrame(std::shared_ptr<const stage::Picture> picture, const wxRect& place);
    void MoveFrame(const wxPoint& topLeft);
    void HideFrame();

private:
    // Of the picture at its place, anything can be seen.
    bool AnythingToSee() const;
    void OnPress(wxMouseEvent& event);
    void OnDoublePress(wxMouseEvent& event);
    void OnRelease(wxMouseEvent& event);
    void OnMotion(wxMouseEvent& event);

    stage::PointerInput& input_;
    MenuHook menu_;
    std::shared_ptr<const stage::Picture> picture_; // null while hidden
    wxRect place_;
};

} // namespace voxtrel::agent::view
