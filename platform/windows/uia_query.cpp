#include "platform/windows/uia_query.h"

#include "platform/readable_text.h"
#include "settings/number_conversions.h"

#include <objbase.h>
#include <uiautomationclient.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace voxtrel::platform {
namespace {

// Kinds of objects; the compiler's headers do not name them.
constexpr long kButton = 50000;
constexpr long kCheckBox = 50002;
constexpr long kComboBox = 50003;
constexpr long kHyperlink = 50005;
constexpr long kImage = 50006;
constexpr long kListItem = 50007;
constexpr long kMenuItem = 50011;
constexpr long kProgressBar = 50012;
constexpr long kRadioButton = 50013;
constexpr long kTabItem = 50019;
constexpr long kText = 50020;
constexpr long kTreeItem = 50024;
constexpr long kDataItem = 50029;
constexpr long kSplitButton = 50031;
constexpr long kWindow = 50032;
constexpr long kPane = 50033;
constexpr long kHeaderItem = 50035;

constexpr std::array kWrittenOn = {kButton,  kCheckBox, kHyperlink, kListItem,    kMenuItem,  kRadioButton,
                                   kTabItem, kTreeItem, kDataItem,  kSplitButton, kHeaderItem};

constexpr int kLettersDepth = 3;
constexpr int kMaxAncestors = 20;

} // namespace

ComPointer<UiaClient> SystemUiaClient()
{
    ComPointer<UiaClient> client;
    for (const GUID& kind : {kUiaClientWithTimeoutsClass, kUiaClientClass}) {
        if (SUCCEEDED(CoCreateInstance(kind, nullptr, CLSCTX_INPROC_SERVER, kUiaClientInterface,
                                       client.ReceiveVoid())))
            break;
    }
    return client;
}

UiaQuery::UiaQuery(ComPointer<UiaClient> client) : client_(std::move(client))
{
    if (!client_)
        return;
    if (FAILED(client_->get_ControlViewWalker(walker_.Receive())))
        client_ = {};
    else
        client_->QueryInterface(kUiaClientWithTimeoutsInterface, timeouts_.ReceiveVoid());
}

// A provider that hangs would hold up a call for twenty seconds.
void UiaQuery::KeepTo(const Deadline& deadline)
{
    if (!timeouts_)
        return;
    const auto left =
        static_cast<DWORD>(std::max<std::chrono::milliseconds::rep>(deadline.Left().count(), 1));
    timeouts_->put_ConnectionTimeout(left);
    timeouts_->put_TransactionTimeout(left);
}

std::wstring UiaQuery::TextOf(UiaElement& element, int property) const
{
    ComVariant value;
    if (FAILED(element.GetCurrentPropertyValue(property, value.Receive())))
        return {};
    return ReadableText(value.Text(), kLongestText);
}

bool UiaQuery::IsTrue(UiaElement& element, int property) const
{
    ComVariant value;
    return SUCCEEDED(element.GetCurrentPropertyValue(property, value.Receive())) && value.IsTrue();
}

long UiaQuery::NumberOf(UiaElement& element, int property) const
{
    ComVariant value;
    return SUCCEEDED(element.GetCurrentPropertyValue(property, value.Receive())) ? value.Number(-1) : -1;
}

std::optional<double> UiaQuery::FractionalOf(UiaElement& element, int property) const
{
    ComVariant value;
    if (FAILED(element.GetCurrentPropertyValue(property, value.Receive())) || value.Get().vt != VT_R8)
        return std::nullopt;
    return value.Get().dblVal;
}

std::wstring UiaQuery::NameOf(UiaElement& element) const
{
    std::wstring name = TextOf(element, UIA_NamePropertyId);
    if (name.empty())
        name = TextOf(element, UIA_HelpTextPropertyId);
    return name;
}

std::wstring UiaQuery::ValueOf(UiaElement& element) const
{
    if (IsTrue(element, UIA_IsPasswordPropertyId))
        return {};
    if (IsTrue(element, UIA_IsRangeValuePatternAvailablePropertyId)) {
        const auto now = FractionalOf(element, UIA_RangeValueValuePropertyId);
        const auto least = FractionalOf(element, UIA_RangeValueMinimumPropertyId);
        const auto most = FractionalOf(element, UIA_RangeValueMaximumPropertyId);
        if (now && NumberOf(element, UIA_ControlTypePropertyId) == kProgressBar && least && most &&
            *most > *least)
            return settings::FormatNumber(std::lround((*now - *least) / (*most - *least) * 100)) + L"%";
        if (now)
            return settings::FormatNumber(std::round(*now * 100) / 100);
    }
    if (IsTrue(element, UIA_IsValuePatternAvailablePropertyId))
        return TextOf(element, UIA_ValueValuePropertyId);
    return NumberOf(element, UIA_ControlTypePropertyId) == kComboBox ? SelectedIn(element) : std::wstring();
}

