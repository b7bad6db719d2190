#pragma once

#include <TibXml/EnginePtr.h>
#include <TibXml/WXPath.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>
#include <TibXml/platform/Stream.h>

class WXmlNode;
class WXmlNodeList;

namespace TibUtils {
class Stream;
}

/// What a backup keeps. Deleting it gives up the backup and all that it takes up.
class TIBXML_API WDataBackup {
public:
    WDataBackup() = default;
    WDataBackup(WDataBackup const&) = delete;
    WDataBackup& operator=(WDataBackup const&) = delete;
    virtual ~WDataBackup();
};

/// Something whose content can be put aside and brought back.
class TIBXML_API IBackupRestorable {
public:
    /// A record of the content as it is now, which the caller deletes; null when it failed.
    virtual WDataBackup* Backup() = 0;

    /// Brings back the content that a record of the same kind of object keeps. The record stays as
    /// it is and can be used again.
    virtual void Restore(WDataBackup const* backup) = 0;

protected:
    IBackupRestorable() = default;
    IBackupRestorable(IBackupRestorable const&) = default;
    IBackupRestorable& operator=(IBackupRestorable const&) = default;
    ~IBackupRestorable() = default;
};

/// A handle on one document. Copies share the document and see each other's changes. Loading,
/// however, always makes a new document for the loading handle alone: copies made before keep the
/// old one.
///
/// A handle has no document at first (*empty*), and may have one without a root element, which is
/// what a failed load leaves: the old content is gone then.
///
/// Loading and saving answer whether they worked and never throw. The other functions throw
/// `_com_error` with the engine's code and, in `Description()`, its explanation, unless they say
/// otherwise. Why a load failed is what the engine knows: see `EngineDocument`.
///
/// Threads: a document and all that was taken from it belong to one thread at a time. Different
/// documents may be used on different threads at the same time. COM has to be initialised on the
/// thread where the platform asks for that.
class TIBXML_API WXmlDoc : public IBackupRestorable {
public:
    /// An empty handle. With `preserveWhiteSpace`, loading keeps text that is nothing but white
    /// space between the elements; without, such text is dropped.
    WXmlDoc(bool preserveWhiteSpace = false);

    /// A handle on a document of the engine, which gets one more reference; none makes an empty
    /// handle.
    WXmlDoc(WXmlDocPtr const& document);

    /// No pointer is a flag: neither a path nor an engine's document makes a handle by itself.
    template <class Pointed>
    WXmlDoc(Pointed*) = delete;
    template <class Interface>
    WXmlDoc(EnginePtr<Interface> const&) = delete;

    WXmlDoc(WXmlDoc const& other);

    /// What was moved from can only be assigned to, destroyed or asked for its `EngineDocument`.
    WXmlDoc(WXmlDoc&& other) noexcept;
    WXmlDoc& operator=(WXmlDoc const& other);
    WXmlDoc& operator=(WXmlDoc&& other) noexcept;
    void Swap(WXmlDoc& other) noexcept;

    /// Writes the content to a temporary file that the record owns. What cannot be written is not
    /// reported: an empty handle makes a record of an empty file. Null when memory is exhausted.
    WDataBackup* Backup() override;

    /// Loads what a record made by `Backup` keeps; other records, and null, are not allowed. Like
    /// every load it may fail, and then leaves a document without a root.
    void Restore(WDataBackup const* backup) override;

    virtual ~WXmlDoc();

    /// A new handle on what was loaded; `IsLoaded` says whether that worked.
    static WXmlDoc CreateFromString(wchar_t const* text);
    static WXmlDoc CreateFromFile(wchar_t const* path);
    static WXmlDoc CreateFromStream(IStream* stream);

    /// Makes the handle empty.
    void ReleaseDocument() noexcept;

    /// The engine's own document, for what the handle does not offer: why a load failed and where
    /// (`IXMLDOMDocument::get_parseError`), validation by several schemas, compiled stylesheets. It
    /// is the document that this handle and its copies share, so that each sees what the others
    /// change, and it stays alive for as long as the pointer is kept. The next load of this handle
    /// makes another one.
    ///
    /// Empty when the handle is, and for one that was moved from; never throws.
    WXmlDocPtr EngineDocument() const noexcept;

    /// Whether both handles have the same document, or both have none. Content does not count.
    bool operator==(WXmlDoc const& other) const;
    bool operator!=(WXmlDoc const& other) const;

