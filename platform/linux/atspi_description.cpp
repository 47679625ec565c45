// What is said of an accessible object.
//
// A name may be missing where a person would give one at once, so other places are asked in turn: the label
// beside the object, its description (most often its tool tip), the line of text under the pointer, the other
// cells of its row. Without any of them the object has nothing to say and the one around it is asked.
//
// The letters of a button or a link are objects of their own in some toolkits; they stand for what they are
// written on. Nothing that was typed into a password field is ever asked for.

#include "platform/linux/atspi_description.h"

#include "settings/number_conversions.h"
#include "settings/text_case.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

namespace voxtrel::platform {
namespace {

constexpr int kMaxText = 4000; // characters
constexpr std::size_t kMaxLine = 500;
constexpr std::size_t kLettersDepth = 3;

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

constexpr std::array kMeters = {ATSPI_ROLE_SLIDER,     ATSPI_ROLE_SPIN_BUTTON, ATSPI_ROLE_PROGRESS_BAR,
                                ATSPI_ROLE_SCROLL_BAR, ATSPI_ROLE_DIAL,        ATSPI_ROLE_LEVEL_BAR,
                                ATSPI_ROLE_SPLIT_PANE};

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

// A text fit to be spoken: no control characters, no stand-ins for embedded objects, line ends as CR LF,
// nothing blank around it.
std::wstring Clean(const std::string& bytes, std::size_t most)
{
    constexpr wchar_t kEmbeddedObject = 0xFFFC;
    std::wstring clean;
    for (const wchar_t c : settings::FromUtf8(bytes)) {
        if (c == L'\n')
            clean += L"\r\n";
        else if (c >= L' ' && c != 0x7F && c != kEmbeddedObject)
            clean += c;
        else if (c == L'\t')
            clean += L' ';
    }
    constexpr std::wstring_view kBlank = L" \r\n\u00A0";
    clean.erase(0, std::min(clean.find_first_not_of(kBlank), clean.size()));
    clean.resize(std::min(clean.size(), most));
    clean.resize(clean.find_last_not_of(kBlank) + 1);
    return clean;
}

std::wstring NameOfRow(const AtspiAccessible& cell)
{
    const auto table = cell.Parent();
    if (!table || !table->Implements(atspi::kTable))
        return {};
    for (const AtspiAccessible& other : table->RowOf(cell.IndexInParent())) {
        if (std::wstring name = Clean(other.Name(), kMaxText); !name.empty())
            return name;
    }
    return {};
}

// Names in the order in which they are asked for; see the head of the file.
std::wstring NameOf(const AtspiAccessible& object, AtspiRole role, ScreenPoint point)
{
    std::wstring name = Clean(object.Name(), kMaxText);
    if (name.empty()) {
        if (const auto label = object.Label())
            name = Clean(label->Name(), kMaxText);
    }
    if (name.empty())
        name = Clean(WithoutMarkup(object.Description()), kMaxText);
    if (name.empty() && role != ATSPI_ROLE_PASSWORD_TEXT && object.Implements(atspi::kText))
        name = Clean(object.LineAt(point), kMaxLine);
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
    if (role != ATSPI_ROLE_TOGGLE_BUTTON)
        return SwitchState::None;
    const bool down = object.HasState(ATSPI_STATE_PRESSED) || object.HasState(ATSPI_STATE_CHECKED);
    return down ? SwitchState::Pressed : SwitchState::Released;
}

// Two decimals at most: a meter's value is often a fraction that no person would say.
std::wstring NumberText(double number) { return settings::FormatNumber(std::round(number * 100) / 100); }

std::wstring SelectedItem(const AtspiAccessible& combo)
{
    // Some toolkits have the list that opens between the box and its items.
    const auto selected = combo.Implements(atspi::kSelection) ? combo.SelectedChild() : std::nullopt;
    if (selected)
        return Clean(selected->Name(), kMaxText);
    if (combo.Implements(atspi::kText))
        return Clean(combo.Text(kMaxText), kMaxText);
    return {};
}

std::wstring ValueOf(const AtspiAccessible& object, AtspiRole role)
{
    if (role == ATSPI_ROLE_PASSWORD_TEXT)
        return {};
    if (role == ATSPI_ROLE_COMBO_BOX)
        return SelectedItem(object);
    if (IsOneOf(role, kMeters) && object.Implements(atspi::kValue)) {
        if (const auto number = object.CurrentValue())
            return NumberText(*number);
    }
    const bool field = IsOneOf(role, kTexts) || object.Implements(atspi::kEditableText);
    if (field && object.Implements(atspi::kText))
        return Clean(object.Text(kMaxText), kMaxText);
    return {};
}

// The object that the letters under the pointer are written on: an index into the chain.
std::size_t WrittenOn(const std::vector<AtspiAccessible>& chain, ScreenPoint point)
{
    const std::size_t deepest = chain.size() - 1;
    for (std::size_t up = 0; up <= std::min(kLettersDepth, deepest); ++up) {
        const AtspiAccessible& object = chain[deepest - up];
        const AtspiRole role = object.Role();
        if (up > 0 && IsOneOf(role, kWrittenOn)) {
            // A page of a tabbed dialog lies within its tab and still is not its caption.
            const bool named = object.Extents().Contains(point) && !Clean(object.Name(), kMaxText).empty();
            return named ? deepest - up : deepest;
        }
        if (!IsOneOf(role, kLetters) || object.Implements(atspi::kEditableText))
            return deepest;
    }
    return deepest;
}

// A field for a password is never gone past: what stands inside it is the password.
std::optional<std::size_t> PasswordField(const std::vector<AtspiAccessible>& chain)
{
    for (std::size_t i = 0; i < chain.size(); ++i) {
        if (chain[i].Role() == ATSPI_ROLE_PASSWORD_TEXT)
            return i;
    }
    return std::nullopt;
}

} // namespace

AccessibleObject Describe(const std::vector<AtspiAccessible>& chain, ScreenPoint point)
{
    const std::optional<std::size_t> password = PasswordField(chain);
    for (std::size_t i = (password ? *password : WrittenOn(chain, point)) + 1; i > 0; --i) {
        const AtspiAccessible& object = chain[i - 1];
        const AtspiRole role = object.Role();
        std::wstring name = NameOf(object, role, point);
        // A password field without any name is still worth a word.
        if (name.empty() && role == ATSPI_ROLE_PASSWORD_TEXT)
            name = Clean(object.RoleName(), kMaxText);
        if (name.empty())
            continue;
        return {.name = std::move(name),
                .role = Clean(object.RoleName(), kMaxLine),
                .value = ValueOf(object, role),
                .state = StateOf(object, role)};
    }
    return {};
}

} // namespace voxtrel::platform
