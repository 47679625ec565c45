#pragma once

#include "agent/stage/stage_view.h"
#include "agent/view/shaped_window.h"

#include <optional>

namespace voxtrel::agent::view {

wxFont FontOf(const stage::FontSpec& font);

// The word balloon. A click is told to the input.
class BalloonWindow : public ShapedWindow {
public:
    // input outlives the window.
    explicit BalloonWindow(stage::PointerInput& input);

    // borderWidth in pixels.
    void ShowBalloon(const stage::BalloonPicture& balloon, double borderWidth);

private:
    void PaintOver(wxDC& dc) override;

    std::optional<stage::BalloonPicture> balloon_;
    wxFont font_;
};

} // namespace voxtrel::agent::view
