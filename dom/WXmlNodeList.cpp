#include <TibXml/WXmlNodeList.h>

#include <calls/EngineCall.h>

using tibxml::engine::invoke;
using tibxml::engine::valueFrom;

static_assert(sizeof(WXmlNodeList) == sizeof(void*));

WXmlNodeList::WXmlNodeList() = default;

WXmlNodeList::WXmlNodeList(WXmlNodeListPtr const& list) : slot{list} {}

WXmlNodeList::WXmlNodeList(WXmlNodeList const& other) : slot{other.List()} {}

WXmlNodeList::WXmlNodeList(WXmlNodeList&& other) noexcept = default;

WXmlNodeList& WXmlNodeList::operator=(WXmlNodeList const& other) {
    if (this == &other) return *this;
    slot.Keep(other.List());
    return *this;
}

WXmlNodeList& WXmlNodeList::operator=(WXmlNodeList&& other) noexcept = default;

WXmlNodeList::~WXmlNodeList() = default;

void WXmlNodeList::Swap(WXmlNodeList& other) noexcept {
    slot.Swap(other.slot);
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
    return *slot;
}
