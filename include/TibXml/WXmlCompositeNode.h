#pragma once

#include <TibXml/WXPath.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

#include <memory>

class WXmlDoc;
class WXmlNode;
class WXmlNodeList;

/// One element in two documents: a read-only one that holds defaults, and a read-write one that
/// holds what a user changed. Both have it at the same path, counted from their root elements.
/// Reading looks at the read-write document first and falls back to the defaults; writing goes to
/// the read-write document alone, where the element is made when it is needed. The read-only
/// document is never changed.
///
/// A default element with the attribute `userCustomizable="false"` forbids changes: what is written
/// then goes to a copy that belongs to this object, and is lost with it.
///
/// Each document is searched once, when it is first needed, and what was found is kept: an element
/// that other code removes afterwards is still used. The documents have to live, and to keep
/// their content, as long as this object is used.
///
/// Threads: as its documents, which belong to one thread at a time.
class TIBXML_API WXmlCompositeNode {
public:
    /// The documents are referred to, not copied. The path is normalised (`WXPath::Normalize`).
    WXmlCompositeNode(WXmlDoc& readOnly, WXmlDoc& readWrite, WXPath const& element);

    /// With a second path at which the read-only document is searched when it has nothing at the
    /// first.
    WXmlCompositeNode(WXmlDoc& readOnly, WXmlDoc& readWrite, WXPath const& element,
                      WXPath alternative);

    /// The copy refers to the same documents and searches them itself.
    WXmlCompositeNode(WXmlCompositeNode const& other);
    WXmlCompositeNode& operator=(WXmlCompositeNode const&) = delete;
    ~WXmlCompositeNode();

    WXmlDoc& ReadOnlyDoc() const noexcept;
    WXmlDoc& ReadWriteDoc() const noexcept;
    WXPath const& XPath() const noexcept;

    /// The element in the one document or the other, null where it is not; it belongs to this
    /// object. The read-write one may be the copy described above. Throw what searching a document
    /// without content throws: the integer 1 (an `int`), or `_com_error`.
    WXmlNode const* GetReadOnlyNode() const;
    WXmlNode* GetReadWriteNode() const;

    /// Whether either document has the element. Throws as the two above.
    bool Validate();

    /// Access to an attribute ("@" first) for reading: in the read-write document if it is there
    /// and `defaultsOnly` is false, else in the defaults. An accessor without target when neither
    /// has the element or anything fails. Never throws.
    WXmlValueAccessor const ReadableAttribute(CString const& name,
                                              bool defaultsOnly) const noexcept;

    /// Access to an attribute for writing into the read-write document, where the element is made
    /// now if it is missing. An accessor without target when that fails: its setters throw
    /// `WXmlValueTypeNotFoundException`. Never throws itself. A path that cannot be evaluated is
    /// one where nothing is found, so each use by another object makes another element.
    WXmlValueAccessor WriteableAttribute(CString const& name) const noexcept;

    /// The name of the element; the empty string when there is none or anything fails.
    CString GetName() const noexcept;

    /// Whether a path, counted from the element, selects something in the read-write document or
    /// else in the defaults, and what. `GetNodes` asks the defaults only if the read-write document
    /// does not have the element at all or `fallBack` is true. False when anything fails.
    bool DoesNodeExist(WXPath const& wanted) const noexcept;
    bool GetNode(WXPath const& wanted, WXmlNode& node) const noexcept;
    bool GetNodes(WXPath const& wanted, WXmlNodeList& nodes, bool fallBack) const noexcept;

    /// Takes the element out of the read-write document, so that the defaults show again. Nothing
    /// happens when it is not there.
    void Prune() noexcept;

    /// Makes sure that the read-write document has the element: an empty one, or with
    /// `copyDefaults` a copy of the default element, or with `copyParent` too a copy of that one's
    /// parent. Whether there is one now; false when anything fails.
    bool CreateReadWriteNode(bool copyDefaults, bool copyParent) const noexcept;

private:
    void InitializeReadOnlyNode() const;
    void InitializeReadWriteNode() const;
    bool IsCustomizable() const;
    bool CreateCopy(bool copyParent) const;
    bool Clone(WXmlDoc& document, WXmlNode const& node, WXPath const& target) const;
    void CreateXPath(WXmlNode& node, WXPath const& steps) const;

    // What the searches found; const functions fill them.
    mutable std::unique_ptr<WXmlNode> readOnlyNode;
    mutable std::unique_ptr<WXmlNode> readWriteNode;
    mutable bool readOnlyInitialized = false;
    mutable bool readWriteInitialized = false;

    WXmlDoc& readOnlyDoc;
    WXmlDoc& readWriteDoc;
    WXPath path;
    mutable WXPath readOnlyPath; // where the read-only document has the element
    WXPath alternativePath;
};
