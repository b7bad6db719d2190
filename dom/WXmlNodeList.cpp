#include <TibXml/WXmlNodeList.h>

#include <TibXml/EngineCall.h>

#include <new>

using tibxml::engine::invoke;
using tibxml::engine::valueFrom;

WXmlNodeList::WXmlNodeList() : cell{std::make_unique<WXmlNodeListPtr>()} {}

WXmlNodeList::WXmlNodeList(WXmlNodeListPtr const& list)
    : cell{std::make_unique<WXmlNodeListPtr>(list)} {}

// Without memory it is an empty list, as is every list without a cell.
WXmlNodeList::WXmlNodeList(WXmlNodeList const& other)
    : cell{new (std::nothrow) WXmlNodeListPtr{other.List()}} {}

WXmlNodeList::WXmlNodeList(WXmlNodeList&& other) noexcept = default;

WXmlNodeList& WXmlNodeList::operator=(WXmlNodeList const& other) {
    if (this == &other) return *this;
    if (!cell) cell = std::make_unique<WXmlNodeListPtr>();
    *cell = other.List();
    return *this;
}

WXmlNodeList& WXmlNodeList::operator=(WXmlNodeList&& other) noexcept = default;

WXmlNodeList::~WXmlNodeList() = default;

void WXmlNodeList::Swap(WXmlNodeList& other) noexcept {
    cell.swap(other.cell);
}

std::uint64_t WXmlNodeList::size() const {
    return static_cast<std::uint64_t>(Count());
}

int WXmlNodeList::Count() const {
    return List() ? valueFrom(List(), &IXMLDOMNodeList::get_length) : 0;
}

WXmlNode WXmlNodeList::Node(int index) const {
    WXmlNodePtr node;
    if (List()) invoke(List(), &IXMLDOMNodeList::get_item, index, node.GetAddress());
    return node;
}

WXmlNodeListPtr const& WXmlNodeList::List() const noexcept {
    static constinit WXmlNodeListPtr const none;
    return cell ? *cell : none;
}
