// What is said of an accessible object.
//
// A name may be missing where a person would give one at once, so other places are asked in turn: the label
// beside the object, its description (most often its tool tip), the line of text under the pointer, the other
// cells of its row. Without any of them the object has nothing to say and the one around it is asked.
//
// The letters of a button or a link are objects of their own in some toolkits; they stand for what they are
// written on. Nothing that was typed into a password field is ever asked for.

#include "platform/linux/atspi_description.h"

#include "platform/readable_text.h"
#include "settings/number_conversions.h"
#include "settings/text_case.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace voxtrel::platform {
namespace {

constexpr int kTextAtMost = kLongestText;
constexpr std::size_t kLettersDepth = 3;
constexpr std::size_t kMaxAncestors = 40;

template <std::size_t N> bool IsOneOf(AtspiRole role, const std::array<AtspiRole, N>& roles)
{
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

constexpr std::array kLetters = {ATSPI_ROLE_LABEL,   ATSPI_ROLE_STATIC, ATSPI_ROLE_TEXT,
                                 ATSPI_ROLE_IMAGE,   ATSPI_ROLE_ICON,   ATSPI_ROLE_SECTION,
                                 ATSPI_ROLE_FILLER,  ATSPI_ROLE_PANEL,  ATSPI_ROLE_PARAGRAPH,
                                 ATSPI_ROLE_INVALID, ATSPI_ROLE_UNKNOWN};

constexpr std::array kWrittenOn = {ATSPI_ROLE_PUSH_BUTTON,
                                   ATSPI_ROLE_TOGGLE_BUTTON,
                                   ATSPI_ROLE_CHECK_BOX,
                                   ATSPI_ROLE_RADIO_BUTTON,
                                   ATSPI_ROLE_MENU_ITEM,
                                   ATSPI_ROLE_CHECK_MENU_ITEM,
                                   ATSPI_ROLE_RADIO_MENU_ITEM,
                                   ATSPI_ROLE_MENU,
                                   ATSPI_ROLE_LIST_ITEM,
                                   ATSPI_ROLE_TREE_ITEM,
                                   ATSPI_ROLE_TABLE_CELL,
                                   ATSPI_ROLE_PAGE_TAB,
                                   ATSPI_ROLE_LINK,
                                   ATSPI_ROLE_HEADING,
                                   ATSPI_ROLE_COLUMN_HEADER,
                                   ATSPI_ROLE_ROW_HEADER,
                                   ATSPI_ROLE_COMBO_BOX,
                                   ATSPI_ROLE_TABLE_COLUMN_HEADER};

constexpr std::array kBoxes = {ATSPI_ROLE_CHECK_BOX, ATSPI_ROLE_RADIO_BUTTON, ATSPI_ROLE_CHECK_MENU_ITEM,
                               ATSPI_ROLE_RADIO_MENU_ITEM};

constexpr std::array kMeters = {ATSPI_ROLE_SLIDER, ATSPI_ROLE_SPIN_BUTTON, ATSPI_ROLE_SCROLL_BAR,
                                ATSPI_ROLE_DIAL, ATSPI_ROLE_SPLIT_PANE};

// How far something has come is told in percent.
constexpr std::array kGauges = {ATSPI_ROLE_PROGRESS_BAR, ATSPI_ROLE_LEVEL_BAR};

constexpr std::array kItems = {ATSPI_ROLE_MENU_ITEM, ATSPI_ROLE_LIST_ITEM, ATSPI_ROLE_MENU};

constexpr std::array kWindows = {ATSPI_ROLE_FRAME,         ATSPI_ROLE_WINDOW,      ATSPI_ROLE_DIALOG,
                                 ATSPI_ROLE_ALERT,         ATSPI_ROLE_APPLICATION, ATSPI_ROLE_FILE_CHOOSER,
                                 ATSPI_ROLE_COLOR_CHOOSER, ATSPI_ROLE_FONT_CHOOSER};

constexpr std::array kTexts = {ATSPI_ROLE_ENTRY,         ATSPI_ROLE_TEXT,    ATSPI_ROLE_TERMINAL,
                               ATSPI_ROLE_DOCUMENT_TEXT, ATSPI_ROLE_EDITBAR, ATSPI_ROLE_AUTOCOMPLETE};

// Tool tips of some toolkits are written in HTML.
std::string WithoutMarkup(const std::string& text)
{
    if (!text.starts_with('<'))
        return text;
    std::string plain;
    bool inTag = false;
    for (const char c : text) {
        if (c == '<')
            inTag = true;
        else if (c == '>')
            inTag = false;
        else if (!inTag)
            plain += c;
    }
    return plain;
}

std::wstring Clean(const std::string& bytes, std::size_t most)
{
    return ReadableText(settings::FromUtf8(bytes), most);
}

// The cells beside this one and itself, in a table that can be asked for them.
std::vector<AtspiAccessible> RowAround(const AtspiAccessible& cell)
{
    const auto table = cell.Parent();
    if (!table || !table->Implements(atspi::kTable))
        return {};
    return table->RowOf(cell.IndexInParent());
}

std::wstring NameOfRow(const AtspiAccessible& cell)
{
    for (const AtspiAccessible& other : RowAround(cell)) {
        if (std::wstring name = Clean(other.Name(), kLongestText); !name.empty())
            return name;
    }
    return {};
}

// A box in a list is a cell of its own, which does not say that it is one; what it can do tells.
SwitchState StateOfRow(const AtspiAccessible& cell)
{
    for (const AtspiAccessible& other : RowAround(cell)) {
        if (other.Implements(atspi::kAction) && other.HasAction("toggle"))
            return other.HasState(ATSPI_STATE_CHECKED) ? SwitchState::Checked : SwitchState::Unchecked;
    }
    return SwitchState::None;
}

// Names in the order in which they are asked for; see the head of the file.
std::wstring NameOf(const AtspiAccessible& object, AtspiRole role, ScreenPoint point)
{
    std::wstring name = Clean(object.Name(), kLongestText);
    if (name.empty()) {
        if (const auto label = object.Label())
            name = Clean(label->Name(), kLongestText);
    }
    if (name.empty())
        name = Clean(WithoutMarkup(object.Description()), kLongestText);
    if (name.empty() && role != ATSPI_ROLE_PASSWORD_TEXT && object.Implements(atspi::kText))
        name = Clean(object.LineAt(point), kLongestLine);
    if (name.empty() && role == ATSPI_ROLE_TABLE_CELL)
        name = NameOfRow(object);
    return name;
}

SwitchState StateOf(const AtspiAccessible& object, AtspiRole role)
{
    const bool box = IsOneOf(role, kBoxes) || object.HasState(ATSPI_STATE_CHECKABLE);
    if (box || object.HasState(ATSPI_STATE_CHECKED)) {
        if (object.HasState(ATSPI_STATE_INDETERMINATE))
            return SwitchState::PartlyChecked;
        if (role != ATSPI_ROLE_TOGGLE_BUTTON)
            return object.HasState(ATSPI_STATE_CHECKED) ? SwitchState::Checked : SwitchState::Unchecked;
    }
    if (role == ATSPI_ROLE_TABLE_CELL)
        return StateOfRow(object);
    if (role != ATSPI_ROLE_TOGGLE_BUTTON)
        return SwitchState::None;
    const bool down = object.HasState(ATSPI_STATE_PRESSED) || object.HasState(ATSPI_STATE_CHECKED);
    return down ? SwitchState::Pressed : SwitchState::Released;
}

// Two decimals at most: a meter's value is often a fraction that no person would say.
std::wstring NumberText(double number) { return settings::FormatNumber(std::round(number * 100) / 100); }

std::wstring SelectedItem(const AtspiAccessible& combo)
{
    auto selected = combo.Implements(atspi::kSelection) ? combo.SelectedChild() : std::nullopt;
    // Some toolkits have the list that opens between the box and its items.
    if (const auto children = selected ? std::vector<AtspiAccessible>() : combo.Children();
        !children.empty() && children.front().Implements(atspi::kSelection))
        selected = children.front().SelectedChild();
    if (selected)
        return Clean(selected->Name(), kLongestText);
    if (combo.Implements(atspi::kText))
        return Clean(combo.Text(kTextAtMost), kLongestText);
    return {};
}

std::wstring ValueOf(const AtspiAccessible& object, AtspiRole role)
{
    if (role == ATSPI_ROLE_PASSWORD_TEXT)
        return {};
    if (role == ATSPI_ROLE_COMBO_BOX)
        return SelectedItem(object);
    if (IsOneOf(role, kGauges) && object.Implements(atspi::kValue)) {
        if (const auto part = object.FilledPart())
            return settings::FormatNumber(std::lround(*part * 100)) + L"%";
    }
    if (IsOneOf(role, kMeters) && object.Implements(atspi::kValue)) {
        if (const auto number = object.CurrentValue())
            return NumberText(*number);
    }
    const bool field = IsOneOf(role, kTexts) || object.Implements(atspi::kEditableText);
    if (field && object.Implements(atspi::kText))
        return Clean(object.Text(kTextAtMost), kLongestText);
    return {};
}

// An object and those around it up to its window, each asked for when it is needed.
class Ancestry {
public:
    explicit Ancestry(const AtspiAccessible& deepest) { Append(deepest); }

    struct Member {
        AtspiAccessible object;
        AtspiRole role;
    };
    // 0 is the object itself; null beyond the window. Valid until the next call.
    const Member* At(std::size_t up)
    {
        while (members_.size() <= up) {
            if (members_.size() == kMaxAncestors || IsOneOf(members_.back().role, kWindows))
                return nullptr;
            const auto parent = members_.back().object.Parent();
            if (!parent)
                return nullptr;
            Append(*parent);
        }
        return &members_[up];
    }

private:
    void Append(const AtspiAccessible& object) { members_.push_back({object, object.Role()}); }

    std::vector<Member> members_;
};

// How far up the object is that the letters under the pointer are written on.
std::size_t WrittenOn(Ancestry& ancestry, ScreenPoint point)
{
    for (std::size_t up = 0; up <= kLettersDepth; ++up) {
        const Ancestry::Member* const member = ancestry.At(up);
        if (!member)
            return 0;
        if (up > 0 && IsOneOf(member->role, kWrittenOn)) {
            // A page of a tabbed dialog lies within its tab and still is not its caption.
            const bool named = member->object.Extents().Contains(point) &&
                               !Clean(member->object.Name(), kLongestText).empty();
            return named ? up : 0;
        }
        if (!IsOneOf(member->role, kLetters) || member->object.Implements(atspi::kEditableText))
            return 0;
    }
    return 0;
}

// The item that a closed box shows is the box's value.
std::size_t BoxOfItem(Ancestry& ancestry, ScreenPoint point)
{
    if (!IsOneOf(ancestry.At(0)->role, kItems))
        return 0;
    for (std::size_t up = 1; up <= kLettersDepth; ++up) {
        const Ancestry::Member* const member = ancestry.At(up);
        if (member && member->role == ATSPI_ROLE_COMBO_BOX)
            return member->object.Extents().Contains(point) ? up : 0;
    }
    return 0;
}

// A field for a password is never gone past: what stands inside it is the password.
std::optional<std::size_t> PasswordField(Ancestry& ancestry)
{
    for (std::size_t up = 0; up <= kLettersDepth; ++up) {
        const Ancestry::Member* const member = ancestry.At(up);
        if (member && member->role == ATSPI_ROLE_PASSWORD_TEXT)
            return up;
    }
    return std::nullopt;
}

std::size_t FirstToSpeak(Ancestry& ancestry, ScreenPoint point)
{
    if (const auto password = PasswordField(ancestry))
        return *password;
    return std::max(WrittenOn(ancestry, point), BoxOfItem(ancestry, point));
}

} // namespace

AccessibleObject Describe(const AtspiAccessible& deepest, ScreenPoint point)
{
    Ancestry ancestry(deepest);
    for (std::size_t up = FirstToSpeak(ancestry, point);; ++up) {
        const Ancestry::Member* const member = ancestry.At(up);
        if (!member)
            return {};
        const auto& [object, role] = *member;
        std::wstring name = NameOf(object, role, point);
        // A password field without any name is still worth a word.
        if (name.empty() && role == ATSPI_ROLE_PASSWORD_TEXT)
            name = Clean(object.RoleName(), kLongestText);
        if (name.empty())
            continue;
        return {.name = std::move(name),
                .role = Clean(object.RoleName(), kLongestLine),
                .value = ValueOf(object, role),
                .state = StateOf(object, role)};
    }
}

} // namespace voxtrel::platform
