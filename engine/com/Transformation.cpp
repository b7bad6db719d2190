#include "Transformation.h"

#include "DocumentObject.h"
#include "Failure.h"
#include "Sources.h"
#include "Text.h"

namespace tibxml::com {

DocumentObject& documentOf(NodeHandle const& handle) {
    if (!handle.node()->is(tree::NodeKind::document))
        throw Failure{E_INVALIDARG, "the object is not a document"};
    return handle.owner();
}

// A node that is left from an earlier content has the file no more.
transform::Source sourceOf(NodeHandle const& handle) {
    if (!handle.node()->hasChildList())
        throw Failure{E_INVALIDARG, "only documents and elements can be transformed"};
    DocumentObject const& owner = handle.owner();
    bool const isOfContent = &handle.storage() == &owner.storage();
    return {handle.node(), isOfContent ? owner.location() : std::string{}};
}

transform::DocumentFunction permissionOf(DocumentObject const& stylesheet) noexcept {
    return stylesheet.allowsDocumentFunction() ? transform::DocumentFunction::localFiles
                                               : transform::DocumentFunction::refused;
}

namespace {

transform::Request requestOf(NodeHandle const& source, DocumentObject const& stylesheet) {
    return {sourceOf(source), permissionOf(stylesheet), {}, {}};
}

} // namespace

void transformToObject(NodeHandle& source, NodeHandle& stylesheet, VARIANT const& output) {
    ComPtr<NodeHandle> const target = handleOf(objectIn(output));
    DocumentObject& targetDocument = documentOf(*target);
    DocumentObject& sheet = documentOf(stylesheet);
    std::string messages;
    tree::DocumentRef const result =
        sheet.asStylesheet()->apply(requestOf(source, sheet), messages);
    targetDocument.replaceContent(result);
    leaveMessages(IID_IXMLDOMNode, messages);
}

BSTR transformToText(NodeHandle& source, NodeHandle& stylesheet) {
    DocumentObject& sheet = documentOf(stylesheet);
    std::string messages;
    std::string const result = sheet.asStylesheet()->text(requestOf(source, sheet),
                                                          transform::TextEncoding::wide, messages);
    BSTR const text = toBstr(std::string_view{result});
    leaveMessages(IID_IXMLDOMNode, messages);
    return text;
}

} // namespace tibxml::com
