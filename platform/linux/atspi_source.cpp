// The way from a point on the screen to the objects under it.
//
// The X server knows which window is on top at the pointer and whose process it is; that process is looked up
// among the programs of the accessibility bus. From the program's window the way down is asked for step by
// step: some toolkits answer with the deepest object, some with a child, some with the object itself though
// its children are there, so where the answer goes no deeper the children's places are compared.
//
// Menus and the lists of combo boxes lie in windows of their own, which are no children of the program. There
// the object counts that the program last called selected or focused: itself, or one of those beside it.

#include "platform/linux/atspi_source.h"

#include "platform/linux/atspi_description.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace voxtrel::platform {
namespace {

constexpr int kMaxDepth = 60;
constexpr int kMaxChildren = 100; // more are not compared one by one
constexpr int kPlacelessDepth = 3;
constexpr int kMaxScale = 4;

// The child whose place contains the point. Objects that have no place are gone through.
std::optional<AtspiAccessible> ChildAt(const AtspiAccessible& object, ScreenPoint point, int placelessDepth)
{
    // What manages its children itself knows best what lies where.
    if (object.HasState(ATSPI_STATE_MANAGES_DESCENDANTS) || object.ChildCount() > kMaxChildren)
        return std::nullopt;
    const std::vector<AtspiAccessible> children = object.Children();
    // The last one lies on top.
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        const AtspiExtents extents = child->Extents();
        if (extents.IsKnown() ? !extents.Contains(point) : placelessDepth == 0)
            continue;
        if (!child->HasState(ATSPI_STATE_SHOWING))
            continue;
        if (extents.IsKnown())
            return *child;
        if (auto inside = ChildAt(*child, point, placelessDepth - 1))
            return inside;
    }
    return std::nullopt;
}

// A tab's place is that of its caption; the page that belongs to it lies beside it.
std::optional<AtspiAccessible> InPage(const AtspiAccessible& tabs, ScreenPoint point)
{
    if (tabs.Role() != ATSPI_ROLE_PAGE_TAB_LIST)
        return std::nullopt;
    for (const AtspiAccessible& tab : tabs.Children()) {
        if (!tab.HasState(ATSPI_STATE_SELECTED))
            continue;
        if (auto inside = ChildAt(tab, point, kPlacelessDepth))
            return inside;
    }
    return std::nullopt;
}

AtspiAccessible DeepestAt(AtspiAccessible object, ScreenPoint point)
{
    for (int depth = 0; depth < kMaxDepth; ++depth) {
        auto next = object.AtPoint(point);
        if (!next || next->Reference() == object.Reference())
            next = ChildAt(object, point, kPlacelessDepth);
        if (!next)
            next = InPage(object, point);
        if (!next)
            break;
        object = *next;
    }
    return object;
}

// Programs that draw larger on a fine screen may still report places in their own, larger units.
ScreenPoint InUnitsOf(const AtspiExtents& window, int widthOnScreen, ScreenPoint point)
{
    if (!window.IsKnown() || widthOnScreen <= 0)
        return point;
    const int scale = static_cast<int>(std::lround(static_cast<double>(widthOnScreen) / window.width));
    if (scale < 2 || scale > kMaxScale)
        return point;
    return {point.x / scale, point.y / scale};
}

struct Found {
    AtspiAccessible object;
    ScreenPoint point; // in the units of the program
};

// The window of the program that is meant: the one with this title, else one that lies under the point.
std::optional<Found> WindowOf(const AtspiAccessible& program, const WindowUnderPoint& onScreen,
                              ScreenPoint point)
{
    std::optional<Found> found;
    for (const AtspiAccessible& window : program.Children()) {
        const AtspiExtents extents = window.Extents();
        const ScreenPoint there = InUnitsOf(extents, onScreen.width, point);
        const bool titled = onScreen.managed && !onScreen.title.empty() && window.Name() == onScreen.title;
        if (!extents.Contains(there) && !titled)
            continue;
        if (!window.HasState(ATSPI_STATE_SHOWING))
            continue;
        if (!found || titled)
            found = Found{window, there};
        if (titled && extents.Contains(there))
            break;
    }
    return found;
}

bool HoldsChoices(AtspiRole role)
{
    constexpr std::array kContainers = {ATSPI_ROLE_MENU,      ATSPI_ROLE_POPUP_MENU, ATSPI_ROLE_MENU_ITEM,
                                        ATSPI_ROLE_MENU_BAR,  ATSPI_ROLE_LIST,       ATSPI_ROLE_LIST_BOX,
                                        ATSPI_ROLE_TABLE,     ATSPI_ROLE_TREE,       ATSPI_ROLE_TREE_TABLE,
                                        ATSPI_ROLE_COMBO_BOX, ATSPI_ROLE_WINDOW};
    return std::find(kContainers.begin(), kContainers.end(), role) != kContainers.end();
}

