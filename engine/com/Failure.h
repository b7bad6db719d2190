// Where exceptions end: everything inside the engine may throw, nothing that leaves it does.
#pragma once

#include <stdexcept>
#include <string>

#include <TibXml/platform/IUnknown.h>

namespace tibxml::com {

// A failure that a caller of the engine sees as this code, with the words as its error information.
class Failure : public std::runtime_error {
public:
    Failure(HRESULT code, std::string const& reason) : std::runtime_error{reason}, code_{code} {}

    HRESULT code() const noexcept { return code_; }

private:
    HRESULT code_;
};

// Turns the exception that is being handled into a result code and leaves its words as the
// thread's error information for the interface.
HRESULT reportException(REFIID iid) noexcept;

// Leaves what a call that succeeded has to say as the thread's error information, or none when that
// is nothing.
void leaveMessages(REFIID iid, std::string const& messages) noexcept;

// Runs a step that returns a result code or throws.
template <class Step>
HRESULT guarded(REFIID iid, Step step) noexcept {
    try {
        return step();
    } catch (...) {
        return reportException(iid);
    }
}

// Answers a call by an out-pointer: the step gives the value, which for an interface may be null
// and then is a miss. The out-pointer is null after any failure.
template <class Value, class Step>
HRESULT reply(REFIID iid, Value* out, Step step) noexcept {
    if (out == nullptr) return E_POINTER;
    *out = Value{};
    return guarded(iid, [&] {
        *out = step();
        return S_OK;
    });
}

template <class Interface, class Step>
HRESULT replyObject(REFIID iid, Interface** out, Step step) noexcept {
    HRESULT const result = reply(iid, out, step);
    return result == S_OK && *out == nullptr ? S_FALSE : result;
}

} // namespace tibxml::com
