#include <TibXml/WXmlNode.h>

#include "Identity.h"

#include <TibXml/EngineCall.h>

#include <new>

namespace {

/// Null for what has no identity: no node, or one that does not tell.
IUnknown* identityOf(IUnknown* node) noexcept {
    return tibxml::engine::quietly(static_cast<IUnknown*>(nullptr), [node] {
        IUnknown* identity = nullptr;
        tibxml::dom::askIdentity(node, identity);
        return identity;
    });
}

} // namespace

WXmlNode::WXmlNode() : slot{std::make_unique<WXmlNodePtr>()} {}

WXmlNode::WXmlNode(WXmlNodePtr const& node) : slot{std::make_unique<WXmlNodePtr>(node)} {}

WXmlNode::WXmlNode(WXmlNode const& other)
    : slot{new (std::nothrow) WXmlNodePtr{other.slot ? *other.slot : WXmlNodePtr{}}} {
    Validate(true);
}

WXmlNode::WXmlNode(WXmlNode&& other) noexcept = default;

WXmlNode& WXmlNode::operator=(WXmlNode const& other) {
    Validate(true);
    *slot = other.Slot();
    return *this;
}

WXmlNode& WXmlNode::operator=(WXmlNode&& other) noexcept = default;

WXmlNode::~WXmlNode() = default;

void WXmlNode::Swap(WXmlNode& other) noexcept {
    slot.swap(other.slot);
}

bool WXmlNode::operator==(WXmlNode const& other) const noexcept {
    if (!slot || !other.slot) return slot == other.slot;
    IUnknown* const left = *slot;
    IUnknown* const right = *other.slot;
    return left == right || identityOf(left) == identityOf(right);
}

bool WXmlNode::operator!=(WXmlNode const& other) const noexcept {
    return !(*this == other);
}

bool WXmlNode::IsValid() const noexcept {
    return tibxml::engine::quietly(false, [this] { return static_cast<bool>(Slot()); });
}

/// Gives a handle that was moved from a place again; whether it had one already.
bool WXmlNode::Validate(bool /*flag*/) const {
    if (slot) return true;
    slot = std::make_unique<WXmlNodePtr>();
    return false;
}

WXmlNodePtr const& WXmlNode::Slot() const {
    Validate(true);
    return *slot;
}
