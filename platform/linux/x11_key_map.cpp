#include "platform/linux/x11_key_map.h"

#include "platform/keyboard.h"

#define XK_MISCELLANY
#define XK_LATIN1
#define XK_XKB_KEYS
#include <X11/keysymdef.h>

#include <algorithm>

namespace voxtrel::platform {
namespace {

constexpr int kFunctionKeys = 24;

struct NamedKey {
    int virtualKey;
    std::uint32_t keysym;
};

constexpr NamedKey kNamedKeys[] = {
    {8, XK_BackSpace}, {9, XK_Tab},   {13, XK_Return}, {19, XK_Pause},  {27, XK_Escape},       {32, XK_space},
    {33, XK_Prior},    {34, XK_Next}, {35, XK_End},    {36, XK_Home},   {37, XK_Left},         {38, XK_Up},
    {39, XK_Right},    {40, XK_Down}, {45, XK_Insert}, {46, XK_Delete}, {145, XK_Scroll_Lock},
};

std::uint32_t KeysymOf(int virtualKey)
{
    if (virtualKey >= 'A' && virtualKey <= 'Z')
        return XK_a + static_cast<std::uint32_t>(virtualKey - 'A');
    if (virtualKey >= '0' && virtualKey <= '9')
        return XK_0 + static_cast<std::uint32_t>(virtualKey - '0');
    if (virtualKey >= kVirtualKeyF1 && virtualKey < kVirtualKeyF1 + kFunctionKeys)
        return XK_F1 + static_cast<std::uint32_t>(virtualKey - kVirtualKeyF1);
    const auto* named = std::ranges::find(kNamedKeys, virtualKey, &NamedKey::virtualKey);
    return named == std::end(kNamedKeys) ? XK_VoidSymbol : named->keysym;
}

} // namespace

void X11KeyMap::Load(X11Connection& connection)
{
    xcb_connection_t* xcb = connection.Get();
    const xcb_setup_t* setup = xcb_get_setup(xcb);
    firstCode_ = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto symbolsCookie = xcb_get_keyboard_mapping(xcb, firstCode_, count);
    const auto modifiersCookie = xcb_get_modifier_mapping(xcb);
    const XcbPtr<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(xcb, symbolsCookie, nullptr));
    const XcbPtr<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(xcb, modifiersCookie, nullptr));
    controls_.clear();
    otherModifiers_.clear();
    symbols_.clear();
    found_.clear();
    if (!symbols || !modifiers)
        return;
    symbolsPerCode_ = symbols->keysyms_per_keycode;
    const xcb_keysym_t* first = xcb_get_keyboard_mapping_keysyms(symbols.get());
    symbols_.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(symbols.get()));

    const xcb_keycode_t* code = xcb_get_modifier_mapping_keycodes(modifiers.get());
    for (int modifier = 0; modifier < 8; ++modifier) {
        for (int i = 0; i < modifiers->keycodes_per_modifier; ++i, ++code) {
            if (*code == 0 || Locks(*code))
                continue;
            if (modifier == XCB_MAP_INDEX_CONTROL)
                controls_.push_back(*code);
            else if (modifier != XCB_MAP_INDEX_LOCK)
                otherModifiers_.push_back(*code);
        }
    }
}

KeyCodes X11KeyMap::CodesOf(std::uint32_t keysym) const
{
    KeyCodes codes;
    if (symbolsPerCode_ == 0 || keysym == XK_VoidSymbol)
        return codes;
    for (std::size_t i = 0; i < symbols_.size() / symbolsPerCode_; ++i) {
        const auto code = static_cast<xcb_keycode_t>(firstCode_ + i);
        if (HasSymbol(code, keysym))
            codes.push_back(code);
    }
    return codes;
}

const KeyCodes& X11KeyMap::CodesOfVirtualKey(int virtualKey)
{
    const auto known = found_.find(virtualKey);
    return known != found_.end() ? known->second
                                 : found_.emplace(virtualKey, FindVirtualKey(virtualKey)).first->second;
}

KeyCodes X11KeyMap::FindVirtualKey(int virtualKey) const
{
    constexpr int kShift = 16;
    constexpr int kAlt = 18;
    if (virtualKey == kVirtualKeyControl)
        return controls_;
    if (virtualKey != kShift && virtualKey != kAlt)
        return CodesOf(KeysymOf(virtualKey));
    KeyCodes codes = CodesOf(virtualKey == kShift ? XK_Shift_L : XK_Alt_L);
    const KeyCodes right = CodesOf(virtualKey == kShift ? XK_Shift_R : XK_Alt_R);
    codes.insert(codes.end(), right.begin(), right.end());
    return codes;
}

bool X11KeyMap::HasSymbol(xcb_keycode_t code, std::uint32_t keysym) const
{
    const auto first = symbols_.begin() + static_cast<std::ptrdiff_t>((code - firstCode_) * symbolsPerCode_);
    return std::find(first, first + static_cast<std::ptrdiff_t>(symbolsPerCode_), keysym) !=
           first + static_cast<std::ptrdiff_t>(symbolsPerCode_);
}

bool X11KeyMap::Locks(xcb_keycode_t code) const
{
    return HasSymbol(code, XK_Num_Lock) || HasSymbol(code, XK_Caps_Lock) || HasSymbol(code, XK_Scroll_Lock) ||
           HasSymbol(code, XK_ISO_Level3_Lock) || HasSymbol(code, XK_ISO_Next_Group);
}

} // namespace voxtrel::platform
