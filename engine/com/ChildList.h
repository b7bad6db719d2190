// The live list of a node's children.
#pragma once

#include <TibXml/engine/IXMLDOMNodeList.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/ErrorInfo.h>

#include "ComPtr.h"
#include "NodeHandle.h"

namespace tibxml::com {

class ChildList final : public platform::ComObject<IXMLDOMNodeList, ISupportErrorInfo> {
public:
    explicit ChildList(NodeHandle& parent) noexcept : parent_{&parent} {}

    HRESULT get_item(LONG index, IXMLDOMNode** node) noexcept override;
    HRESULT get_length(LONG* length) noexcept override;

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

private:
    ~ChildList() override = default;

    tree::Node* find(LONG index) noexcept;
    LONG count() noexcept;
    void forgetOldPosition() noexcept;

    LiveObject live_;
    ComPtr<NodeHandle> parent_;
    // Where the last look-up ended, so that walking through the list by index takes one step each;
    // and the length. Both hold while the tree is unchanged.
    std::uint64_t version_ = 0;
    std::uint64_t storage_ = 0; // its serial: a new document may have an old one's address
    tree::Node* node_ = nullptr;
    LONG index_ = 0;
    LONG length_ = -1;
};

} // namespace tibxml::com
