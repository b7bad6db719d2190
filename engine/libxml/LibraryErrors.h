// What libxml2 reports, wherever it does so.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include <libxml/xmlerror.h>

#include <reader/ReadError.h>

namespace tibxml::reader {

// The library's words in one line.
inline std::string inOneLine(std::string_view message) {
    while (message.ends_with('\n'))
        message.remove_suffix(1);
    std::string line = wellFormed(message);
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

// What the library cannot tie to one parse, such as bytes that do not convert, it reports to the
// thread's handler, which prints them unless there is one. Ours is there during a call only. So is
// one that drops the texts which the library prints without saying what they are about.
class ThreadErrors {
public:
    ThreadErrors(xmlStructuredErrorFunc handler, void* data) noexcept
        : oldHandler_{xmlStructuredError},
          oldData_{xmlStructuredErrorContext},
          oldTextHandler_{xmlGenericError},
          oldTextData_{xmlGenericErrorContext} {
        xmlSetStructuredErrorFunc(data, handler);
        xmlSetGenericErrorFunc(nullptr, drop);
    }

    ThreadErrors(ThreadErrors const&) = delete;
    ThreadErrors& operator=(ThreadErrors const&) = delete;

    ~ThreadErrors() {
        xmlSetGenericErrorFunc(oldTextData_, oldTextHandler_);
        xmlSetStructuredErrorFunc(oldData_, oldHandler_);
    }

private:
    // NOLINTNEXTLINE(cert-dcl50-cpp): the library calls it with what printf takes
    static void drop(void* /*data*/, char const* /*format*/, ...) noexcept {}

    xmlStructuredErrorFunc oldHandler_;
    void* oldData_;
    xmlGenericErrorFunc oldTextHandler_;
    void* oldTextData_;
};

} // namespace tibxml::reader
