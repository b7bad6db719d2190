#include <libxml/LibxmlErrors.h>

#include <algorithm>

namespace tibxml::libxml {

std::string inOneLine(std::string_view message) {
    std::string line{message};
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

LibxmlErrors::LibxmlErrors(xmlStructuredErrorFunc handle, void* data,
                           xmlGenericErrorFunc handleText) noexcept
    : before_{xmlStructuredError},
      dataBefore_{xmlStructuredErrorContext},
      textBefore_{xmlGenericError},
      textDataBefore_{xmlGenericErrorContext} {
    xmlSetStructuredErrorFunc(data, handle);
    xmlSetGenericErrorFunc(data, handleText);
}

LibxmlErrors::~LibxmlErrors() {
    xmlSetGenericErrorFunc(textDataBefore_, textBefore_);
    xmlSetStructuredErrorFunc(dataBefore_, before_);
}

// NOLINTNEXTLINE(cert-dcl50-cpp): libxml2 calls it with what printf takes
void LibxmlErrors::dropText(void* /*data*/, char const* /*format*/, ...) noexcept {}

LibxmlInput::LibxmlInput(xmlParserInputBufferCreateFilenameFunc open) noexcept
    : before_{xmlParserInputBufferCreateFilenameDefault(open)} {}

LibxmlInput::~LibxmlInput() {
    xmlParserInputBufferCreateFilenameDefault(before_);
}

} // namespace tibxml::libxml
