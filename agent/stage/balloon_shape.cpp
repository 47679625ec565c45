#include "agent/stage/balloon_shape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

// The outline is the zero line of a distance function, negative inside: the nearer of a rounded rectangle and
// a triangle. A pixel belongs to the balloon when its middle lies inside; how deep it lies decides between
// the colours of border and background.

namespace voxtrel::agent::stage {
namespace {

struct Vector {
    double x = 0;
    double y = 0;
};

using Triangle = std::array<Vector, 3>;

double ToRoundedRect(Vector p, const Rect& body, double radius)
{
    const double halfWidth = body.width / 2.0;
    const double halfHeight = body.height / 2.0;
    const double r = std::min({radius, halfWidth, halfHeight});
    const double x = std::abs(p.x - body.x - halfWidth) - halfWidth + r;
    const double y = std::abs(p.y - body.y - halfHeight) - halfHeight + r;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - r;
}

// The corners go around clockwise on the screen.
double ToTriangle(Vector p, const Triangle& corners)
{
    double nearest = -1e9;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Vector a = corners[i];
        const Vector b = corners[(i + 1) % corners.size()];
        const Vector edge{b.x - a.x, b.y - a.y};
        const double across = edge.y * (p.x - a.x) - edge.x * (p.y - a.y);
        nearest = std::max(nearest, across / std::hypot(edge.x, edge.y));
    }
    return nearest;
}

// The wedge, its base sunk into the body so that no border runs between them.
Triangle WedgeOf(const BalloonPicture& balloon, const Rect& body)
{
    const double half = balloon.wedgeWidth / 2.0;
    const double length = balloon.wedgeLength;
    const double slope = half / std::max(length, 1.0);
    const double sunk = std::min(balloon.cornerRadius + 1.0, std::min(body.width, body.height) / 2.0);
    const double wide = half + sunk * slope;
    const double x = body.x + balloon.wedgeCenter;
    const double y = body.y + balloon.wedgeCenter;
    const double right = body.Right();
    const double bottom = body.Bottom();
    switch (balloon.wedgeEdge) {
    case Edge::Bottom:
        return {{{x - wide, bottom - sunk}, {x + wide, bottom - sunk}, {x, bottom + length}}};
    case Edge::Top:
        return {{{x + wide, body.y + sunk}, {x - wide, body.y + sunk}, {x, body.y - length}}};
    case Edge::Left:
        return {{{body.x + sunk, y - wide}, {body.x + sunk, y + wide}, {body.x - length, y}}};
    case Edge::Right:
        return {{{right - sunk, y + wide}, {right - sunk, y - wide}, {right + length, y}}};
    }
    return {};
}

std::uint8_t Mix(std::uint8_t inner, std::uint8_t border, double share)
{
    return static_cast<std::uint8_t>(std::lround(inner + (border - inner) * share));
}

} // namespace

Rect BalloonBounds(const BalloonPicture& balloon)
{
    Rect bounds = balloon.body;
    const bool horizontal = balloon.wedgeEdge == Edge::Top || balloon.wedgeEdge == Edge::Bottom;
    (horizontal ? bounds.height : bounds.width) += balloon.wedgeLength;
    if (balloon.wedgeEdge == Edge::Top)
        bounds.y -= balloon.wedgeLength;
    if (balloon.wedgeEdge == Edge::Left)
        bounds.x -= balloon.wedgeLength;
    return bounds;
}

Picture PaintBalloonShape(const BalloonPicture& balloon, double borderWidth, int detail)
{
    const Rect bounds = BalloonBounds(balloon);
    const Rect body{balloon.body.x - bounds.x, balloon.body.y - bounds.y, balloon.body.width,
                    balloon.body.height};
    const Triangle wedge = WedgeOf(balloon, body);

    Picture picture{{bounds.width * detail, bounds.height * detail}, {}, {}};
    picture.mask.resize(static_cast<std::size_t>(picture.size.width) * picture.size.height);
    picture.colors.resize(picture.mask.size() * 3);
    for (int y = 0; y < picture.size.height; ++y) {
        for (int x = 0; x < picture.size.width; ++x) {
            const Vector middle{(x + 0.5) / detail, (y + 0.5) / detail};
            const double distance =
                std::min(ToRoundedRect(middle, body, balloon.cornerRadius), ToTriangle(middle, wedge));
            if (distance > 0)
                continue;
            const std::size_t i = static_cast<std::size_t>(y) * picture.size.width + x;
            const double border = std::clamp((borderWidth + distance) * detail + 0.5, 0.0, 1.0);
            const acs::Color& fill = balloon.colors.background;
            const acs::Color& line = balloon.colors.border;
            picture.mask[i] = 255;
            picture.colors[i * 3] = Mix(fill.red, line.red, border);
            picture.colors[i * 3 + 1] = Mix(fill.green, line.green, border);
            picture.colors[i * 3 + 2] = Mix(fill.blue, line.blue, border);
        }
    }
    return picture;
}

} // namespace voxtrel::agent::stage
