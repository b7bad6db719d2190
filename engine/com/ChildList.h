// The live list of a node's children.
#pragma once

#include <TibXml/engine/IXMLDOMNodeList.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include <com/LiveObjects.h>

#include "ComPtr.h"
#include "NodeHandle.h"
#include "SiblingCursor.h"

namespace tibxml::com {

class ChildList final : public platform::ComObject<IXMLDOMNodeList, ISupportErrorInfo> {
public:
    explicit ChildList(NodeHandle& parent) noexcept : parent_{&parent} {}

    HRESULT get_item(LONG index, IXMLDOMNode** node) noexcept override;
    HRESULT get_length(LONG* length) noexcept override;

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

private:
    ~ChildList() override = default;

    LiveObject live_;
    ComPtr<NodeHandle> parent_;
    SiblingCursor children_;
};

} // namespace tibxml::com
