#pragma once

#include "platform/accessible_source.h"
#include "platform/linux/atspi_bus.h"

#include <atspi/atspi-constants.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::platform {

struct AtspiExtents {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool IsKnown() const { return width > 0 && height > 0 && x > -100000 && y > -100000; }
    bool Contains(ScreenPoint point) const
    {
        return IsKnown() && point.x >= x && point.y >= y && point.x - x < width && point.y - y < height;
    }
};

// One accessible object of another program; each question is a call over the bus. What cannot be answered is
// empty.
class AtspiAccessible {
public:
    AtspiAccessible(AtspiBus& bus, AtspiReference reference) : bus_(&bus), reference_(std::move(reference)) {}

    const AtspiReference& Reference() const { return reference_; }
    AtspiBus& Bus() const { return *bus_; }

    std::string Name() const { return TextProperty("Name"); }
    std::string Description() const { return TextProperty("Description"); }
    AtspiRole Role() const;
    // In the language of the program where it gives that.
    std::string RoleName() const;
    std::optional<AtspiAccessible> Parent() const;
    std::vector<AtspiAccessible> Children() const;
    int ChildCount() const;
    int IndexInParent() const;
    // The first object that labels this one.
    std::optional<AtspiAccessible> Label() const;

    bool HasState(AtspiStateType state) const;
    bool Implements(const char* interface) const;

    AtspiExtents Extents() const;
    // The child, or a deeper descendant, that the program says is at this place.
    std::optional<AtspiAccessible> AtPoint(ScreenPoint point) const;

    // Each only for an object that implements the interface.
    std::optional<double> CurrentValue() const { return NumberOf("CurrentValue"); }
    // How much of its range the current value fills, 0 to 1.
    std::optional<double> FilledPart() const;
    std::optional<AtspiAccessible> SelectedChild() const;
    std::string Text(int maxCharacters) const;
    std::string LineAt(ScreenPoint point) const;
    // Whether one of its actions has this name.
    bool HasAction(std::string_view name) const;
    // The objects in the row of a table that its child with this index stands in.
    std::vector<AtspiAccessible> RowOf(int childIndex) const;

private:
    std::string TextProperty(const char* name) const;
    std::optional<double> NumberOf(const char* valueProperty) const;
    std::optional<AtspiAccessible> ReferenceFrom(const Variant& reply) const;
    Variant Call(const char* interface, const char* method, GVariant* parameters, const char* replyType) const
    {
        return bus_->Call(reference_, interface, method, parameters, replyType);
    }

    AtspiBus* bus_;
    AtspiReference reference_;
    mutable std::optional<std::uint64_t> states_; // a bit each
    mutable std::optional<std::vector<std::string>> interfaces_;
};

namespace atspi {
inline constexpr char kAccessible[] = "org.a11y.atspi.Accessible";
inline constexpr char kComponent[] = "org.a11y.atspi.Component";
inline constexpr char kValue[] = "org.a11y.atspi.Value";
inline constexpr char kSelection[] = "org.a11y.atspi.Selection";
inline constexpr char kText[] = "org.a11y.atspi.Text";
inline constexpr char kEditableText[] = "org.a11y.atspi.EditableText";
inline constexpr char kTable[] = "org.a11y.atspi.Table";
inline constexpr char kAction[] = "org.a11y.atspi.Action";
} // namespace atspi

} // namespace voxtrel::platform
