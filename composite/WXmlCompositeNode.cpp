#include <TibXml/WXmlCompositeNode.h>

#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <calls/EngineCall.h>

#include <utility>

using tibxml::engine::quietly;

namespace {

/// The element at a path, null when there is none.
std::unique_ptr<WXmlNode> find(WXmlDoc const& document, WXPath const& path) {
    auto node = std::make_unique<WXmlNode>();
    return document.GetRootNode().GetNode(path, *node) ? std::move(node) : nullptr;
}

/// A copy of a node that belongs to a document without being in its tree: below an element that
/// of its own.
std::unique_ptr<WXmlNode> detachedCopy(WXmlDoc const& document, WXmlNode const& node) {
    auto copy = std::make_unique<WXmlNode>(node.Clone(true));
    WXmlNode holder = document.CreateNode(node.GetParentNode().GetName(), nullptr);
    copy->Graft(holder, -1);
    return copy;
}

} // namespace

WXmlCompositeNode::WXmlCompositeNode(WXmlDoc& readOnly, WXmlDoc& readWrite, WXPath const& element)
    : WXmlCompositeNode{readOnly, readWrite, element, WXPath{}} {}

WXmlCompositeNode::WXmlCompositeNode(WXmlDoc& readOnly, WXmlDoc& readWrite, WXPath const& element,
                                     WXPath alternative)
    : readOnlyDoc{readOnly},
      readWriteDoc{readWrite},
      path{element},
      alternativePath{std::move(alternative)} {
    path.Normalize();
    readOnlyPath = path;
    alternativePath.Normalize();
}

WXmlCompositeNode::WXmlCompositeNode(WXmlCompositeNode const& other)
    : readOnlyDoc{other.readOnlyDoc},
      readWriteDoc{other.readWriteDoc},
      path{other.path},
      readOnlyPath{other.readOnlyPath},
      alternativePath{other.alternativePath} {}

WXmlCompositeNode::~WXmlCompositeNode() = default;

WXmlDoc& WXmlCompositeNode::ReadOnlyDoc() const noexcept {
    return readOnlyDoc;
}

WXmlDoc& WXmlCompositeNode::ReadWriteDoc() const noexcept {
    return readWriteDoc;
}

WXPath const& WXmlCompositeNode::XPath() const noexcept {
    return path;
}

WXmlNode const* WXmlCompositeNode::GetReadOnlyNode() const {
    if (!readOnlyInitialized) InitializeReadOnlyNode();
    return readOnlyNode.get();
}

WXmlNode* WXmlCompositeNode::GetReadWriteNode() const {
    if (!readWriteInitialized) InitializeReadWriteNode();
    return readWriteNode.get();
}

bool WXmlCompositeNode::Validate() {
    return GetReadOnlyNode() != nullptr || GetReadWriteNode() != nullptr;
}

void WXmlCompositeNode::InitializeReadOnlyNode() const {
    if (!readOnlyNode) readOnlyNode = find(readOnlyDoc, readOnlyPath);
    if (!readOnlyNode && !alternativePath.IsEmpty()) {
        readOnlyNode = find(readOnlyDoc, alternativePath);
        if (readOnlyNode) readOnlyPath = alternativePath;
    }
    readOnlyInitialized = true;
}

bool WXmlCompositeNode::IsCustomizable() const {
    return readOnlyNode->Attribute(L"@userCustomizable").GetBool(true);
}

// Searches again even after a search that found nothing, for the element may have been made since.
void WXmlCompositeNode::InitializeReadWriteNode() const {
    if (!readWriteNode) {
        WXmlNode const* const defaults = GetReadOnlyNode();
        bool const isForbidden = defaults != nullptr && !IsCustomizable();
        readWriteNode =
            isForbidden ? detachedCopy(readWriteDoc, *defaults) : find(readWriteDoc, path);
    }
    readWriteInitialized = true;
}

void WXmlCompositeNode::Prune() noexcept {
    quietly(false, [this] {
        if (WXmlNode* node = GetReadWriteNode()) {
            node->Prune();
            readWriteNode.reset();
        }
        return true;
    });
}

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
