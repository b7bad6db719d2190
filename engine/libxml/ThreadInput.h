// What libxml2 opens by name.
#pragma once

#include <libxml/globals.h>
#include <libxml/xmlIO.h>

namespace tibxml::reader {

// While this lives, libxml2 asks a function of ours for whatever it would open for the calling
// thread: it has no such setting for one parser, schema or stylesheet. What was set before holds
// again afterwards.
class ThreadInput {
public:
    // `open` is called from frames of C, so it throws nothing; null means that nothing is there.
    explicit ThreadInput(xmlParserInputBufferCreateFilenameFunc open) noexcept
        : before_{xmlParserInputBufferCreateFilenameDefault(open)} {}

    ThreadInput(ThreadInput const&) = delete;
    ThreadInput& operator=(ThreadInput const&) = delete;

    ~ThreadInput() { xmlParserInputBufferCreateFilenameDefault(before_); }

private:
    xmlParserInputBufferCreateFilenameFunc before_;
};

} // namespace tibxml::reader
