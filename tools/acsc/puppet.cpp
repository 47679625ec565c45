#include "tools/acsc/puppet.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>

namespace voxtrel::acsc {

namespace {

template <typename T> void TakeOver(std::optional<T>& mine, const std::optional<T>& other)
{
    if (other)
        mine = other;
}

double Mix(double from, double to, double progress) { return from + (to - from) * progress; }

Point Mix(Point from, Point to, double progress)
{
    return {Mix(from.x, to.x, progress), Mix(from.y, to.y, progress)};
}

void PlaceNextTo(std::vector<int>& order, int part, const Placement& placement)
{
    std::erase(order, part);
    auto at = std::find(order.begin(), order.end(), placement.part);
    if (placement.side == Placement::Side::Above && at != order.end())
        ++at;
    order.insert(at, part);
}

} // namespace

Affine Affine::Rotation(double degrees)
{
    const double angle = degrees * std::numbers::pi / 180;
    return {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
}

Affine operator*(const Affine& left, const Affine& right)
{
    return {
        left.xx * right.xx + left.xy * right.yx,           left.yx * right.xx + left.yy * right.yx,
        left.xx * right.xy + left.xy * right.yy,           left.yx * right.xy + left.yy * right.yy,
        left.xx * right.x0 + left.xy * right.y0 + left.x0, left.yx * right.x0 + left.yy * right.y0 + left.y0};
}

Point Affine::operator()(Point point) const
{
    return {xx * point.x + xy * point.y + x0, yx * point.x + yy * point.y + y0};
}

void PartSettings::Override(const PartSettings& other)
{
    TakeOver(rotate, other.rotate);
    TakeOver(move, other.move);
    TakeOver(scale, other.scale);
    TakeOver(opacity, other.opacity);
    TakeOver(draw, other.draw);
    TakeOver(shown, other.shown);
    TakeOver(placement, other.placement);
}

void PoseSettings::Override(const PoseSettings& other)
{
    for (const auto& [part, settings] : other.parts)
        parts[part].Override(settings);
}

void Stance::Apply(int part, const PartSettings& settings)
{
    PartStance& as = parts[static_cast<std::size_t>(part)];
    as.rotate = settings.rotate.value_or(as.rotate);
    as.move = settings.move.value_or(as.move);
    as.scale = settings.scale.value_or(as.scale);
    as.opacity = settings.opacity.value_or(as.opacity);
    as.draw = settings.draw.value_or(as.draw);
    as.shown = settings.shown.value_or(as.shown);
    if (settings.placement)
        PlaceNextTo(paintOrder, part, *settings.placement);
}

Stance FillIn(const std::vector<Part>& parts, const PoseSettings& pose)
{
    Stance stance;
    for (const Part& part : parts) {
        PartStance& as = stance.parts.emplace_back();
        as.draw = part.isJoint ? "" : part.name;
        as.shown = part.shown && !pose.startsEmpty;
    }
    stance.paintOrder.resize(parts.size());
    std::iota(stance.paintOrder.begin(), stance.paintOrder.end(), 0);
    for (const auto& [part, settings] : pose.parts)
        stance.Apply(part, settings);
    return stance;
}

Stance Between(const Stance& from, const Stance& to, double progress)
{
    Stance stance = progress < 0.5 ? from : to;
    for (std::size_t i = 0; i < stance.parts.size(); ++i) {
        PartStance& part = stance.parts[i];
        part.rotate = Mix(from.parts[i].rotate, to.parts[i].rotate, progress);
        part.move = Mix(from.parts[i].move, to.parts[i].move, progress);
        part.scale = Mix(from.parts[i].scale, to.parts[i].scale, progress);
        part.opacity = std::clamp(Mix(from.parts[i].opacity, to.parts[i].opacity, progress), 0.0, 1.0);
    }
    return stance;
}

Affine TransformOf(const std::vector<Part>& parts, const Stance& stance, int part)
{
    Affine transform;
    for (int i = part; i >= 0; i = parts[static_cast<std::size_t>(i)].parent) {
        const PartStance& as = stance.parts[static_cast<std::size_t>(i)];
        const Point pivot = parts[static_cast<std::size_t>(i)].pivot;
        const Affine own = Affine::Translation({as.move.x + pivot.x, as.move.y + pivot.y}) *
                           Affine::Rotation(as.rotate) * Affine::Scaling(as.scale) *
                           Affine::Translation({-pivot.x, -pivot.y});
        transform = own * transform;
    }
    return transform;
}

} // namespace voxtrel::acsc
