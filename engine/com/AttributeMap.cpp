#include "AttributeMap.h"

#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/NamespaceNodes.h>

#include "DeclarationRules.h"
#include "Failure.h"
#include "NodeHandle.h"
#include "NodeOperations.h"
#include "NodeValue.h"
#include "Text.h"

namespace tibxml::com {

namespace {

struct Place {
    tree::Name* name;
    tree::Node* old; // whose place it is; null for a new one
};

// The place of an attribute on an element and the name that it has there. Throws Failure when the
// element cannot have it.
Place placeFor(tree::Document& document, tree::Node* element, tree::Node const* attribute,
               tree::Name* name) {
    if (name->declaresNamespace) checkDeclaration(element, attribute, attribute->text());
    tree::Node* old = tree::findAttribute(element, name->qualified);
    tree::Name* const fitting = fittingName(document, element, name, old);
    if (fitting != name) old = tree::findAttribute(element, fitting->qualified);
    tree::Node* const same = tree::findAttribute(element, fitting->expanded);
    if (same != nullptr && same != old)
        throw Failure{E_FAIL, "the element has this attribute under another prefix"};
    return {fitting, old};
}

} // namespace

tree::Node* AttributeMap::find(BSTR name) const {
    std::wstring_view const wide = viewOf(name);
    if (tree::Name const* const plain = element_.storage().names().findPlain(wide))
        return tree::findAttribute(element_.node(), plain->expanded);
    XmlText const qualified{wide};
    // What XML cannot hold is not a name.
    return qualified.isValid() ? tree::findAttribute(element_.node(), qualified.view()) : nullptr;
}

HRESULT AttributeMap::getNamedItem(BSTR name, IXMLDOMNode** attribute) noexcept {
    return replyObject(IID_IXMLDOMNamedNodeMap, attribute,
                       [&] { return wrapBeside(element_, find(name)); });
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
    tree::Document& document = element_.storage();
    if (!handle.node()->is(tree::NodeKind::attribute))
        throw Failure{E_FAIL, "the node is not an attribute"};
    if (tree::isNamespaceNode(handle.node()))
        throw Failure{E_FAIL, "a node of the namespace axis cannot be set"};
    if (handle.node()->parent == element_.node()) return;
    auto const [name, old] = placeFor(document, element_.node(), handle.node(),
                                      nameAt(document, element_.node(), handle));
    tree::Removal replaced{document, old};
    adopt(element_.owner(), document, handle);
    document.lifetimes().move(handle.node(), element_.node(), old);
    handle.node()->name = name;
    replaced.run();
}

void AttributeMap::setValue(BSTR name, std::string_view value) {
    tree::Document& document = element_.storage();
    std::wstring_view const wide = viewOf(name);
    tree::Name* const plain = document.names().findPlain(wide);
    tree::Node* const known =
        plain != nullptr ? tree::findAttribute(element_.node(), plain->expanded) : find(name);
    if (known != nullptr) {
        setContent(document, known, value);
    } else if (plain != nullptr) {
        // Nothing can speak against a name without prefix that the element does not have.
        tree::appendAttribute(document, element_.node(),
                              tree::newAttribute(document, plain, value));
    } else {
        add(wide, value);
    }
}

void AttributeMap::add(std::wstring_view qualifiedName, std::string_view value) {
    tree::Document& document = element_.storage();
    tree::Name* const name =
        resolvedAt(document, element_.node(), internName(document, qualifiedName, {}));
    tree::Node* const attribute = tree::newAttribute(document, name, value);
    try {
        attribute->name = placeFor(document, element_.node(), attribute, name).name;
    } catch (...) {
        tree::destroy(document, attribute);
        throw;
    }
    tree::appendAttribute(document, element_.node(), attribute);
}

HRESULT AttributeMap::removeNamedItem(BSTR name, IXMLDOMNode** result) noexcept {
    if (result != nullptr) *result = nullptr;
    return guarded(IID_IXMLDOMNamedNodeMap, [&] {
        tree::Node* const attribute = find(name);
        if (attribute == nullptr) return S_FALSE;
        auto const handed = ComPtr<IXMLDOMNode>::adopt(
            result != nullptr ? wrapBeside(element_, attribute) : nullptr);
        element_.storage().lifetimes().remove(attribute);
        if (handed) *result = ComPtr<IXMLDOMNode>{handed}.detach();
        return S_OK;
    });
}

HRESULT AttributeMap::get_item(LONG index, IXMLDOMNode** attribute) noexcept {
    return replyObject(IID_IXMLDOMNamedNodeMap, attribute, [&] {
        tree::Node* const first = element_.node()->firstAttribute();
        return wrapBeside(element_, attributes_.at(element_.storage(), first, index));
    });
}

HRESULT AttributeMap::get_length(LONG* length) noexcept {
    return reply(IID_IXMLDOMNamedNodeMap, length, [&] {
        return attributes_.count(element_.storage(), element_.node()->firstAttribute());
    });
}

} // namespace tibxml::com
