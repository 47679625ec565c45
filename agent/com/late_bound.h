#pragma once

#include "agent/result.h"
#include "platform/windows/com_pointer.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// Members of COM objects by their names, found out at run time.
namespace voxtrel::agent::com {

using platform::ComPointer;

// Takes a reference of its own.
template <class Interface> ComPointer<Interface> Share(Interface* object)
{
    if (object)
        object->AddRef();
    return ComPointer<Interface>(object);
}

// object's other interface, or null.
template <class Interface> ComPointer<Interface> As(IUnknown* object)
{
    ComPointer<Interface> other;
    if (object && FAILED(object->QueryInterface(__uuidof(Interface), other.ReceiveVoid())))
        return {};
    return other;
}

// What is handed to a member.
using Argument = std::variant<long, bool, std::wstring>;

// What a member gave back, or what an event brought along.
class Value {
public:
    Value() { VariantInit(&value_); }
    ~Value() { VariantClear(&value_); }
    Value(Value&& other) noexcept : value_(std::exchange(other.value_, VARIANT{})) {}
    Value& operator=(Value&& other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    // A copy of what variant holds or refers to.
    static Value CopyOf(const VARIANT& variant);

    VARIANT* Receive() { return &value_; }

    // Converted where the language's own conversion knows how, nothing otherwise.
    std::optional<long> Number() const;
    std::optional<bool> Flag() const;
    std::optional<std::wstring> Text() const;
    ComPointer<IDispatch> Object() const;

private:
    VARIANT value_;
};

struct Answer {
    Result result;
    Value value; // empty unless result is a success
};

// The failure that a COM call came to; its words are those of the object that failed, else of the system.
Result FailureOf(HRESULT code);

// An object, called by the names of its members. Members of no object fail.
class LateBound {
public:
    LateBound() = default;
    explicit LateBound(ComPointer<IDispatch> object) : object_(std::move(object)) {}

    IDispatch* Get() const { return object_.Get(); }
    explicit operator bool() const { return static_cast<bool>(object_); }

    Answer Call(const wchar_t* method, const std::vector<Argument>& arguments = {}) const;
    Answer Read(const wchar_t* property) const;
    Result Write(const wchar_t* property, const Argument& value) const;
    // The member of a collection with that key.
    Answer Item(const Argument& key) const;

private:
    Answer Invoke(const wchar_t* member, WORD kind, const std::vector<Argument>& arguments) const;
    Answer InvokeById(DISPID member, WORD kind, const std::vector<Argument>& arguments) const;

    ComPointer<IDispatch> object_;
};

} // namespace voxtrel::agent::com