    /// Loads a file. False when it cannot be read or is not well-formed XML; the handle's document
    /// then has no root. A null path is a failed load.
    bool Load(wchar_t const* path) noexcept;

    /// Loads from a stream, from where it stands to its end. Null is the one case that leaves the
    /// old content alone: it is just false.
    bool Load(IStream* stream) noexcept;
    bool Load(TibUtils::Stream stream) noexcept;

    /// Loads a complete XML document from a string. What its declaration says about the encoding
    /// does not count.
    bool LoadFromString(wchar_t const* text) noexcept;

    /// Writes the document to a file, which is replaced as a whole or not at all, in the encoding
    /// that its declaration names. False when that fails or the handle is empty.
    bool Save(wchar_t const* path) const noexcept;

    /// Writes the document to a stream, where that stands; null is false.
    bool Save(IStream* stream) const noexcept;

    /// The text of the whole document. `_com_error` with `E_POINTER` when the handle is empty.
    CString SaveToString() const;

    /// Whether there is a document and it has a root element.
    bool IsLoaded() const;

    /// The root element; an empty node when the document has none. Throws the integer 1 (an `int`)
    /// when the handle is empty.
    WXmlNode GetRootNode() const;
    WXmlNode GetRootNode();

    /// A new element of this document that is not in its tree yet. A null or empty namespace means
    /// none. Throws the integer 1 (an `int`) when the handle is empty, and `_com_error` for a name
    /// that XML does not allow.
    WXmlNode CreateNode(wchar_t const* name, wchar_t const* namespaceURI) const;

    /// The prefixes that paths may use from now on, as declarations separated by white space:
    /// `xmlns:p='urn:x' xmlns:q='urn:y'`. They belong to the document of the moment: the next load
    /// drops them. Does nothing when the handle is empty; throws `_com_error` for anything else
    /// than such declarations.
    void SetSelectionNamespaces(wchar_t const* namespaces);

    /// Makes `nodes` all nodes that a path selects from the document, in document order; whether
    /// there are any. When there are none, `nodes` is an empty list. False, with `nodes` left as it
    /// was, when the handle is empty and for a bad path.
    bool GetNodes(WXPath const& path, WXmlNodeList& nodes) const noexcept;

    /// The same as a list; empty, too, when the handle is empty and for a bad path.
    WXmlNodeList GetNodes(WXPath const& path) const;

    /// Whether the document, as it is now, is valid by a schema in a file: XML Schema (XSD 1.0)
    /// without a target namespace. What the schema includes and imports is read from local files,
    /// relative to its own path. The document is not changed.
    ///
    /// False when it is not valid or has no root element, when the handle is empty, and when the
    /// schema cannot be loaded, has a target namespace or does not compile; never throws. Why a
    /// document is not valid, and schemas for namespaces, are what the engine offers: see
    /// `IXMLDOMDocument2::validate`. The document keeps the schema until the next one or the next
    /// load, so that the engine can be asked once more.
    bool Validate(wchar_t const* schemaPath) noexcept;

    /// Replaces the content by what an XSLT 1.0 stylesheet makes of it. The document stays the
    /// same: handles that share it see the new content, and nodes taken before stay usable. The
    /// stylesheet may be this document, and is compiled once for as long as it is not changed.
    ///
    /// The stylesheet keeps the property "AllowDocumentFunction", which lets `document()` read
    /// local files, relative to the file that the stylesheet was loaded from. Load stylesheets that
    /// make text with blanks (`<xsl:text> </xsl:text>`) by a handle with `preserveWhiteSpace`.
    ///
    /// False, with the content as it was, when either handle is empty, when the stylesheet does not
    /// compile, fails or ends itself by a message, and when its result is not a document: more than
    /// one element, or text beside the root. A result without any element is a result.
    bool ApplyXSLT(WXmlDoc& stylesheet) noexcept;

    /// A new document with a copy of the root element and all in it, and nothing else: no comments
    /// and processing instructions beside the root, no prefixes for paths, and without
    /// `preserveWhiteSpace`. An empty handle when this one is empty or its document has no root,
    /// and when it fails.
    WXmlDoc Clone() const;

private:
    bool CreateDocument() noexcept;
    WXmlDocPtr const& Document() const noexcept;

    EngineSlot<WXmlDocPtr> slot;
    bool preserveWhiteSpace;
};
