#include "Documents.h"

#include <stdexcept>

#include <TibXml/tibutils/Stream.h>
#include <libxml/parser.h>

namespace bench {

namespace {

void require(bool loaded) {
    if (!loaded) throw std::runtime_error{"a document does not load"};
}

} // namespace

WXmlDoc tibxmlDocument(std::string const& text) {
    WXmlDoc document;
    require(document.Load(TibUtils::Stream::OverMemory(text.data(), text.size())));
    return document;
}

std::unique_ptr<pugi::xml_document> pugixmlDocument(std::string const& text) {
    auto document = std::make_unique<pugi::xml_document>();
    require(document->load_buffer(text.data(), text.size(), pugixmlOptions));
    return document;
}

XmlDocPtr libxml2Document(std::string const& text, int options) {
    XmlDocPtr document{
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, options)};
    require(document != nullptr);
    return document;
}

int libxml2Options() noexcept {
    return libxml2OptionsWithWhiteSpace() | XML_PARSE_NOBLANKS;
}

int libxml2OptionsWithWhiteSpace() noexcept {
    return XML_PARSE_NONET | XML_PARSE_HUGE;
}

} // namespace bench
