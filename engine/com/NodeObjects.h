// The objects for elements, attributes and all other nodes but documents.
#pragma once

#include <cstddef>
#include <new>

#include "AttributeMap.h"
#include "DocumentObject.h"
#include "NodeObject.h"
#include "Text.h"

namespace tibxml::com {

// A node object keeps its document object alive, in whose pool its memory lies; see NodeMemory.h.
template <class Interface>
class OwnedNodeObject : public NodeObject<Interface> {
public:
    OwnedNodeObject(DocumentObject& owner, tree::Document& storage, tree::Node* node) {
        this->attach(storage, node);
        this->setOwner(ComPtr<DocumentObject>{&owner});
    }

    static void* operator new(std::size_t size, DocumentObject& owner) {
        static_cast<void>(size);
        return owner.nodeObjects().take();
    }

    // For a constructor that throws.
    static void operator delete(void* block, DocumentObject& owner) noexcept {
        owner.nodeObjects().give(block);
    }

    // The owner goes last: that may be the end of the pool. It need not be the one that the object
    // began with.
    static void operator delete(OwnedNodeObject* object, std::destroying_delete_t) {
        ComPtr<DocumentObject> const owner = object->disown();
        object->~OwnedNodeObject();
        owner->nodeObjects().give(object);
    }

protected:
    ~OwnedNodeObject() override { this->detach(); }
};

class ElementObject final : public OwnedNodeObject<IXMLDOMElement> {
public:
    using OwnedNodeObject::OwnedNodeObject;

    HRESULT setAttribute(BSTR name, VARIANT value) noexcept override {
        return guarded(IID_IXMLDOMElement, [&] {
            XmlText const text{viewOf(stringIn(value, E_INVALIDARG))};
            requireValid(text);
            attributes_.setValue(name, text.view());
            return S_OK;
        });
    }

protected:
    IXMLDOMNamedNodeMap* attributeMap() noexcept override {
        attributes_.AddRef();
        return &attributes_;
    }

private:
    AttributeMap attributes_{*this};
};

class PlainNodeObject final : public OwnedNodeObject<IXMLDOMNode> {
public:
    using OwnedNodeObject::OwnedNodeObject;
};

class AttributeObject : public OwnedNodeObject<IXMLDOMAttribute> {
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

// A node of the namespace axis, which callers see as an attribute that nothing can change: edits
// find it out by isNamespaceNode().
class NamespaceObject final : public AttributeObject {
public:
    using AttributeObject::AttributeObject;

private:
    ~NamespaceObject() override { detachNamespace(); }
};

static_assert(sizeof(ElementObject) <= NodeMemory::blockSize);
static_assert(sizeof(AttributeObject) <= NodeMemory::blockSize);
static_assert(sizeof(NamespaceObject) <= NodeMemory::blockSize);
static_assert(sizeof(PlainNodeObject) <= NodeMemory::blockSize);

} // namespace tibxml::com
