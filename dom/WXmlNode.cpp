#include <TibXml/WXmlNode.h>

#include "Identity.h"

#include <TibXml/EngineCall.h>

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

static_assert(sizeof(WXmlNode) == sizeof(void*));

WXmlNode::WXmlNode() = default;

WXmlNode::WXmlNode(WXmlNodePtr const& node) : slot{node} {}

WXmlNode::WXmlNode(WXmlNode const& other) : slot{*other.slot} {}

WXmlNode::WXmlNode(WXmlNode&& other) noexcept = default;

WXmlNode& WXmlNode::operator=(WXmlNode const& other) {
    Validate(true);
    slot.Keep(other.Slot());
    return *this;
}

WXmlNode& WXmlNode::operator=(WXmlNode&& other) noexcept = default;

WXmlNode::~WXmlNode() = default;

void WXmlNode::Swap(WXmlNode& other) noexcept {
    slot.Swap(other.slot);
}

bool WXmlNode::operator==(WXmlNode const& other) const noexcept {
    if (!slot || !other.slot) return static_cast<bool>(slot) == static_cast<bool>(other.slot);
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
    slot = EngineSlot<WXmlNodePtr>{};
    return false;
}

WXmlNodePtr const& WXmlNode::Slot() const {
    Validate(true);
    return *slot;
}
