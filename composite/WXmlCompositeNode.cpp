#include <TibXml/WXmlCompositeNode.h>

#include <TibXml/EngineCall.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>

#include <utility>

using tibxml::engine::quietly;

namespace {

/// The element at a path, null when there is none.
std::unique_ptr<WXmlNode> find(WXmlDoc const& document, WXPath const& path) {
    auto node = std::make_unique<WXmlNode>();
    return document.GetRootNode().GetNode(path, *node) ? std::move(node) : nullptr;
}

/// A copy of a node that belongs to a document without being in its tree: below an element that
/// nobody else knows.
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