std::wstring UiaQuery::SelectedIn(UiaElement& element) const
{
    ComVariant selection;
    ComPointer<UiaElements> elements;
    ComPointer<UiaElement> first;
    if (FAILED(element.GetCurrentPropertyValue(UIA_SelectionSelectionPropertyId, selection.Receive())) ||
        selection.Get().vt != VT_UNKNOWN || !selection.Get().punkVal ||
        FAILED(selection.Get().punkVal->QueryInterface(kUiaElementsInterface, elements.ReceiveVoid())) ||
        FAILED(elements->GetElement(0, first.Receive())) || !first)
        return {};
    return NameOf(*first.Get());
}

SwitchState UiaQuery::StateOf(UiaElement& element) const
{
    const long kind = NumberOf(element, UIA_ControlTypePropertyId);
    if (IsTrue(element, UIA_IsTogglePatternAvailablePropertyId)) {
        const long state = NumberOf(element, UIA_ToggleToggleStatePropertyId);
        if (state == 2)
            return SwitchState::PartlyChecked;
        if (kind == kButton)
            return state == 1 ? SwitchState::Pressed : SwitchState::Released;
        return state == 1 ? SwitchState::Checked : SwitchState::Unchecked;
    }
    if (kind == kRadioButton && IsTrue(element, UIA_IsSelectionItemPatternAvailablePropertyId))
        return IsTrue(element, UIA_SelectionItemIsSelectedPropertyId) ? SwitchState::Checked
                                                                      : SwitchState::Unchecked;
    return SwitchState::None;
}

ComPointer<UiaElement> UiaQuery::ParentOf(UiaElement& element) const
{
    ComPointer<UiaElement> parent;
    if (FAILED(walker_->GetParentElement(&element, parent.Receive())))
        return {};
    return parent;
}

// The letters of a button or a link stand for what they are written on.
ComPointer<UiaElement> UiaQuery::WrittenOn(ComPointer<UiaElement> element) const
{
    const long kind = NumberOf(*element.Get(), UIA_ControlTypePropertyId);
    if (kind != kText && kind != kImage)
        return element;
    ComPointer<UiaElement> around = ParentOf(*element.Get());
    for (int up = 1; around && up <= kLettersDepth; ++up) {
        const long kindAround = NumberOf(*around.Get(), UIA_ControlTypePropertyId);
        if (std::find(kWrittenOn.begin(), kWrittenOn.end(), kindAround) != kWrittenOn.end())
            return NameOf(*around.Get()).empty() ? std::move(element) : std::move(around);
        around = ParentOf(*around.Get());
    }
    return element;
}

AccessibleAnswer UiaQuery::ObjectAt(ScreenPoint point, const Deadline& deadline)
{
    if (!client_)
        return {};
    KeepTo(deadline);
    ComPointer<UiaElement> element;
    if (FAILED(client_->ElementFromPoint({point.x, point.y}, element.Receive())) || !element)
        return {};
    element = WrittenOn(std::move(element));
    for (int up = 0; element && up < kMaxAncestors && !deadline.IsOver(); ++up) {
        std::wstring name = NameOf(*element.Get());
        const bool password = IsTrue(*element.Get(), UIA_IsPasswordPropertyId);
        std::wstring role = TextOf(*element.Get(), UIA_LocalizedControlTypePropertyId);
        // A password field without any name is still worth a word.
        if (name.empty() && password)
            name = role;
        if (!name.empty()) {
            const long kind = NumberOf(*element.Get(), UIA_ControlTypePropertyId);
            return {.object = {.name = std::move(name),
                               .role = std::move(role),
                               .value = ValueOf(*element.Get()),
                               .state = StateOf(*element.Get())},
                    .deepest = up == 0,
                    .kindKnown = kind != kWindow && kind != kPane};
        }
        element = ParentOf(*element.Get());
    }
    return {};
}

} // namespace voxtrel::platform
