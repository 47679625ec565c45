#include "platform/linux/atspi_accessible.h"

#include <algorithm>

namespace voxtrel::platform {
namespace {

constexpr guint32 kScreen = ATSPI_COORD_TYPE_SCREEN;
constexpr int kMaxColumns = 10;
constexpr int kMaxActions = 5;

std::string TextFrom(const Variant& value)
{
    if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
        return {};
    return g_variant_get_string(value.get(), nullptr);
}

std::optional<int> IntFrom(const Variant& reply)
{
    if (!reply)
        return std::nullopt;
    gint32 number = 0;
    g_variant_get(reply.get(), "(i)", &number);
    return number;
}

} // namespace

std::string AtspiAccessible::TextProperty(const char* name) const
{
    return TextFrom(bus_->Property(reference_, atspi::kAccessible, name));
}

std::optional<AtspiAccessible> AtspiAccessible::ReferenceFrom(const Variant& reply) const
{
    if (!reply)
        return std::nullopt;
    const char* program = nullptr;
    const char* path = nullptr;
    g_variant_get(reply.get(), "((&s&o))", &program, &path);
    AtspiReference reference{program, path};
    if (reference.IsNull())
        return std::nullopt;
    return AtspiAccessible(*bus_, std::move(reference));
}

AtspiRole AtspiAccessible::Role() const
{
    const Variant reply = Call(atspi::kAccessible, "GetRole", nullptr, "(u)");
    if (!reply)
        return ATSPI_ROLE_INVALID;
    guint32 role = 0;
    g_variant_get(reply.get(), "(u)", &role);
    return static_cast<AtspiRole>(role);
}

std::string AtspiAccessible::RoleName() const
{
    for (const char* method : {"GetLocalizedRoleName", "GetRoleName"}) {
        const Variant reply = Call(atspi::kAccessible, method, nullptr, "(s)");
        if (!reply)
            continue;
        const char* name = nullptr;
        g_variant_get(reply.get(), "(&s)", &name);
        if (*name != '\0')
            return name;
    }
    return {};
}

std::optional<AtspiAccessible> AtspiAccessible::Parent() const
{
    const Variant value = bus_->Property(reference_, atspi::kAccessible, "Parent");
    if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE("(so)")))
        return std::nullopt;
    const char* program = nullptr;
    const char* path = nullptr;
    g_variant_get(value.get(), "(&s&o)", &program, &path);
    AtspiReference reference{program, path};
    if (reference.IsNull())
        return std::nullopt;
    return AtspiAccessible(*bus_, std::move(reference));
}

std::vector<AtspiAccessible> AtspiAccessible::Children() const
{
    std::vector<AtspiAccessible> children;
    const Variant reply = Call(atspi::kAccessible, "GetChildren", nullptr, "(a(so))");
    if (!reply)
        return children;
    GVariantIter* each = nullptr;
    g_variant_get(reply.get(), "(a(so))", &each);
    const char* program = nullptr;
    const char* path = nullptr;
    while (g_variant_iter_loop(each, "(&s&o)", &program, &path)) {
        AtspiReference reference{program, path};
        if (!reference.IsNull())
            children.emplace_back(*bus_, std::move(reference));
    }
    g_variant_iter_free(each);
    return children;
}

int AtspiAccessible::ChildCount() const
{
    const Variant value = bus_->Property(reference_, atspi::kAccessible, "ChildCount");
    if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_INT32))
        return 0;
    return g_variant_get_int32(value.get());
}

int AtspiAccessible::IndexInParent() const
{
    return IntFrom(Call(atspi::kAccessible, "GetIndexInParent", nullptr, "(i)")).value_or(-1);
}

std::optional<AtspiAccessible> AtspiAccessible::Label() const
{
    const Variant reply = Call(atspi::kAccessible, "GetRelationSet", nullptr, "(a(ua(so)))");
    if (!reply)
        return std::nullopt;
    std::optional<AtspiAccessible> label;
    GVariantIter* relations = nullptr;
    g_variant_get(reply.get(), "(a(ua(so)))", &relations);
    guint32 kind = 0;
    GVariantIter* targets = nullptr;
    while (!label && g_variant_iter_next(relations, "(ua(so))", &kind, &targets)) {
        const char* program = nullptr;
        const char* path = nullptr;
        if (kind == ATSPI_RELATION_LABELLED_BY && g_variant_iter_next(targets, "(&s&o)", &program, &path))
            label.emplace(*bus_, AtspiReference{program, path});
        g_variant_iter_free(targets);
    }
    g_variant_iter_free(relations);
    return label;
}

bool AtspiAccessible::HasState(AtspiStateType state) const
{
    if (!states_) {
        states_ = 0;
        const Variant reply = Call(atspi::kAccessible, "GetState", nullptr, "(au)");
        if (reply) {
            GVariantIter* words = nullptr;
            g_variant_get(reply.get(), "(au)", &words);
            guint32 low = 0;
            guint32 high = 0;
            g_variant_iter_next(words, "u", &low);
            g_variant_iter_next(words, "u", &high);
            g_variant_iter_free(words);
            states_ = low | std::uint64_t{high} << 32;
        }
    }
    return (*states_ >> state & 1) != 0;
}

