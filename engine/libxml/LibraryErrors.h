// What libxml2 reports, wherever it does so.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include <libxml/xmlerror.h>

#include "SourcePosition.h"

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
// thread's handler, which prints them unless there is one. Ours is there during a call only.
class ThreadErrors {
public:
    ThreadErrors(xmlStructuredErrorFunc handler, void* data) noexcept
        : oldHandler_{xmlStructuredError},
          oldData_{xmlStructuredErrorContext} {
        xmlSetStructuredErrorFunc(data, handler);
    }

    ThreadErrors(ThreadErrors const&) = delete;
    ThreadErrors& operator=(ThreadErrors const&) = delete;

    ~ThreadErrors() { xmlSetStructuredErrorFunc(oldData_, oldHandler_); }

private:
    xmlStructuredErrorFunc oldHandler_;
    void* oldData_;
};

} // namespace tibxml::reader
