// The objects for elements, attributes and all other nodes but documents.
#pragma once

#include "DocumentObject.h"
#include "NodeObject.h"
#include "Text.h"

namespace tibxml::com {

// A node object keeps its document object alive.
template <class Interface>
class OwnedNodeObject : public NodeObject<Interface> {
public:
    OwnedNodeObject(DocumentObject& owner, tree::Document& storage, tree::Node* node) {
        this->attach(owner, storage, node);
        owner.AddRef();
    }

protected:
    ~OwnedNodeObject() override {
        DocumentObject& owner = this->owner();
        this->detach();
        owner.Release();
    }
};

class ElementObject final : public OwnedNodeObject<IXMLDOMElement> {
public:
    using OwnedNodeObject::OwnedNodeObject;
};

class PlainNodeObject final : public OwnedNodeObject<IXMLDOMNode> {
public:
    using OwnedNodeObject::OwnedNodeObject;
};

class AttributeObject final : public OwnedNodeObject<IXMLDOMAttribute> {
public:
    using OwnedNodeObject::OwnedNodeObject;

    HRESULT get_name(BSTR* name) noexcept override { return get_nodeName(name); }

    HRESULT get_value(VARIANT* value) noexcept override {
        return reply(IID_IXMLDOMAttribute, value, [&] { return stringVariant(node()->text()); });
    }

    HRESULT put_value(VARIANT value) noexcept override {
        return guarded(IID_IXMLDOMAttribute,
                       [&] { return setText(*this, stringIn(value, E_INVALIDARG)), S_OK; });
    }
};

} // namespace tibxml::com
