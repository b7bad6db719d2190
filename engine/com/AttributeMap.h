// The live map of an element's attributes: a part of the element's object, so that asking for it,
// as every look-up of an attribute does, makes nothing.
#pragma once

#include <TibXml/engine/IXMLDOMNamedNodeMap.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include "NodeHandle.h"
#include "NodeLists.h"

namespace tibxml::com {

class AttributeMap final : public platform::ComPart<IXMLDOMNamedNodeMap, ISupportErrorInfo> {
public:
    explicit AttributeMap(NodeHandle& element) noexcept : ComPart{element}, element_{element} {}

    HRESULT getNamedItem(BSTR name, IXMLDOMNode** attribute) noexcept override;
    HRESULT setNamedItem(IXMLDOMNode* attribute, IXMLDOMNode** result) noexcept override;
    HRESULT removeNamedItem(BSTR name, IXMLDOMNode** result) noexcept override;
    HRESULT get_item(LONG index, IXMLDOMNode** attribute) noexcept override;
    HRESULT get_length(LONG* length) noexcept override;

    // Gives an attribute a value, making it when there is none. Throws Failure and std::bad_alloc
    // before anything changed.
    void setValue(BSTR name, std::string_view value);

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

private:
    tree::Node* find(BSTR name) const;
    void attach(NodeHandle& handle);
    void add(std::wstring_view name, std::string_view value);

    NodeHandle& element_;
    SiblingCursor attributes_;
};

} // namespace tibxml::com
