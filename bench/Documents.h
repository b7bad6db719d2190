// Each library's own loaded document, made the way its manual says, and equal in content: comments
// and processing instructions are kept, white space that only lays the document out is not.
#pragma once

#include <memory>
#include <string>

#include <TibXml/TibXml.h>
#include <libxml/tree.h>
#include <pugixml.hpp>

namespace bench {

struct FreeXmlDoc {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

using XmlDocPtr = std::unique_ptr<xmlDoc, FreeXmlDoc>;

inline constexpr unsigned pugixmlOptions =
    pugi::parse_default | pugi::parse_comments | pugi::parse_pi | pugi::parse_declaration;

// All of these throw std::runtime_error when the text does not load.
WXmlDoc tibxmlDocument(std::string const& text);
std::unique_ptr<pugi::xml_document> pugixmlDocument(std::string const& text);
XmlDocPtr libxml2Document(std::string const& text, int options);

// With layout white space dropped, and with it kept, which is libxml2's default and gets the layout
// back when saving.
int libxml2Options() noexcept;
int libxml2OptionsWithWhiteSpace() noexcept;

} // namespace bench
