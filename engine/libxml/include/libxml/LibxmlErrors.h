// What libxml2 keeps per thread and not per parser, schema or stylesheet: the functions that it
// reports errors to, and the one that it opens names with. Each is ours only as long as an object
// here lives; then the one before holds again.
#pragma once

#include <string>
#include <string_view>

#include <libxml/globals.h>
#include <libxml/xmlIO.h>
#include <libxml/xmlerror.h>

namespace tibxml::libxml {

/// A message without its last line breaks and with blanks for all others. Throws std::bad_alloc.
std::string inOneLine(std::string_view message);

/// Takes what libxml2 cannot tie to one parse, such as bytes that do not convert. It would print
/// that otherwise.
class LibxmlErrors {
public:
    /// Both functions are called with `data` from frames of C, so they throw nothing. `handleText`
    /// gets the texts that libxml2 prints without saying what kind of error they are; without one
    /// they are dropped.
    LibxmlErrors(xmlStructuredErrorFunc handle, void* data,
                 xmlGenericErrorFunc handleText = dropText) noexcept;
    LibxmlErrors(LibxmlErrors const&) = delete;
    LibxmlErrors& operator=(LibxmlErrors const&) = delete;
    ~LibxmlErrors();

private:
    static void dropText(void* data, char const* format, ...) noexcept;

    xmlStructuredErrorFunc before_;
    void* dataBefore_;
    xmlGenericErrorFunc textBefore_;
    void* textDataBefore_;
};

/// Answers whatever libxml2 would open for the calling thread.
class LibxmlInput {
public:
    /// `open` is called from frames of C, so it throws nothing; null means that nothing is there.
    explicit LibxmlInput(xmlParserInputBufferCreateFilenameFunc open) noexcept;
    LibxmlInput(LibxmlInput const&) = delete;
    LibxmlInput& operator=(LibxmlInput const&) = delete;
    ~LibxmlInput();

private:
    xmlParserInputBufferCreateFilenameFunc before_;
};

} // namespace tibxml::libxml
