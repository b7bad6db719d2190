#pragma once

#include <TibXml/platform/IUnknown.h>
#include <TibXml/platform/Variant.h>

class IXMLDOMDocument;
class IXMLDOMNamedNodeMap;
class IXMLDOMNodeList;

/// What a node is.
enum DOMNodeType : std::int32_t {
    NODE_INVALID = 0,
    NODE_ELEMENT = 1,
    NODE_ATTRIBUTE = 2,
    NODE_TEXT = 3,
    NODE_CDATA_SECTION = 4,
    NODE_PROCESSING_INSTRUCTION = 7,
    NODE_COMMENT = 8,
    NODE_DOCUMENT = 9,
};

inline constexpr IID IID_IXMLDOMNode{
    0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// A node of a document, of whatever kind.
///
/// For every call: a null out-pointer is `E_POINTER`; an out-pointer is null after any failure; a
/// miss is `S_FALSE` with null; a failing call changes nothing. Strings and objects that are handed
/// out belong to the caller. A node and its document are used by one thread at a time.
class IXMLDOMNode : public IUnknown {
public:
    /// The qualified name; "#text", "#comment", "#cdata-section" and "#document" for nodes without
    /// one, the target for a processing instruction, "xml" for the XML declaration.
    virtual HRESULT get_nodeName(BSTR* name) = 0;

    virtual HRESULT get_nodeType(DOMNodeType* type) = 0;

    /// The parent; `S_FALSE` for a detached node, an attribute and the document.
    virtual HRESULT get_parentNode(IXMLDOMNode** parent) = 0;

    /// A live list of the children, empty for a node that cannot have any.
    virtual HRESULT get_childNodes(IXMLDOMNodeList** children) = 0;

    /// The live map of an element's attributes; `S_FALSE` for any other node.
    virtual HRESULT get_attributes(IXMLDOMNamedNodeMap** attributes) = 0;

    /// Puts a node in front of a child of this node (an object variant), or last when the variant
    /// is empty, null or holds a null object; in front of itself changes nothing. A node that has a
    /// parent moves; one of another document comes over with its subtree, and everything that
    /// refers to it stays valid. The node is handed out if `result` is not null.
    ///
    /// `E_INVALIDARG` for a null or foreign object and a reference that is not a child of this
    /// node. `E_FAIL`, with nothing changed, for what cannot be saved and loaded again: attributes
    /// and documents as children, children of anything but elements and documents, a second element
    /// or text beside the root, a node inside itself, anything in front of the XML declaration, a
    /// prefix without namespace that is not declared here.
    virtual HRESULT insertBefore(IXMLDOMNode* node, VARIANT reference, IXMLDOMNode** result) = 0;

    /// Detaches a child and hands it out if `result` is not null; it and its subtree stay usable.
    /// `E_INVALIDARG` for what is not a child of this node.
    virtual HRESULT removeChild(IXMLDOMNode* child, IXMLDOMNode** result) = 0;

    /// As `insertBefore` without a reference.
    virtual HRESULT appendChild(IXMLDOMNode* node, IXMLDOMNode** result) = 0;

    /// The document that the node belongs to, also while it is detached; `S_FALSE` for the document
    /// itself.
    virtual HRESULT get_ownerDocument(IXMLDOMDocument** document) = 0;

    /// A detached copy in the same document, with the attributes, and with the descendants if
    /// `deep`. Of a document, a new document with the same settings.
    virtual HRESULT cloneNode(VARIANT_BOOL deep, IXMLDOMNode** copy) = 0;

    /// The text of the node and its descendants; of an attribute its value; of a document that of
    /// its root.
    virtual HRESULT get_text(BSTR* text) = 0;

    /// Replaces an element's children by one text node (none for the empty text) and removes its
    /// binary annotation, or the characters of any other node. `E_FAIL` for the document and its
    /// XML declaration, and for a text that cannot stand where it would have to be written ("--" in
    /// a comment, a namespace that another name relies on). `E_INVALIDARG` for characters that XML
    /// cannot hold.
    virtual HRESULT put_text(BSTR text) = 0;

    /// An array of bytes for an element that is annotated as "bin.base64", else the text. `E_FAIL`
    /// when the text is not base64.
    virtual HRESULT get_nodeTypedValue(VARIANT* value) = 0;

    /// Takes an array of bytes for an annotated element and keeps the annotation, or a string,
    /// which sets the text. `E_FAIL` for bytes elsewhere, `E_INVALIDARG` for any other kind.
    virtual HRESULT put_nodeTypedValue(VARIANT value) = 0;

    /// The annotation as a string; `S_FALSE` and a null variant without one.
    virtual HRESULT get_dataType(VARIANT* name) = 0;

    /// Annotates an element; "bin.base64" is the only type, in any case of letters. `E_FAIL` for
    /// other names and other nodes.
    virtual HRESULT put_dataType(BSTR name) = 0;

    /// The markup of the node and its subtree.
    virtual HRESULT get_xml(BSTR* markup) = 0;

    /// Transforms the document, or an element with its subtree as a document of its own, by the
    /// XSLT 1.0 stylesheet that another document holds. The result is written as xsl:output says:
    /// as XML, HTML or text. Where its kind names an encoding, that is UTF-16.
    ///
    /// `E_FAIL`, with the place in the error information, when the stylesheet does not compile,
    /// when it fails or ends itself by a message. `E_INVALIDARG` for anything but documents and
    /// elements of this engine. Messages of xsl:message that do not end it are the error
    /// information of a call that succeeds, a line each.
    virtual HRESULT transformNode(IXMLDOMNode* stylesheet, BSTR* result) = 0;

    /// All nodes that an XPath expression selects from this node, as a snapshot in document order;
    /// an empty list when there are none. `E_FAIL` for an expression that does not parse, uses an
    /// undeclared prefix or gives no nodes.
    virtual HRESULT selectNodes(BSTR expression, IXMLDOMNodeList** nodes) = 0;

    /// The first of them; `S_FALSE` when there are none.
    virtual HRESULT selectSingleNode(BSTR expression, IXMLDOMNode** node) = 0;

    /// The same with a tree as the result. It replaces the content of `output`, an object variant
    /// with a document, which may be this one: it stays the same object, and nodes taken from it
    /// before stay usable. A result that is not a document (more than one element, or text beside
    /// the root) is `E_FAIL`. `output` is unchanged after a failure.
    virtual HRESULT transformNodeToObject(IXMLDOMNode* stylesheet, VARIANT output) = 0;

protected:
    ~IXMLDOMNode() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMNode> : InterfaceIs<IID_IXMLDOMNode, IUnknown> {};
