// The engine object for a collection of schemas.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include <com/Measures.h>
#include <validation/Schema.h>

#include "ComPtr.h"
#include "DocumentObject.h"

inline constexpr IID IID_SchemaCacheHandle{
    0x2A7F4E16, 0x51C3, 0x4D0B, {0x9B, 0x64, 0xE8, 0x07, 0x3D, 0x95, 0xA2, 0xF7}};

namespace tibxml::com {

class SchemaCache;

// An interface of every schema collection of this engine, and of no other.
class SchemaCacheHandle : public IUnknown {
public:
    virtual SchemaCache& cache() noexcept = 0;

protected:
    ~SchemaCacheHandle() = default;
};

} // namespace tibxml::com

template <>
struct tibxml::platform::InterfaceTraits<tibxml::com::SchemaCacheHandle>
    : InterfaceIs<IID_SchemaCacheHandle, IUnknown> {};

namespace tibxml::com {

class SchemaCache final
    : public platform::ComObject<IXMLDOMSchemaCollection2, ISupportErrorInfo, SchemaCacheHandle> {
public:
    // What CoCreateInstance calls.
    static HRESULT create(REFIID iid, void** object) noexcept;

    // The collection that an object is that a caller passes. Throws Failure (E_INVALIDARG) for null
    // and for any other object.
    static ComPtr<SchemaCache> behind(IUnknown* object);

    // The schema for a namespace; null when there is none.
    std::shared_ptr<validation::Schema const> schemaFor(std::string_view namespaceUri) const;

    SchemaCache& cache() noexcept override { return *this; }

    HRESULT InterfaceSupportsErrorInfo(REFIID iid) noexcept override {
        return iid == IID_SchemaCacheHandle ? S_FALSE : S_OK;
    }

    HRESULT add(BSTR namespaceURI, VARIANT schema) noexcept override;
    HRESULT get(BSTR namespaceURI, IXMLDOMNode** schema) noexcept override;
    HRESULT remove(BSTR namespaceURI) noexcept override;
    HRESULT get_length(LONG* length) noexcept override;
    HRESULT get_namespaceURI(LONG index, BSTR* namespaceURI) noexcept override;
    HRESULT addCollection(IXMLDOMSchemaCollection* others) noexcept override;
    HRESULT validate() noexcept override;
    HRESULT put_validateOnLoad(VARIANT_BOOL validates) noexcept override;
    HRESULT get_validateOnLoad(VARIANT_BOOL* validates) noexcept override;

private:
    struct Entry {
        std::string namespaceUri;
        std::shared_ptr<validation::Schema const> schema;
        ComPtr<DocumentObject> source; // a copy of our own
        std::string path;              // of its file; empty when it has none
    };

    using Entries = std::vector<Entry>;

    SchemaCache() = default;
    ~SchemaCache() override = default;

    Entry compiled(std::string namespaceUri, DocumentObject& document) const;
    Entries::const_iterator find(std::string_view namespaceUri) const noexcept;
    static void put(Entries& entries, Entry entry);

    LiveObject live_;
    Entries entries_; // in the order in which they were added
    bool validatesOnLoad_ = true;
};

} // namespace tibxml::com
