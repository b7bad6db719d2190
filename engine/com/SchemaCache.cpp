#include "SchemaCache.h"

#include <algorithm>
#include <utility>

#include <reader/LocalFile.h>

#include "Failure.h"
#include "Sources.h"
#include "Text.h"

namespace tibxml::com {

namespace {

ComPtr<DocumentObject> loaded(VARIANT const& path) {
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): guarded() handles it
    auto document = ComPtr<DocumentObject>::adopt(new DocumentObject);
    document->loadSchema(path);
    return document;
}

// The document that a caller means by an object or a path.
ComPtr<DocumentObject> documentIn(VARIANT const& value) {
    if (value.vt == VT_BSTR) return loaded(value);
    ComPtr<NodeHandle> const handle = handleOf(objectIn(value));
    if (!handle->node()->is(tree::NodeKind::document))
        throw Failure{E_INVALIDARG, "the object is not a document"};
    return ComPtr<DocumentObject>{&handle->owner()};
}

void requireSchema(tree::Document const& document, std::string_view namespaceUri) {
    if (!validation::isSchema(document)) throw Failure{E_FAIL, "the document is not a schema"};
    std::string_view const target = validation::targetNamespace(document);
    if (target == namespaceUri) return;
    throw Failure{E_FAIL, "the schema is for the namespace '" + std::string{target} +
                              "', not for '" + std::string{namespaceUri} + "'"};
}

std::string utf8Of(BSTR text) {
    XmlText const utf8{viewOf(text)};
    requireValid(utf8); // no namespace has other characters
    return std::string{utf8.view()};
}

} // namespace

HRESULT SchemaCache::create(REFIID iid, void** object) noexcept {
    return guarded(IID_IUnknown, [&] {
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): guarded() handles it
        auto const cache = ComPtr<SchemaCache>::adopt(new SchemaCache);
        return cache->QueryInterface(iid, object);
    });
}

ComPtr<SchemaCache> SchemaCache::behind(IUnknown* object) {
    void* found = nullptr;
    if (object == nullptr || object->QueryInterface(IID_SchemaCacheHandle, &found) != S_OK)
        throw Failure{E_INVALIDARG, "the object is not a schema collection of this engine"};
    auto const handle = ComPtr<SchemaCacheHandle>::adopt(static_cast<SchemaCacheHandle*>(found));
    return ComPtr<SchemaCache>{&handle->cache()};
}

SchemaCache::Entries::const_iterator
SchemaCache::find(std::string_view namespaceUri) const noexcept {
    return std::find_if(entries_.begin(), entries_.end(),
                        [&](Entry const& entry) { return entry.namespaceUri == namespaceUri; });
}

std::shared_ptr<validation::Schema const>
SchemaCache::schemaFor(std::string_view namespaceUri) const {
    auto const found = find(namespaceUri);
    return found != entries_.end() ? found->schema : nullptr;
}

SchemaCache::Entry SchemaCache::compiled(std::string namespaceUri, DocumentObject& document) const {
    requireSchema(document.storage(), namespaceUri);
    validation::SchemaSource const source{
        &document.storage(), reader::canonicalPath(document.loadedPath()), document.isAsLoaded()};
    std::vector<validation::SchemaSource> known;
    for (Entry const& entry : entries_) {
        if (entry.namespaceUri != namespaceUri)
            known.push_back({&entry.source->storage(), entry.path, false});
    }
    auto schema = validation::Schema::compile(source, known);
    return {std::move(namespaceUri), std::move(schema),
            ComPtr<DocumentObject>::adopt(document.clone(true)), source.path};
}

void SchemaCache::put(Entries& entries, Entry entry) {
    auto const same = std::find_if(entries.begin(), entries.end(), [&](Entry const& other) {
        return other.namespaceUri == entry.namespaceUri;
    });
    if (same != entries.end()) {
        *same = std::move(entry);
    } else {
        entries.push_back(std::move(entry));
    }
}

HRESULT SchemaCache::add(BSTR namespaceURI, VARIANT schema) noexcept {
    return guarded(IID_IXMLDOMSchemaCollection, [&] {
        std::string namespaceUri = utf8Of(namespaceURI);
        auto const document = documentIn(schema);
        put(entries_, compiled(std::move(namespaceUri), *document));
        return S_OK;
    });
}

HRESULT SchemaCache::get(BSTR namespaceURI, IXMLDOMNode** schema) noexcept {
    return replyObject(IID_IXMLDOMSchemaCollection, schema, [&]() -> IXMLDOMNode* {
        auto const found = find(utf8Of(namespaceURI));
        if (found == entries_.end()) return nullptr;
        DocumentObject& source = *found->source;
        return wrapBeside(source, source.storage().documentElement());
    });
}

HRESULT SchemaCache::remove(BSTR namespaceURI) noexcept {
    return guarded(IID_IXMLDOMSchemaCollection, [&] {
        auto const found = find(utf8Of(namespaceURI));
        if (found == entries_.end()) return S_FALSE;
        entries_.erase(found);
        return S_OK;
    });
}

HRESULT SchemaCache::get_length(LONG* length) noexcept {
    return reply(IID_IXMLDOMSchemaCollection, length,
                 [&] { return static_cast<LONG>(entries_.size()); });
}

HRESULT SchemaCache::get_namespaceURI(LONG index, BSTR* namespaceURI) noexcept {
    if (namespaceURI == nullptr) return E_POINTER;
    *namespaceURI = nullptr;
    if (index < 0 || static_cast<std::size_t>(index) >= entries_.size()) return S_FALSE;
    return reply(IID_IXMLDOMSchemaCollection, namespaceURI, [&] {
        return toBstr(std::string_view{entries_[static_cast<std::size_t>(index)].namespaceUri});
    });
}

HRESULT SchemaCache::addCollection(IXMLDOMSchemaCollection* others) noexcept {
    return guarded(IID_IXMLDOMSchemaCollection, [&] {
        auto const other = behind(others);
        Entries all = entries_;
        for (Entry const& entry : other->entries_)
            put(all, entry);
        entries_ = std::move(all);
        return S_OK;
    });
}

HRESULT SchemaCache::validate() noexcept {
    return S_OK;
}

HRESULT SchemaCache::put_validateOnLoad(VARIANT_BOOL validates) noexcept {
    validatesOnLoad_ = validates != VARIANT_FALSE;
    return S_OK;
}

HRESULT SchemaCache::get_validateOnLoad(VARIANT_BOOL* validates) noexcept {
    return reply(IID_IXMLDOMSchemaCollection2, validates,
                 [&] { return validatesOnLoad_ ? VARIANT_TRUE : VARIANT_FALSE; });
}

} // namespace tibxml::com
