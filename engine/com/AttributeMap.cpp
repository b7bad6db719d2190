#include "AttributeMap.h"

#include <TibXml/platform/Utf.h>
#include <tree/Editing.h>
#include <tree/Lifetime.h>

#include "Adoption.h"
#include "DeclarationRules.h"
#include "Failure.h"
#include "Text.h"

namespace tibxml::com {

tree::Node* AttributeMap::find(BSTR name) const {
    // What XML cannot hold is nobody's name.
    std::wstring_view const wanted = viewOf(name);
    if (!isXmlText(wanted)) return nullptr;
    std::string qualified;
    platform::appendUtf8(qualified, wanted);
    return tree::findAttribute(element_->node(), qualified);
}

HRESULT AttributeMap::getNamedItem(BSTR name, IXMLDOMNode** attribute) noexcept {
    return replyObject(IID_IXMLDOMNamedNodeMap, attribute,
                       [&] { return wrapBeside(*element_, find(name)); });
}

HRESULT AttributeMap::setNamedItem(IXMLDOMNode* attribute, IXMLDOMNode** result) noexcept {
    if (result != nullptr) *result = nullptr;
    return guarded(IID_IXMLDOMNamedNodeMap, [&] {
        attach(*handleOf(attribute));
        if (result == nullptr) return S_OK;
        attribute->AddRef();
        *result = attribute;
        return S_OK;
    });
}

void AttributeMap::attach(NodeHandle& handle) {
    tree::Document& document = element_->storage();
    tree::Node* const element = element_->node();
    if (!handle.node()->is(tree::NodeKind::attribute))
        throw Failure{E_FAIL, "the node is no attribute"};
    if (handle.node()->parent == element) return;
    tree::Name* const name = nameAt(document, element, handle.node()->name);
    if (name->declaresNamespace) checkDeclaration(element, handle.node(), handle.node()->text());
    tree::Node* const old = tree::findAttribute(element, name->qualified);
    tree::Node* const same =
        tree::findAttribute(element, document.names().findExpanded(name->local, name->uri));
    if (same != nullptr && same != old)
        throw Failure{E_FAIL, "the element has this attribute under another prefix"};
    tree::Removal replaced{document, old};
    adopt(element_->owner(), document, handle);
    tree::move(document, handle.node(), element, old);
    handle.node()->name = name;
    replaced.run();
}

HRESULT AttributeMap::removeNamedItem(BSTR name, IXMLDOMNode** result) noexcept {
    if (result != nullptr) *result = nullptr;
    return guarded(IID_IXMLDOMNamedNodeMap, [&] {
        tree::Node* const attribute = find(name);
        if (attribute == nullptr) return S_FALSE;
        auto const handed = ComPtr<IXMLDOMNode>::adopt(
            result != nullptr ? wrapBeside(*element_, attribute) : nullptr);
        tree::remove(element_->storage(), attribute);
        if (handed) *result = ComPtr<IXMLDOMNode>{handed}.detach();
        return S_OK;
    });
}

HRESULT AttributeMap::get_item(LONG index, IXMLDOMNode** attribute) noexcept {
    return replyObject(IID_IXMLDOMNamedNodeMap, attribute, [&] {
        tree::Node* const first = element_->node()->firstAttribute();
        return wrapBeside(*element_, attributes_.at(element_->storage(), first, index));
    });
}

HRESULT AttributeMap::get_length(LONG* length) noexcept {
    return reply(IID_IXMLDOMNamedNodeMap, length, [&] {
        return attributes_.count(element_->storage(), element_->node()->firstAttribute());
    });
}

} // namespace tibxml::com
