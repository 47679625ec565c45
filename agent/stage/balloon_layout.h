#pragma once

#include "agent/stage/geometry.h"
#include "agent/stage/stage_view.h"

namespace voxtrel::agent::stage {

// The measures of a balloon beside its text, in pixels of the screen.
struct BalloonMetrics {
    int paddingX = 0; // from the border to the text
    int paddingY = 0;
    int cornerRadius = 0;
    int wedgeWidth = 0;
    int wedgeLength = 0;
    int gap = 0; // between the wedge's tip and the character
};

BalloonMetrics MetricsAt(double pixelScale);

// The average width of a character of the font, at least 1.
int AverageCharacterWidth(const TextMeasure& measure, const FontSpec& font);

struct BalloonPlace {
    Rect body;
    Edge wedgeEdge = Edge::Bottom;
    int wedgeCenter = 0; // along the edge, from the body's corner
};

// Where a balloon of this size goes: above the figure, else below it, else on the side with more room; inside
// the work area in any case. The wedge follows the figure along the straight part of the edge. body must not
// be larger than the work area.
BalloonPlace PlaceBalloon(Size body, const Rect& figure, const Rect& workArea, const BalloonMetrics& metrics);

} // namespace voxtrel::agent::stage
