// The live map of an element's attributes.
#pragma once

#include <TibXml/engine/IXMLDOMNamedNodeMap.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/ErrorInfo.h>

#include "ComPtr.h"
#include "NodeHandle.h"
#include "SiblingCursor.h"

namespace tibxml::com {

class AttributeMap final : public platform::ComObject<IXMLDOMNamedNodeMap, ISupportErrorInfo> {
public:
    explicit AttributeMap(NodeHandle& element) noexcept : element_{&element} {}

    HRESULT getNamedItem(BSTR name, IXMLDOMNode** attribute) noexcept override;
    HRESULT setNamedItem(IXMLDOMNode* attribute, IXMLDOMNode** result) noexcept override;
    HRESULT removeNamedItem(BSTR name, IXMLDOMNode** result) noexcept override;
    HRESULT get_item(LONG index, IXMLDOMNode** attribute) noexcept override;
    HRESULT get_length(LONG* length) noexcept override;

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

private:
    ~AttributeMap() override = default;

    tree::Node* find(BSTR name) const;
    void attach(NodeHandle& handle);

    LiveObject live_;
    ComPtr<NodeHandle> element_;
    SiblingCursor attributes_;
};

} // namespace tibxml::com
