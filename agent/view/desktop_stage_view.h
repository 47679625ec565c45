#pragma once

#include "agent/stage/stage_view.h"
#include "agent/view/make_stage_view.h"

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/timer.h>

#include <memory>
#include <string_view>

namespace voxtrel::agent::view {

class DesktopStageView : public stage::StageView {
public:
    explicit DesktopStageView(ViewOptions options);

    int Width(const stage::FontSpec& font, std::wstring_view text) const override;
    int LineHeight(const stage::FontSpec& font) const override;

    stage::Time Now() const override;
    void Drive(stage::Ticker* ticker) override;
    void Wake() override;
    std::unique_ptr<stage::CharacterView> MakeCharacterView(std::wstring_view name,
                                                            stage::PointerInput& input) override;
    std::optional<stage::Rect> WorkAreaAt(const stage::Rect& rect) const override;
    double PixelScale() const override;
    int PictureDetail() const override;

private:
    void OnTimer();
    wxDC& Measuring(const stage::FontSpec& font) const;

    ViewOptions options_;
    stage::Ticker* ticker_ = nullptr;
    wxTimer timer_;
    wxBitmap pixel_{1, 1};
    mutable wxMemoryDC measuring_;
    mutable stage::FontSpec measuringFont_;
};

} // namespace voxtrel::agent::view