bool AtspiAccessible::Implements(const char* interface) const
{
    if (!interfaces_) {
        interfaces_.emplace();
        const Variant reply = Call(atspi::kAccessible, "GetInterfaces", nullptr, "(as)");
        if (reply) {
            GVariantIter* each = nullptr;
            g_variant_get(reply.get(), "(as)", &each);
            const char* name = nullptr;
            while (g_variant_iter_loop(each, "&s", &name))
                interfaces_->push_back(name);
            g_variant_iter_free(each);
        }
    }
    return std::find(interfaces_->begin(), interfaces_->end(), interface) != interfaces_->end();
}

AtspiExtents AtspiAccessible::Extents() const
{
    AtspiExtents extents;
    const Variant reply = Call(atspi::kComponent, "GetExtents", g_variant_new("(u)", kScreen), "((iiii))");
    if (reply)
        g_variant_get(reply.get(), "((iiii))", &extents.x, &extents.y, &extents.width, &extents.height);
    return extents;
}

std::optional<AtspiAccessible> AtspiAccessible::AtPoint(ScreenPoint point) const
{
    return ReferenceFrom(Call(atspi::kComponent, "GetAccessibleAtPoint",
                              g_variant_new("(iiu)", point.x, point.y, kScreen), "((so))"));
}

std::optional<double> AtspiAccessible::NumberOf(const char* valueProperty) const
{
    const Variant value = bus_->Property(reference_, atspi::kValue, valueProperty);
    if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_DOUBLE))
        return std::nullopt;
    return g_variant_get_double(value.get());
}

std::optional<double> AtspiAccessible::FilledPart() const
{
    const auto least = NumberOf("MinimumValue");
    const auto most = NumberOf("MaximumValue");
    const auto now = NumberOf("CurrentValue");
    if (!least || !most || !now || *most <= *least)
        return std::nullopt;
    return (*now - *least) / (*most - *least);
}

std::optional<AtspiAccessible> AtspiAccessible::SelectedChild() const
{
    return ReferenceFrom(Call(atspi::kSelection, "GetSelectedChild", g_variant_new("(i)", 0), "((so))"));
}

std::string AtspiAccessible::Text(int maxCharacters) const
{
    const Variant count = bus_->Property(reference_, atspi::kText, "CharacterCount");
    if (!count || !g_variant_is_of_type(count.get(), G_VARIANT_TYPE_INT32))
        return {};
    const int end = std::min(g_variant_get_int32(count.get()), maxCharacters);
    if (end <= 0)
        return {};
    const Variant reply = Call(atspi::kText, "GetText", g_variant_new("(ii)", 0, end), "(s)");
    if (!reply)
        return {};
    const char* text = nullptr;
    g_variant_get(reply.get(), "(&s)", &text);
    return text;
}

std::string AtspiAccessible::LineAt(ScreenPoint point) const
{
    const auto offset = IntFrom(
        Call(atspi::kText, "GetOffsetAtPoint", g_variant_new("(iiu)", point.x, point.y, kScreen), "(i)"));
    if (!offset || *offset < 0)
        return {};
    Variant reply = Call(atspi::kText, "GetStringAtOffset",
                         g_variant_new("(iu)", *offset, guint32{ATSPI_TEXT_GRANULARITY_LINE}), "(sii)");
    if (!reply)
        return {};
    const char* line = nullptr;
    g_variant_get(reply.get(), "(&sii)", &line, nullptr, nullptr);
    return line;
}

bool AtspiAccessible::HasAction(std::string_view name) const
{
    const Variant count = bus_->Property(reference_, atspi::kAction, "NActions");
    if (!count || !g_variant_is_of_type(count.get(), G_VARIANT_TYPE_INT32))
        return false;
    for (int i = 0; i < std::min(g_variant_get_int32(count.get()), kMaxActions); ++i) {
        const Variant reply = Call(atspi::kAction, "GetName", g_variant_new("(i)", i), "(s)");
        if (!reply)
            return false;
        const char* action = nullptr;
        g_variant_get(reply.get(), "(&s)", &action);
        if (action == name)
            return true;
    }
    return false;
}

std::vector<AtspiAccessible> AtspiAccessible::RowOf(int childIndex) const
{
    std::vector<AtspiAccessible> cells;
    const auto row = IntFrom(Call(atspi::kTable, "GetRowAtIndex", g_variant_new("(i)", childIndex), "(i)"));
    const Variant columns = bus_->Property(reference_, atspi::kTable, "NColumns");
    if (!row || *row < 0 || !columns || !g_variant_is_of_type(columns.get(), G_VARIANT_TYPE_INT32))
        return cells;
    for (int column = 0; column < std::min(g_variant_get_int32(columns.get()), kMaxColumns); ++column) {
        if (auto cell = ReferenceFrom(
                Call(atspi::kTable, "GetAccessibleAt", g_variant_new("(ii)", *row, column), "((so))")))
            cells.push_back(std::move(*cell));
    }
    return cells;
}

} // namespace voxtrel::platform
