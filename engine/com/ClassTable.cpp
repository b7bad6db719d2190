// The classes that callers can create by their identifiers.
#include <TibXml/platform/ComRuntime.h>

#include "DocumentObject.h"
#include "SaxReaderObject.h"
#include "SchemaCache.h"
#include "StylesheetTemplate.h"

namespace tibxml::platform {

std::span<ComClass const> comClasses() noexcept {
    static constexpr ComClass classes[] = {
        {CLSID_DOMDocument60, com::DocumentObject::create},
        {CLSID_SAXXMLReader60, com::SaxReaderObject::create},
        {CLSID_XMLSchemaCache60, com::SchemaCache::create},
        {CLSID_XSLTemplate60, com::StylesheetTemplate::create},
    };
    return classes;
}

} // namespace tibxml::platform
