#include <TibXml/EngineCall.h>
#include <TibXml/WXmlCompositeNode.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>

using tibxml::engine::quietly;

WXmlValueAccessor const WXmlCompositeNode::ReadableAttribute(CString const& name,
                                                             bool defaultsOnly) const noexcept {
    static WXmlNodePtr const nobody;
    try {
        WXmlNode const* const changed = defaultsOnly ? nullptr : GetReadWriteNode();
        if (changed != nullptr && changed->DoesNodeExist(name)) return changed->Attribute(name);
        if (WXmlNode const* defaults = GetReadOnlyNode()) return defaults->Attribute(name);
    } catch (...) {
        return {nobody, nullptr}; // as when neither document has the element
    }
    return {nobody, nullptr};
}

CString WXmlCompositeNode::GetName() const noexcept {
    return quietly(CString{}, [this] {
        WXmlNode const* node = GetReadWriteNode();
        if (node == nullptr) node = GetReadOnlyNode();
        return node != nullptr ? node->GetName() : CString{};
    });
}

bool WXmlCompositeNode::DoesNodeExist(WXPath const& wanted) const noexcept {
    return quietly(false, [&] {
        WXmlNode const* const changed = GetReadWriteNode();
        if (changed != nullptr && changed->DoesNodeExist(wanted)) return true;
        WXmlNode const* const defaults = GetReadOnlyNode();
        return defaults != nullptr && defaults->DoesNodeExist(wanted);
    });
}

bool WXmlCompositeNode::GetNode(WXPath const& wanted, WXmlNode& node) const noexcept {
    return quietly(false, [&] {
        WXmlNode const* const changed = GetReadWriteNode();
        if (changed != nullptr && changed->GetNode(wanted, node)) return true;
        WXmlNode const* const defaults = GetReadOnlyNode();
        return defaults != nullptr && defaults->GetNode(wanted, node);
    });
}

bool WXmlCompositeNode::GetNodes(WXPath const& wanted, WXmlNodeList& nodes,
                                 bool fallBack) const noexcept {
    return quietly(false, [&] {
        WXmlNode const* const changed = GetReadWriteNode();
        if (changed != nullptr && changed->GetNodes(wanted, nodes)) return true;
        if (changed != nullptr && !fallBack) return false;
        WXmlNode const* const defaults = GetReadOnlyNode();
        return defaults != nullptr && defaults->GetNodes(wanted, nodes);
    });
}
