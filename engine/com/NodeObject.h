// The node part of every engine object that is a node.
#pragma once

#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include "Failure.h"
#include "Insertion.h"
#include "NodeOperations.h"
#include "NodeValue.h"
#include "Transformation.h"

namespace tibxml::com {

template <class Interface>
class NodeObject : public platform::ComObject<Interface, ISupportErrorInfo, NodeHandle> {
public:
    IXMLDOMNode* asNode() noexcept final { return this; }

    HRESULT InterfaceSupportsErrorInfo(REFIID iid) noexcept final {
        return iid == IID_NodeHandle ? S_FALSE : S_OK;
    }

    HRESULT get_nodeName(BSTR* name) noexcept final {
        return reply(IID_IXMLDOMNode, name, [&] { return nodeName(*this); });
    }

    HRESULT get_nodeType(DOMNodeType* type) noexcept final {
        return reply(IID_IXMLDOMNode, type, [&] { return nodeType(*this); });
    }

    HRESULT get_parentNode(IXMLDOMNode** parent) noexcept final {
        return replyObject(IID_IXMLDOMNode, parent, [&] { return parentNode(*this); });
    }

    HRESULT get_childNodes(IXMLDOMNodeList** children) noexcept final {
        return reply(IID_IXMLDOMNode, children, [&] { return childNodes(*this); });
    }

    HRESULT get_attributes(IXMLDOMNamedNodeMap** map) noexcept final {
        return replyObject(IID_IXMLDOMNode, map, [&] { return attributeMap(); });
    }

    HRESULT insertBefore(IXMLDOMNode* node, VARIANT reference,
                         IXMLDOMNode** result) noexcept final {
        return handOut(node, result, [&] {
            auto const before = referenceIn(reference);
            insertChild(*this, *handleOf(node), before.get());
        });
    }

    HRESULT appendChild(IXMLDOMNode* node, IXMLDOMNode** result) noexcept final {
        return handOut(node, result, [&] { insertChild(*this, *handleOf(node), nullptr); });
    }

    HRESULT removeChild(IXMLDOMNode* child, IXMLDOMNode** result) noexcept final {
        return handOut(child, result, [&] { com::removeChild(*this, *handleOf(child)); });
    }

    HRESULT cloneNode(VARIANT_BOOL deep, IXMLDOMNode** copy) noexcept final {
        return reply(IID_IXMLDOMNode, copy,
                     [&] { return com::cloneNode(*this, deep != VARIANT_FALSE); });
    }

    HRESULT get_ownerDocument(IXMLDOMDocument** document) noexcept final {
        return replyObject(IID_IXMLDOMNode, document, [&] { return ownerDocument(*this); });
    }

    HRESULT get_text(BSTR* text) noexcept final {
        return reply(IID_IXMLDOMNode, text, [&] { return textOf(*this); });
    }

    HRESULT put_text(BSTR text) noexcept final {
        return guarded(IID_IXMLDOMNode, [&] { return setText(*this, text), S_OK; });
    }

    HRESULT get_nodeTypedValue(VARIANT* value) noexcept final {
        return reply(IID_IXMLDOMNode, value, [&] { return typedValue(*this); });
    }

    HRESULT put_nodeTypedValue(VARIANT value) noexcept final {
        return guarded(IID_IXMLDOMNode, [&] { return setTypedValue(*this, value), S_OK; });
    }

    HRESULT get_dataType(VARIANT* name) noexcept final {
        HRESULT const result = reply(IID_IXMLDOMNode, name, [&] { return dataType(*this); });
        return result == S_OK && name->vt == VT_NULL ? S_FALSE : result;
    }

    HRESULT put_dataType(BSTR name) noexcept final {
        return guarded(IID_IXMLDOMNode, [&] { return setDataType(*this, name), S_OK; });
    }

    HRESULT get_xml(BSTR* markup) noexcept final {
        return reply(IID_IXMLDOMNode, markup, [&] { return xmlOf(*this); });
    }

    HRESULT transformNode(IXMLDOMNode* stylesheet, BSTR* result) noexcept final {
        return reply(IID_IXMLDOMNode, result,
                     [&] { return transformToText(*this, *handleOf(stylesheet)); });
    }

    HRESULT selectNodes(BSTR expression, IXMLDOMNodeList** nodes) noexcept final {
        return reply(IID_IXMLDOMNode, nodes, [&] { return com::selectNodes(*this, expression); });
    }

    HRESULT selectSingleNode(BSTR expression, IXMLDOMNode** node) noexcept final {
        return replyObject(IID_IXMLDOMNode, node,
                           [&] { return com::selectSingleNode(*this, expression); });
    }

    HRESULT transformNodeToObject(IXMLDOMNode* stylesheet, VARIANT output) noexcept final {
        return guarded(IID_IXMLDOMNode, [&] {
            transformToObject(*this, *handleOf(stylesheet), output);
            return S_OK;
        });
    }

protected:
    // A reference to the map of an element's attributes; other nodes have none.
    virtual IXMLDOMNamedNodeMap* attributeMap() noexcept { return nullptr; }

private:
    // Runs a step on a node that a caller passed and hands that node out again.
    template <class Step>
    static HRESULT handOut(IXMLDOMNode* node, IXMLDOMNode** result, Step step) noexcept {
        if (result != nullptr) *result = nullptr;
        return guarded(IID_IXMLDOMNode, [&] {
            step();
            if (result == nullptr) return S_OK;
            node->AddRef();
            *result = node;
            return S_OK;
        });
    }
};

} // namespace tibxml::com
