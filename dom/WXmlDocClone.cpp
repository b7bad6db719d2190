#include <TibXml/EngineCall.h>
#include <TibXml/WXmlDoc.h>

using tibxml::engine::interfaceOf;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;

namespace {

/// A deep copy of a document's root that belongs to another document.
EnginePtr<IXMLDOMElement> copyOfRoot(WXmlDocPtr const& source, WXmlDocPtr const& target) {
    auto const root = objectFrom(source, &IXMLDOMDocument::get_documentElement);
    WXmlNodePtr copy;
    invoke(target, &IXMLDOMDocument3::importNode, root.GetInterfacePtr(), VARIANT_TRUE,
           copy.GetAddress());
    return interfaceOf<IXMLDOMElement>(copy);
}

} // namespace

WXmlDoc WXmlDoc::Clone() const {
    WXmlDoc clone{false};
    try {
        if (!clone.CreateDocument()) return clone;
        auto const root = copyOfRoot(Document(), clone.Document());
        invoke(clone.Document(), &IXMLDOMDocument::putref_documentElement, root.GetInterfacePtr());
    } catch (...) {
        clone.ReleaseDocument();
    }
    return clone;
}
