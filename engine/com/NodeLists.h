// Lists of nodes as callers see them: live lists of siblings, and the results of queries.
#pragma once

#include <cstdint>
#include <vector>

#include <TibXml/engine/IXMLDOMNodeList.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/WindowsTypes.h>
#include <com/Measures.h>
#include <tree/Document.h>

#include "ComPtr.h"
#include "DocumentObject.h"
#include "NodeHandle.h"

namespace tibxml::com {

// Look-up by index in a list of siblings that may change between look-ups. Remembers where the last
// one ended, so that walking through a list by index takes one step each; and the length. Both are
// forgotten when the document changes.
class SiblingCursor {
public:
    // The sibling at an index from 0 in the list that begins with `first`; null when there is none.
    tree::Node* at(tree::Document const& document, tree::Node* first, LONG index) noexcept;

    LONG count(tree::Document const& document, tree::Node const* first) noexcept;

private:
    void forgetWhatChanged(tree::Document const& document) noexcept;

    std::uint64_t document_ = 0;
    std::uint64_t version_ = 0;
    tree::Node* node_ = nullptr;
    LONG index_ = 0;
    LONG length_ = -1;
};

// The live list of a node's children.
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

// The result of a query: a snapshot. Node objects are made only for the nodes that are asked for;
// until then the tree is pinned, so that the others stay whatever is removed.
class QueryList final : public platform::ComObject<IXMLDOMNodeList, ISupportErrorInfo> {
public:
    QueryList(NodeHandle& context, std::vector<tree::Node*> nodes) noexcept;

    HRESULT get_item(LONG index, IXMLDOMNode** node) noexcept override;
    HRESULT get_length(LONG* length) noexcept override;

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

private:
    ~QueryList() override;

    LiveObject live_;
    ComPtr<DocumentObject> owner_;
    tree::DocumentRef storage_;
    std::vector<tree::Node*> nodes_;
};

} // namespace tibxml::com
