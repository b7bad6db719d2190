// The result of a query: a snapshot.
#pragma once

#include <vector>

#include <TibXml/engine/IXMLDOMNodeList.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include <com/LiveObjects.h>

#include "ComPtr.h"
#include "DocumentObject.h"

namespace tibxml::com {

// Node objects are made only for the nodes that are asked for; until then the tree is pinned, so
// that the others stay whatever is removed.
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
