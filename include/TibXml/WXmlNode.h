#pragma once

#include <TibXml/EnginePtr.h>
#include <TibXml/WXPath.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

#include <cstddef>
#include <string_view>
#include <vector>

class WXmlDoc;
class WXmlNodeList;
class WXmlValueAccessor;

namespace tibxml::engine {
struct NodeAccess;
} // namespace tibxml::engine

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

    /// The node that a path selects from this one. When there is none it is made, with what is
    /// missing on the way to it: a step is an element, or an attribute with an empty value when it
    /// begins with "@". Predicates are followed as far as they can be: `[@kind='x']` becomes an
    /// attribute (its value ends at a blank or an apostrophe), `[3]` adds elements until there are
    /// three; others are passed over. An empty handle when anything fails; what was made by then
    /// stays.
    WXmlNode EnsureDescendantExists(WXPath const& path) noexcept;

    /// A new element, the last child of this node. The name may carry predicates `[@id='3']`, which
    /// become attributes: the value is what stands between the first and the last character after
    /// the "=". A null namespace is none. Throws `_com_error` for a name that is not valid, for a
    /// node that cannot have it, and with `E_POINTER` for the document itself; an element that was
    /// made stays when one of its attributes fails.
    WXmlNode CreateChild(wchar_t const* name, wchar_t const* namespaceURI);

    /// Takes the node out of its tree; it stays usable. Nothing happens to attributes, to nodes
    /// without a parent and to empty handles.
    void Prune() noexcept;

    /// Prunes every node that the last step of a path selects from this node: only the last step
    /// counts. Nothing happens for a bad path and an empty handle.
    void DeleteChild(WXPath const& path);

    /// Prunes every node that a path selects; attributes stay. Nothing happens for a bad path and
    /// an empty handle.
    void DeleteNodes(WXPath const& path);

    /// Moves this node to another parent, of any document: to a position among its children, which
    /// counts from 0, last when there are not that many and for -1; or in front of one of them,
    /// last when that handle is empty. An attribute goes among the parent's attributes, in the
    /// place of one with its name, in the first form only. What the engine refuses changes nothing
    /// and is not reported.
    void Graft(WXmlNode& parent, int index) noexcept;
    void Graft(WXmlNode& parent, WXmlNode const& before) noexcept;

    /// A copy in the same document, without a parent: the node with its attributes, and with all
    /// that is in it when `deep`. An empty handle for an empty handle.
    WXmlNode Clone(bool deep) const;

    /// Copies an attribute ("@" first) from another node. A value equal to the default, which also
    /// stands for a missing attribute there, clears the attribute here if there is one, so that
    /// what is not written is the default. Throws as the value accessors do.
    void CopyAttributeFrom(WXmlNode source, wchar_t const* name, wchar_t const* defaultValue);

private:
    friend struct tibxml::engine::NodeAccess;

    bool Validate(bool flag) const;
    bool IsAttributeNode() const noexcept;
    WXmlNodePtr const& Slot() const;
    WXmlNodePtr Select(WXPath const& path) const;
    WXmlNode EnsureSteps(std::wstring_view path);
    WXmlNode CreateStep(std::wstring_view step);
    WXmlNode CreateFromPredicates(std::wstring_view step, std::size_t bracket);

    // Const functions give a handle that was moved from a place again.
    mutable EngineSlot<WXmlNodePtr> slot;
};
