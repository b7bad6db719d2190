#pragma once

#include <TibXml/EnginePtr.h>
#include <TibXml/EngineString.h>
#include <TibXml/platform/ComRuntime.h>

#include <utility>

// How documents, nodes and values call the engine: failures become exceptions here and nowhere
// else. No header that callers see includes this one.
namespace tibxml::engine {

/// Calls one of an object's functions and gives its success code. Throws `_com_error`: with
/// `E_POINTER` when there is no object, otherwise with the function's code and what the engine left
/// for the interface that has the function.
template <class Object, class Interface, class... Parameters, class... Arguments>
HRESULT invoke(EnginePtr<Object> const& object, HRESULT (Interface::*function)(Parameters...),
               Arguments&&... arguments) {
    HRESULT const code = (object.operator->()->*function)(std::forward<Arguments>(arguments)...);
    if (FAILED(code)) {
        _com_issue_errorex(code, object, platform::iidOf<Interface>());
    }
    return code;
}

/// What a getter answers, with the failures of `invoke`: an object, which is empty when there is
/// none, a text, or a plain value.
template <class Object, class Interface, class Result>
EnginePtr<Result> objectFrom(EnginePtr<Object> const& object,
                             HRESULT (Interface::*getter)(Result**)) {
    EnginePtr<Result> result;
    invoke(object, getter, result.GetAddress());
    return result;
}

template <class Object, class Interface>
EngineString textFrom(EnginePtr<Object> const& object, HRESULT (Interface::*getter)(BSTR*)) {
    EngineString text;
    invoke(object, getter, text.address());
    return text;
}

template <class Object, class Interface, class Value>
Value valueFrom(EnginePtr<Object> const& object, HRESULT (Interface::*getter)(Value*)) {
    Value value{};
    invoke(object, getter, &value);
    return value;
}

/// Another interface of an object; empty when there is no object and when it does not offer that.
/// Any other failure throws `_com_error`.
template <class Wanted, class Object>
EnginePtr<Wanted> interfaceOf(EnginePtr<Object> const& object) {
    if (!object) return {};
    void* found = nullptr;
    HRESULT const code = object->QueryInterface(platform::iidOf<Wanted>(), &found);
    if (code == E_NOINTERFACE) return {};
    if (FAILED(code)) _com_issue_error(code);
    return EnginePtr<Wanted>{static_cast<Wanted*>(found), false};
}

/// Makes an object of a class and asks it for an interface. Returns the code of the step that
/// failed, or of the last one; `object` is empty after a failure.
template <class Interface>
HRESULT createObject(REFCLSID classId, EnginePtr<Interface>& object) {
    object = nullptr;
    EnginePtr<IUnknown> made;
    void* place = nullptr;
    HRESULT code = CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_IUnknown, &place);
    if (FAILED(code)) return code;
    made.Attach(static_cast<IUnknown*>(place));
    code = OleRun(made);
    if (FAILED(code)) return code;
    code = made->QueryInterface(platform::iidOf<Interface>(), &place);
    if (SUCCEEDED(code)) object.Attach(static_cast<Interface*>(place));
    return code;
}

/// The result of an action, `onFailure` when it throws anything at all: for functions that answer
/// failures by their result.
template <class Result, class Action>
Result quietly(Result onFailure, Action const& action) noexcept {
    try {
        return action();
    } catch (...) {
        return onFailure;
    }
}

} // namespace tibxml::engine
