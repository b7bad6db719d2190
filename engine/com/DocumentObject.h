// The engine object for a document: its content, its settings, loading and saving.
#pragma once

#include <span>
#include <string>
#include <utility>
#include <vector>

#include <TibXml/engine/IXMLDOMDocument.h>

#include <com/Measures.h>
#include <query/Namespaces.h>
#include <reader/Reader.h>
#include <transform/Stylesheet.h>

#include "ComPtr.h"
#include "NodeMemory.h"
#include "NodeObject.h"

namespace tibxml::validation {
struct Mismatch;
} // namespace tibxml::validation

namespace tibxml::com {

class SchemaCache;

class DocumentObject final : public NodeObject<IXMLDOMDocument3> {
public:
    // Throws std::bad_alloc.
    DocumentObject();

    // What CoCreateInstance calls.
    static HRESULT create(REFIID iid, void** object) noexcept;

    NodeMemory& nodeObjects() noexcept { return nodeObjects_; }

    // The prefixes that queries from this document's nodes may use.
    query::Namespaces const& selectionNamespaces() const noexcept { return namespaces_; }

    // The path that the content was loaded from; empty when it is from no file.
    std::string const& loadedPath() const noexcept { return origin_.path; }

    // The absolute path of that file, which relative references in the content start from.
    std::string const& location() const noexcept { return origin_.location; }

    // Whether the content has not changed since it was loaded, with success, from that path.
    bool isAsLoaded() const noexcept;

    // Loads from a path. Throws Failure (E_FAIL) when that fails, std::bad_alloc.
    void loadSchema(VARIANT const& path);

    HRESULT get_documentElement(IXMLDOMElement** element) noexcept override;
    HRESULT putref_documentElement(IXMLDOMElement* element) noexcept override;
    HRESULT createNode(VARIANT type, BSTR name, BSTR namespaceURI,
                       IXMLDOMNode** node) noexcept override;
    HRESULT createAttribute(BSTR name, IXMLDOMAttribute** attribute) noexcept override;
    HRESULT load(VARIANT source, VARIANT_BOOL* isSuccessful) noexcept override;
    HRESULT loadXML(BSTR text, VARIANT_BOOL* isSuccessful) noexcept override;
    HRESULT save(VARIANT destination) noexcept override;
    HRESULT get_parseError(IXMLDOMParseError** error) noexcept override;
    HRESULT get_preserveWhiteSpace(VARIANT_BOOL* preserves) noexcept override;
    HRESULT put_preserveWhiteSpace(VARIANT_BOOL preserves) noexcept override;
    HRESULT get_schemas(VARIANT* schemas) noexcept override;
    HRESULT putref_schemas(VARIANT schemas) noexcept override;
    HRESULT validate(IXMLDOMParseError** error) noexcept override;
    HRESULT setProperty(BSTR name, VARIANT value) noexcept override;
    HRESULT getProperty(BSTR name, VARIANT* value) noexcept override;
    HRESULT importNode(IXMLDOMNode* node, VARIANT_BOOL deep, IXMLDOMNode** copy) noexcept override;

    // Replaces the content by a tree that nothing else refers to; the document stays the same
    // object, and the old nodes live on as far as handles refer to them. Throws std::bad_alloc
    // before anything changed.
    void replaceContent(tree::DocumentRef const& fresh);

    // This document as a stylesheet: compiled anew only after it has changed. Throws what compiling
    // throws.
    std::shared_ptr<transform::Stylesheet const> asStylesheet();

    // What stylesheets may read: whether "AllowDocumentFunction" is set.
    bool allowsDocumentFunction() const noexcept { return allowDocumentFunction_; }

    // A new document with the same settings and, when deep, a copy of the content; one reference
    // for the caller. Throws std::bad_alloc.
    DocumentObject* clone(bool deep);

private:
    ~DocumentObject() override;

    // Replaces the content by an empty tree, with all that was known about the old one. Throws
    // std::bad_alloc before anything changed.
    void startAfresh();

    // Where the content is from, if from a file.
    struct Origin {
        std::string path;     // as it was given
        std::string location; // the absolute path of the file; empty when there is none
    };

    // Reads new content: open(origin, error, read) opens the input and returns what `read` does
    // with it. Never leaves half of a document.
    template <class Open>
    HRESULT loadBy(VARIANT_BOOL* isSuccessful, Open open) noexcept;

    void setNamespaces(VARIANT const& value);
    std::vector<reader::ReadError> validationErrors();
    void findLines(std::span<validation::Mismatch> mismatches);

    LiveObject live_;
    NodeMemory nodeObjects_;
    query::Namespaces namespaces_;
    reader::ReadError parseError_;
    Origin origin_;
    std::uint64_t loadedSerial_ = 0; // of the content as it was loaded
    std::uint64_t loadedVersion_ = 0;
    ComPtr<SchemaCache> schemas_;
    std::shared_ptr<transform::Stylesheet const> stylesheet_;
    std::uint64_t stylesheetSerial_ = 0; // of the tree that it was compiled from
    std::uint64_t stylesheetVersion_ = 0;
    bool newParser_ = false;
    bool allowDocumentFunction_ = false;
};

inline void NodeHandle::setOwner(ComPtr<DocumentObject> owner) noexcept {
    owner_ = std::move(owner);
}

inline ComPtr<DocumentObject> NodeHandle::disown() noexcept {
    return std::move(owner_);
}

} // namespace tibxml::com
