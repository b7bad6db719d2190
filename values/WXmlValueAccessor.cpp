#include <TibXml/WXmlValueAccessor.h>

#include "TextOfTarget.h"

#include <utility>

using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::values::setTextOf;
using tibxml::values::textOf;

WXmlValueAccessor::Target WXmlValueAccessor::targetOf(wchar_t const* selector) noexcept {
    if (selector == nullptr || selector[0] == L'\0') return Target::nothing;
    return selector[0] == L'.' && selector[1] == L'\0' ? Target::node : Target::attribute;
}

WXmlValueAccessor::WXmlValueAccessor() noexcept : target_{Target::nothing} {}

WXmlValueAccessor::WXmlValueAccessor(WXmlNodePtr const& node, wchar_t const* selector)
    : node_{node},
      attributeName_{selector != nullptr && selector[0] != L'\0' ? selector + 1 : nullptr},
      target_{targetOf(selector)} {}

WXmlValueAccessor::WXmlValueAccessor(WXmlValueAccessor const& other) = default;

WXmlValueAccessor::WXmlValueAccessor(WXmlValueAccessor&& other) noexcept : WXmlValueAccessor{} {
    Swap(other);
}

WXmlValueAccessor& WXmlValueAccessor::operator=(WXmlValueAccessor const& other) = default;

WXmlValueAccessor& WXmlValueAccessor::operator=(WXmlValueAccessor&& other) noexcept {
    if (this == &other) return *this;
    node_ = nullptr;
    Swap(other);
    return *this;
}

WXmlValueAccessor::~WXmlValueAccessor() = default;

void WXmlValueAccessor::Swap(WXmlValueAccessor& other) noexcept {
    node_.Swap(other.node_);
    std::swap(attributeName_, other.attributeName_);
    std::swap(target_, other.target_);
}

bool WXmlValueAccessor::Exists() const noexcept {
    return static_cast<bool>(GetNodeForReading());
}

bool WXmlValueAccessor::IsEmpty() const {
    WXmlNodePtr const target = GetNodeForReading();
    return !target || textOf(target).view().empty();
}

void WXmlValueAccessor::Clear() {
    WXmlNodePtr const target = GetNodeForReading();
    if (target) setTextOf(target, EngineString{L""});
}

void WXmlValueAccessor::Delete() noexcept {
    if (target_ != Target::attribute) return;
    quietly(S_OK, [this] {
        auto const attributes = objectFrom(node_, &IXMLDOMNode::get_attributes);
        WXmlNodePtr removed;
        return invoke(attributes, &IXMLDOMNamedNodeMap::removeNamedItem, attributeName_.get(),
                      removed.GetAddress());
    });
}
