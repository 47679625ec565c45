#include "agent/stage/balloon_layout.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace voxtrel::agent::stage {
namespace {

int ClampInto(int position, int length, int from, int to)
{
    return std::max(from, std::min(position, to - length));
}

} // namespace

BalloonMetrics MetricsAt(double pixelScale)
{
    const auto scaled = [&](double pixels) { return static_cast<int>(std::lround(pixels * pixelScale)); };
    return {.paddingX = scaled(10),
            .paddingY = scaled(9),
            .cornerRadius = scaled(7),
            .wedgeWidth = scaled(12),
            .wedgeLength = scaled(15),
            .gap = scaled(3)};
}

int AverageCharacterWidth(const TextMeasure& measure, const FontSpec& font)
{
    static constexpr std::wstring_view kSample = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const int length = static_cast<int>(kSample.size());
    return std::max(1, (measure.Width(font, kSample) + length / 2) / length);
}

BalloonPlace PlaceBalloon(Size body, const Rect& figure, const Rect& workArea, const BalloonMetrics& metrics)
{
    const int distance = metrics.wedgeLength + metrics.gap;
    const Point middle{figure.x + figure.width / 2, figure.y + figure.height / 2};
    const int above = figure.y - distance - body.height;
    const int below = figure.Bottom() + distance;
    const int left = figure.x - distance - body.width;
    const int right = figure.Right() + distance;

    BalloonPlace place{{middle.x - body.width / 2, above, body.width, body.height}};
    if (above >= workArea.y) {
        place.wedgeEdge = Edge::Bottom;
    } else if (below + body.height <= workArea.Bottom()) {
        place.wedgeEdge = Edge::Top;
        place.body.y = below;
    } else {
        const bool moreOnTheRight = workArea.Right() - figure.Right() >= figure.x - workArea.x;
        place.wedgeEdge = moreOnTheRight ? Edge::Left : Edge::Right;
        place.body.x = moreOnTheRight ? right : left;
        place.body.y = middle.y - body.height / 2;
    }
    place.body.x = ClampInto(place.body.x, body.width, workArea.x, workArea.Right());
    place.body.y = ClampInto(place.body.y, body.height, workArea.y, workArea.Bottom());

    const bool horizontal = place.wedgeEdge == Edge::Top || place.wedgeEdge == Edge::Bottom;
    const int wanted = horizontal ? middle.x - place.body.x : middle.y - place.body.y;
    const int edge = horizontal ? body.width : body.height;
    const int margin = metrics.cornerRadius + metrics.wedgeWidth / 2 + 1;
    place.wedgeCenter = edge > 2 * margin ? std::clamp(wanted, margin, edge - margin) : edge / 2;
    return place;
}

} // namespace voxtrel::agent::stage
