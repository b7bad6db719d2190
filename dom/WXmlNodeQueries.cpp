#include "SelectNodes.h"

#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>

#include <utility>

using tibxml::dom::assignList;
using tibxml::dom::selectNodes;
using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::quietly;

namespace {

// What callers catch when a path selects nothing.
constexpr int nothingFound = 0;

} // namespace

WXmlNodePtr WXmlNode::Select(WXPath const& path) const {
    WXmlNodePtr const& node = Slot();
    WXmlNodePtr found;
    EngineString const expression{path.ToString()};
    invoke(node, &IXMLDOMNode::selectSingleNode, expression.get(), found.GetAddress());
    return found;
}

bool WXmlNode::DoesNodeExist(WXPath const& path) const noexcept {
    return quietly(false, [&] { return static_cast<bool>(Select(path)); });
}

bool WXmlNode::GetNode(WXPath const& path, WXmlNode& node) const noexcept {
    return quietly(false, [&] {
        WXmlNodePtr found = Select(path);
        if (!found) return false;
        node.slot.Keep(std::move(found));
        return true;
    });
}

WXmlNode WXmlNode::GetNode(WXPath const& path) const {
    WXmlNodePtr const found = Select(path);
    if (!found) throw nothingFound;
    return found;
}

WXmlNode WXmlNode::GetNodeNoThrow(WXPath const& path) const {
    return Select(path);
}

bool WXmlNode::GetNodes(WXPath const& path, WXmlNodeList& nodes) const noexcept {
    return quietly(false, [&] { return assignList(selectNodes(Slot(), path), nodes); });
}

WXmlNodeList WXmlNode::GetNodes(WXPath const& path) const {
    WXmlNodeListPtr const found = selectNodes(Slot(), path);
    if (!found) throw nothingFound;
    return found;
}

WXmlNodeList WXmlNode::GetNodes(WXPath const& path, bool /*flag*/) const {
    return selectNodes(*slot, path);
}
