#pragma once

#include <TibXml/EnginePtr.h>
#include <TibXml/WXPath.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

#include <memory>
#include <vector>

class WXmlDoc;
class WXmlNodeList;
class WXmlValueAccessor;

/// A handle on one node of a document: an element, an attribute, a text or any other kind. Copies
/// refer to the very same node. A node keeps its document alive, and it stays usable after it was
/// taken out of its tree.
///
/// A handle that refers to nothing is *empty*: a new one is, and so is the result of some of the
/// look-ups below. A handle that was moved from behaves like an empty one from its next use on; it
/// must not be copied before, though, and in comparisons it equals only another such handle.
///
/// Paths are XPath location paths. They are evaluated from this node, with the prefixes that were
/// given to the document by `WXmlDoc::SetSelectionNamespaces`; every call asks the document again.
///
/// What fails throws `_com_error` unless the function says otherwise: with `E_POINTER` when the
/// handle is empty, with `E_OUTOFMEMORY` when there is no memory for a result, and otherwise with
/// the engine's own code and, in `Description()`, its explanation, such as what is wrong with a
/// path and where. Functions that answer `bool` or a count never throw.
///
/// Threads: a node and its whole document belong to one thread at a time.
class TIBXML_API WXmlNode {
public:
    /// An empty handle.
    WXmlNode();

    /// A handle on an engine node, which gets one more reference; an empty pointer makes an empty
    /// handle.
    WXmlNode(WXmlNodePtr const& node);

    WXmlNode(WXmlNode const& other);
    WXmlNode(WXmlNode&& other) noexcept;
    WXmlNode& operator=(WXmlNode const& other);
    WXmlNode& operator=(WXmlNode&& other) noexcept;
    void Swap(WXmlNode& other) noexcept;
    ~WXmlNode();

    /// Whether both handles refer to one and the same node of a document, or both to nothing. Nodes
    /// that merely look the same are different.
    bool operator==(WXmlNode const& other) const noexcept;
    bool operator!=(WXmlNode const& other) const noexcept;

    /// Whether the handle refers to a node.
    bool IsValid() const noexcept;

    /// The qualified name, with its prefix if it has one; "#text", "#comment", "#document" and the
    /// like for nodes without a name.
    CString GetName() const;

    /// The markup of the node and all that is in it.
    CString GetXML() const;

    /// The same, but the empty string for an empty handle.
    CString SaveToString() const;

    /// Access to the text of this node, or to the attribute that `name` selects, "@" first: "@id".
    /// Nothing is looked up before the accessor is used, so an empty handle is fine here, and an
    /// attribute need not be there. The accessor keeps the node.
    WXmlValueAccessor Value() const;
    WXmlValueAccessor Attribute(wchar_t const* name) const;

    /// Makes `names` the qualified names of the attributes, in their order, namespace declarations
    /// included. Throws `_com_error` with `E_POINTER`, `names` being empty, for a node that is not
    /// an element.
    void GetAttributes(std::vector<CString>& names) const;

    /// Whether a path selects anything. False, too, for an empty handle and a bad path.
    bool DoesNodeExist(WXPath const& path) const noexcept;

    /// Makes `node` the first node, in document order, that a path selects. False, with `node` left
    /// as it was, when there is none, for an empty handle and for a bad path.
    bool GetNode(WXPath const& path, WXmlNode& node) const noexcept;

    /// The first node that a path selects. Throws the integer 0 (an `int`) when there is none.
    WXmlNode GetNode(WXPath const& path) const;

    /// The first node that a path selects, an empty handle when there is none.
    WXmlNode GetNodeNoThrow(WXPath const& path) const;

    /// Makes `nodes` all nodes that a path selects, in document order; whether there are any. When
    /// there are none, `nodes` is an empty list. False, with `nodes` left as it was, for an empty
    /// handle and a bad path.
    bool GetNodes(WXPath const& path, WXmlNodeList& nodes) const noexcept;

    /// All nodes that a path selects, possibly none. Throws the integer 0 (an `int`) when the
    /// engine gives no list at all.
    WXmlNodeList GetNodes(WXPath const& path) const;

    /// The same, with an empty list when the engine gives none; the flag has no meaning. Not for
    /// handles that were moved from.
    WXmlNodeList GetNodes(WXPath const& path, bool flag) const;

    /// The parent; an empty handle for a root, for a node outside of a tree and for an attribute,
    /// whose element is not its parent.
    WXmlNode GetParentNode() const;

    /// The document that the node belongs to, also while it is not in the tree; a document without
    /// content for the node that is the document itself.
    WXmlDoc GetOwnerDocument();
    WXmlDoc GetOwnerDocument() const;

    /// Whether there are child nodes, and how many: elements, texts, comments, whatever there is.
    /// False and 0 for an empty handle.
    bool HasChildren() const noexcept;
    int GetNumChildren() const noexcept;

private:
    bool Validate(bool flag) const;
    bool IsAttributeNode() const noexcept;
    WXmlNodePtr const& Slot() const;
    WXmlNodePtr Select(WXPath const& path) const;

    // A place of its own on the heap, so that a handle that was moved from differs from an empty
    // one: it has none. Const functions put one in its place.
    mutable std::unique_ptr<WXmlNodePtr> slot;
};