// The character and its balloon come and go under the pointer while they speak: they are not to be
// interrupted by their own words.
bool IsOurCharacter(const WindowUnderPoint& window)
{
    return window.shaped && window.process == static_cast<std::uint32_t>(getppid());
}

// The object from which the way goes down to what the point is over in a menu: the chosen one, or one near
// it.
std::optional<AtspiAccessible> PlaceNear(std::optional<AtspiAccessible> chosen, ScreenPoint point)
{
    for (int up = 0; chosen && up < kPlacelessDepth; ++up) {
        if (chosen->Extents().Contains(point) && chosen->HasState(ATSPI_STATE_SHOWING))
            return chosen;
        if (auto child = ChildAt(*chosen, point, kPlacelessDepth))
            return child;
        chosen = chosen->Parent();
        // What lies further out may be the window behind the menu.
        if (chosen && !HoldsChoices(chosen->Role()))
            break;
    }
    return std::nullopt;
}

// The number that an item's width is to be multiplied with to fill its menu; 0 when it is no item of that
// menu.
int ScaleOf(const AtspiAccessible& item, const WindowUnderPoint& menu)
{
    const int width = item.Extents().width;
    const int scale = width > 0 ? static_cast<int>(std::lround(static_cast<double>(menu.width) / width)) : 0;
    return scale <= kMaxScale && std::abs(menu.width - scale * width) * 5 <= menu.width ? scale : 0;
}

std::optional<Found> PlaceInMenu(AtspiBus& bus, const AtspiAccessible& program, const WindowUnderPoint& menu,
                                 ScreenPoint point)
{
    const auto reference = bus.LastChosen(program.Reference().program);
    if (!reference)
        return std::nullopt;
    const AtspiAccessible chosen(bus, *reference);
    if (const int scale = ScaleOf(chosen, menu); scale > 1) {
        const ScreenPoint there{point.x / scale, point.y / scale};
        if (auto place = PlaceNear(chosen, there))
            return Found{*place, there};
    }
    if (auto place = PlaceNear(chosen, point))
        return Found{*place, point};
    // The chosen one is still the menu's title.
    for (int scale = 2; scale <= kMaxScale; ++scale) {
        const ScreenPoint there{point.x / scale, point.y / scale};
        if (auto place = PlaceNear(chosen, there); place && ScaleOf(*place, menu) == scale)
            return Found{*place, there};
    }
    return std::nullopt;
}

} // namespace

std::optional<AccessibleObject> AtspiSource::ObjectAt(ScreenPoint point, std::chrono::milliseconds deadline)
{
    if (!bus_.Begin(deadline))
        return AccessibleObject{};
    AccessibleObject object = Look(point);
    if (bus_.TimedOut())
        return std::nullopt;
    return object;
}

AccessibleObject AtspiSource::Look(ScreenPoint point)
{
    const auto onScreen = pointer_.WindowUnder();
    if (!onScreen || IsOurCharacter(*onScreen))
        return {};
    const auto program = ProgramOf(*onScreen);
    if (!program)
        return {};
    if (!onScreen->managed) {
        if (const auto place = PlaceInMenu(bus_, *program, *onScreen, point))
            return Describe(DeepestAt(place->object, place->point), place->point);
    }
    const auto found = WindowOf(*program, *onScreen, point);
    // A window behind a menu is not what the pointer is over.
    if (!found || (!onScreen->managed && found->object.Role() == ATSPI_ROLE_FRAME))
        return {};
    return Describe(DeepestAt(found->object, found->point), found->point);
}

std::optional<AtspiAccessible> AtspiSource::ProgramOf(const WindowUnderPoint& window)
{
    if (window.process == 0)
        return std::nullopt;
    const AtspiAccessible desktop(bus_, {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"});
    for (const AtspiAccessible& program : desktop.Children()) {
        if (bus_.ProcessOf(program.Reference().program) == window.process)
            return program;
    }
    return std::nullopt;
}

void PrepareAccessibilityServer() { AskForAccessibility(); }

void EndAccessibilityServer() { NoLongerAskForAccessibility(); }

std::unique_ptr<MousePointer> MakeMousePointer() { return std::make_unique<X11Pointer>(); }

std::unique_ptr<AccessibleSource> MakeAccessibleSource() { return std::make_unique<AtspiSource>(); }

} // namespace voxtrel::platform
