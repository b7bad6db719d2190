#pragma once

#include <TibXml/EngineCall.h>
#include <TibXml/WXPath.h>
#include <TibXml/WXmlNodeList.h>

namespace tibxml::dom {

/// All nodes that a path selects from a node or a document; `_com_error` when that fails.
template <class Context>
WXmlNodeListPtr selectNodes(EnginePtr<Context> const& context, WXPath const& path) {
    WXmlNodeListPtr nodes;
    engine::EngineString const expression{path.ToString()};
    engine::invoke(context, &IXMLDOMNode::selectNodes, expression.get(), nodes.GetAddress());
    return nodes;
}

/// Makes `nodes` a handle on a list; whether there is anything in it.
inline bool assignList(WXmlNodeListPtr const& list, WXmlNodeList& nodes) {
    nodes = WXmlNodeList{list};
    return engine::valueFrom(list, &IXMLDOMNodeList::get_length) > 0;
}

} // namespace tibxml::dom
