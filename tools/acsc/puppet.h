#pragma once

#include "tools/acsc/statement.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

// The parts of a character and how they stand in a pose.
namespace voxtrel::acsc {

// A 2x3 matrix: x' = xx*x + xy*y + x0, y' = yx*x + yy*y + y0.
struct Affine {
    double xx = 1, yx = 0, xy = 0, yy = 1, x0 = 0, y0 = 0;

    static Affine Translation(Point by) { return {1, 0, 0, 1, by.x, by.y}; }
    static Affine Scaling(Point by) { return {by.x, 0, 0, by.y, 0, 0}; }
    static Affine Rotation(double degrees); // clockwise, as y points down

    // First the right one, then the left one.
    friend Affine operator*(const Affine& left, const Affine& right);
    Point operator()(Point point) const;
};

struct Part {
    std::string name;
    bool isJoint = false; // moves what hangs on it, has no drawing
    std::string hangsOn;  // empty: on nothing
    int parent = -1;      // index of that part
    Point pivot;          // in drawing units
    bool pivotGiven = false;
    bool shown = true; // unless a pose says otherwise
    std::vector<std::string> variants;
    int line = 0; // where it is declared
};

struct Placement {
    enum class Side { Above, Below } side = Side::Above;
    int part = 0; // the one that it is painted next to
    friend auto operator<=>(const Placement&, const Placement&) = default;
};

// What a pose says of one part; the rest stays as it is drawn.
struct PartSettings {
    std::optional<double> rotate; // degrees clockwise
    std::optional<Point> move;    // drawing units
    std::optional<Point> scale;
    std::optional<double> opacity;
    std::optional<std::string> draw; // id of the element
    std::optional<bool> shown;
    std::optional<Placement> placement;

    // Takes over what other says.
    void Override(const PartSettings& other);
};

struct PoseSettings {
    bool startsEmpty = false;
    std::map<int, PartSettings> parts; // by index of the part

    void Override(const PoseSettings& other);
};

struct PartStance {
    double rotate = 0;
    Point move;
    Point scale{1, 1};
    double opacity = 1;
    std::string draw; // empty for a joint
    bool shown = true;
    friend auto operator<=>(const PartStance&, const PartStance&) = default;
};

// A pose with everything filled in: one stance a part, and the parts in the order of painting, lowest first.
struct Stance {
    std::vector<PartStance> parts;
    std::vector<int> paintOrder;

    // Puts what a pose says of one part over the stance.
    void Apply(int part, const PartSettings& settings);

    friend auto operator<=>(const Stance&, const Stance&) = default;
};

Stance FillIn(const std::vector<Part>& parts, const PoseSettings& pose);

// Between two stances; progress 0 gives from, 1 gives to, beyond 1 goes on in the same direction. What has no
// in-between changes at one half.
Stance Between(const Stance& from, const Stance& to, double progress);

// Where a part comes to lie: from drawing units as drawn to drawing units in the stance.
Affine TransformOf(const std::vector<Part>& parts, const Stance& stance, int part);

} // namespace voxtrel::acsc
