#include <TibXml/EngineCall.h>
#include <TibXml/WXmlCompositeNode.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>

using tibxml::engine::quietly;

WXmlValueAccessor WXmlCompositeNode::WriteableAttribute(CString const& name) const noexcept {
    static WXmlNodePtr const nobody;
    try {
        if (CreateReadWriteNode(false, false)) return readWriteNode->Attribute(name);
    } catch (...) {
        return {nobody, nullptr}; // as when the element could not be made
    }
    return {nobody, nullptr};
}

bool WXmlCompositeNode::CreateReadWriteNode(bool copyDefaults, bool copyParent) const noexcept {
    return quietly(false, [&] {
        if (GetReadWriteNode() != nullptr) return true;
        WXmlNode const* const defaults = GetReadOnlyNode();
        if (defaults == nullptr || (IsCustomizable() && !copyDefaults)) {
            WXmlNode root = readWriteDoc.GetRootNode();
            CreateXPath(root, path);
        } else if (IsCustomizable() && !CreateCopy(copyParent)) {
            return false;
        }
        // For an element that forbids changes the search makes the copy that takes them.
        InitializeReadWriteNode();
        return readWriteNode != nullptr;
    });
}

bool WXmlCompositeNode::CreateCopy(bool copyParent) const {
    if (!copyParent) return Clone(readWriteDoc, *readOnlyNode, path);
    return Clone(readWriteDoc, readOnlyNode->GetNode(L"parent::*"), path.GetParentOfLeaf());
}

// Puts a copy of a node of the defaults where the path says; its parents are made.
bool WXmlCompositeNode::Clone(WXmlDoc& document, WXmlNode const& node, WXPath const& target) const {
    WXPath const parentPath = target.GetParentOfLeaf();
    WXmlNode parent = document.GetRootNode();
    if (!parentPath.IsEmpty()) {
        WXmlNode root = parent;
        CreateXPath(root, parentPath);
        if (!root.GetNode(parentPath, parent)) return false;
    }
    node.Clone(true).Graft(parent, -1);
    return true;
}

// Makes the steps exist one below the other.
void WXmlCompositeNode::CreateXPath(WXmlNode& node, WXPath const& steps) const {
    WXmlNode current = node;
    WXPath rest = steps;
    do {
        WXPath const step = rest.GetRoot();
        WXmlNode child;
        if (!current.GetNode(step, child)) child = current.CreateChild(step, nullptr);
        current = child;
        rest = rest.GetChildOfRoot();
    } while (!rest.IsEmpty());
}
