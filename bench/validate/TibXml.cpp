#include <stdexcept>

#include <TibXml/TibXml.h>
#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>
#include <TibXml/tibutils/Stream.h>

#include "Validate.h"

namespace bench {

namespace {

EnginePtr<IXMLDOMSchemaCollection2> schemas() {
    void* object = nullptr;
    if (CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL, IID_IXMLDOMSchemaCollection2,
                         &object) != S_OK)
        throw std::runtime_error{"TibXml makes no schema cache"};
    EnginePtr<IXMLDOMSchemaCollection2> result{static_cast<IXMLDOMSchemaCollection2*>(object),
                                               false};
    return result;
}

WXmlDocPtr newDocument() {
    void* object = nullptr;
    if (CoCreateInstance(CLSID_DOMDocument60, nullptr, CLSCTX_ALL, IID_IXMLDOMDocument3, &object) !=
        S_OK)
        throw std::runtime_error{"TibXml makes no document"};
    return WXmlDocPtr{static_cast<IXMLDOMDocument3*>(object), false};
}

// The schema is compiled once for both libraries, before anything is timed.
class Validate final : public Contender {
public:
    Validate(Sources const& sources, What what)
        : sources_{sources},
          what_{what},
          schemas_{schemas()},
          document_{newDocument()} {
        WXmlDocPtr const schema = newDocument();
        load(schema, settingsSchema());
        _bstr_t none{L""};
        if (schemas_->add(none.GetBSTR(), _variant_t{static_cast<IUnknown*>(schema)}) != S_OK)
            throw std::runtime_error{"TibXml does not compile the schema"};
        document_->putref_schemas(_variant_t{static_cast<IUnknown*>(schemas_)});
        if (what_ == What::validate) load(document_, sources_.text);
    }

    void run() override {
        if (what_ == What::parseAndValidate) load(document_, sources_.text);
        EnginePtr<IXMLDOMParseError> error;
        valid_ = document_->validate(error.GetAddress()) == S_OK;
    }

    bool needsRestoring() const override { return what_ == What::parseAndValidate; }

    void restore() override {
        if (what_ == What::validate) return;
        document_ = newDocument();
        document_->putref_schemas(_variant_t{static_cast<IUnknown*>(schemas_)});
        returnFreeMemory();
    }

    std::uint64_t answer() override { return valid_ ? 1 : throw std::runtime_error{"not valid"}; }

private:
    static void load(WXmlDocPtr const& document, std::string const& text) {
        auto const stream = TibUtils::Stream::OverMemory(text.data(), text.size());
        VARIANT_BOOL done = VARIANT_FALSE;
        document->load(_variant_t{static_cast<IUnknown*>(static_cast<IStream*>(stream))}, &done);
        if (done != VARIANT_TRUE) throw std::runtime_error{"TibXml does not load the document"};
    }

    Sources const& sources_;
    What what_;
    EnginePtr<IXMLDOMSchemaCollection2> schemas_;
    WXmlDocPtr document_;
    bool valid_ = false;
};

} // namespace

ContenderPtr tibxmlValidate(Sources const& sources, What what) {
    return std::make_unique<Validate>(sources, what);
}

} // namespace bench
