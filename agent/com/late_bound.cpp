#include "agent/com/late_bound.h"

#include <array>
#include <cstdio>

namespace voxtrel::agent::com {
namespace {

using platform::ComText;

// The arguments of a call as COM takes them: the last one first.
class Arguments {
public:
    explicit Arguments(const std::vector<Argument>& arguments)
    {
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
            values_.push_back(std::visit([](const auto& value) { return Variant(value); }, *argument));
    }
    ~Arguments()
    {
        for (VARIANT& value : values_)
            VariantClear(&value);
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    std::vector<VARIANT>& Values() { return values_; }

private:
    static VARIANT Variant(long number)
    {
        VARIANT value = {};
        value.vt = VT_I4;
        value.lVal = number;
        return value;
    }
    static VARIANT Variant(bool flag)
    {
        VARIANT value = {};
        value.vt = VT_BOOL;
        value.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
        return value;
    }
    static VARIANT Variant(const std::wstring& text)
    {
        VARIANT value = {};
        value.vt = VT_BSTR;
        value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        return value;
    }

    std::vector<VARIANT> values_;
};

// The exception that a member raised.
class Exception {
public:
    Exception() = default;
    ~Exception()
    {
        SysFreeString(info_.bstrSource);
        SysFreeString(info_.bstrDescription);
        SysFreeString(info_.bstrHelpFile);
    }
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;

    EXCEPINFO* Receive() { return &info_; }

    Result Failure()
    {
        if (info_.pfnDeferredFillIn)
            info_.pfnDeferredFillIn(&info_);
        const HRESULT code = FAILED(info_.scode) ? info_.scode : DISP_E_EXCEPTION;
        const std::wstring words =
            info_.bstrDescription ? std::wstring(info_.bstrDescription, SysStringLen(info_.bstrDescription))
                                  : L"";
        if (words.empty())
            return FailureOf(code);
        return Result::Failure(static_cast<ErrorCode>(code), words);
    }

private:
    EXCEPINFO info_ = {};
};

// What the object that failed left behind for its caller.
std::wstring WordsOfTheObject()
{
    ComPointer<IErrorInfo> info;
    ComText words;
    if (GetErrorInfo(0, info.Receive()) != S_OK || FAILED(info->GetDescription(words.Receive())))
        return {};
    return words.Text();
}

std::wstring WordsOfTheSystem(HRESULT code)
{
    std::array<wchar_t, 512> buffer{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(code), 0, buffer.data(),
                                        static_cast<DWORD>(buffer.size()), nullptr);
    std::wstring words(buffer.data(), length);
    words.resize(words.find_last_not_of(L" \r\n") + 1);
    return words;
}

std::wstring WordsForNumber(HRESULT code)
{
    std::array<wchar_t, 16> number{};
    std::swprintf(number.data(), number.size(), L"0x%08lX", static_cast<unsigned long>(code));
    return L"The character control reports the error " + std::wstring(number.data()) + L".";
}

Value Converted(const VARIANT& from, VARTYPE type)
{
    Value to;
    // Nothing would be taken for 0.
    if (from.vt == VT_EMPTY || FAILED(VariantChangeType(to.Receive(), const_cast<VARIANT*>(&from), 0, type)))
        return {};
    return to;
}

} // namespace

Value Value::CopyOf(const VARIANT& variant)
{
    Value copy;
    if (FAILED(VariantCopyInd(copy.Receive(), const_cast<VARIANT*>(&variant))))
        return {};
    return copy;
}

std::optional<long> Value::Number() const
{
    const Value number = Converted(value_, VT_I4);
    return number.value_.vt == VT_I4 ? std::optional<long>(number.value_.lVal) : std::nullopt;
}

std::optional<bool> Value::Flag() const
{
    const Value flag = Converted(value_, VT_BOOL);
    return flag.value_.vt == VT_BOOL ? std::optional<bool>(flag.value_.boolVal != VARIANT_FALSE)
                                     : std::nullopt;
}

std::optional<std::wstring> Value::Text() const
{
    const Value text = Converted(value_, VT_BSTR);
    if (text.value_.vt != VT_BSTR)
        return std::nullopt;
    const BSTR words = text.value_.bstrVal;
    return words ? std::wstring(words, SysStringLen(words)) : std::wstring();
}

ComPointer<IDispatch> Value::Object() const
{
    const Value object = Converted(value_, VT_DISPATCH);
    return object.value_.vt == VT_DISPATCH ? Share(object.value_.pdispVal) : ComPointer<IDispatch>();
}

Result FailureOf(HRESULT code)
{
    std::wstring words = WordsOfTheObject();
    if (words.empty())
        words = WordsOfTheSystem(code);
    if (words.empty())
        words = WordsForNumber(code);
    return Result::Failure(static_cast<ErrorCode>(code), std::move(words));
}

Answer LateBound::Call(const wchar_t* method, const std::vector<Argument>& arguments) const
{
    return Invoke(method, DISPATCH_METHOD, arguments);
}

Answer LateBound::Read(const wchar_t* property) const { return Invoke(property, DISPATCH_PROPERTYGET, {}); }

Result LateBound::Write(const wchar_t* property, const Argument& value) const
{
    return Invoke(property, DISPATCH_PROPERTYPUT, {value}).result;
}

Answer LateBound::Item(const Argument& key) const
{
    if (!object_)
        return {FailureOf(E_POINTER), {}};
    return InvokeById(DISPID_VALUE, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {key});
}

Answer LateBound::Invoke(const wchar_t* member, WORD kind, const std::vector<Argument>& arguments) const
{
    if (!object_)
        return {FailureOf(E_POINTER), {}};
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR name = const_cast<LPOLESTR>(member);
    SetErrorInfo(0, nullptr);
    const HRESULT found = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(found))
        return {FailureOf(found), {}};
    return InvokeById(id, kind, arguments);
}

Answer LateBound::InvokeById(DISPID member, WORD kind, const std::vector<Argument>& arguments) const
{
    Arguments given(arguments);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {given.Values().data(), nullptr, static_cast<UINT>(given.Values().size()), 0};
    if (kind == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    Answer answer;
    Exception exception;
    UINT wrongArgument = 0;
    // Left over words of an earlier call are not those of this one.
    SetErrorInfo(0, nullptr);
    const HRESULT done = object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                         answer.value.Receive(), exception.Receive(), &wrongArgument);
    if (FAILED(done))
        return {done == DISP_E_EXCEPTION ? exception.Failure() : FailureOf(done), {}};
    return answer;
}

} // namespace voxtrel::agent::com
