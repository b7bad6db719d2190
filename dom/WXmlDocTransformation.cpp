#include <TibXml/EngineCall.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/platform/Variant.h>

using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::quietly;

bool WXmlDoc::ApplyXSLT(WXmlDoc& stylesheet) noexcept {
    return quietly(false, [&] {
        invoke(stylesheet.Document(), &IXMLDOMDocument2::setProperty,
               EngineString{L"AllowDocumentFunction"}.get(), _variant_t{true});
        invoke(Document(), &IXMLDOMNode::transformNodeToObject,
               stylesheet.Document().GetInterfacePtr(), _variant_t{Document().GetInterfacePtr()});
        return true;
    });
}
