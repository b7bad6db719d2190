#include <stdexcept>

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include "../Documents.h"
#include "Validate.h"

namespace bench {

namespace {

struct FreeSchema {
    void operator()(xmlSchema* schema) const noexcept { xmlSchemaFree(schema); }
};

using SchemaPtr = std::unique_ptr<xmlSchema, FreeSchema>;

SchemaPtr compiled() {
    std::string const& text = settingsSchema();
    auto* const parser = xmlSchemaNewMemParserCtxt(text.data(), static_cast<int>(text.size()));
    SchemaPtr schema{xmlSchemaParse(parser)};
    xmlSchemaFreeParserCtxt(parser);
    if (!schema) throw std::runtime_error{"libxml2 does not compile the schema"};
    return schema;
}

class Validate final : public Contender {
public:
    Validate(Sources const& sources, What what, Layout layout)
        : sources_{sources},
          what_{what},
          options_{layout == Layout::dropped ? libxml2Options() : libxml2OptionsWithWhiteSpace()},
          schema_{compiled()} {
        if (what_ == What::validate) document_.reset(load());
    }

    void run() override {
        if (what_ == What::parseAndValidate) document_.reset(load());
        auto* const context = xmlSchemaNewValidCtxt(schema_.get());
        valid_ = xmlSchemaValidateDoc(context, document_.get()) == 0;
        xmlSchemaFreeValidCtxt(context);
    }

    bool needsRestoring() const override { return what_ == What::parseAndValidate; }

    void restore() override {
        if (what_ == What::validate) return;
        document_.reset();
        returnFreeMemory();
    }

    std::uint64_t answer() override { return valid_ ? 1 : throw std::runtime_error{"not valid"}; }

private:
    xmlDoc* load() const {
        return xmlReadMemory(sources_.text.data(), static_cast<int>(sources_.text.size()), nullptr,
                             nullptr, options_);
    }

    Sources const& sources_;
    What what_;
    int options_;
    SchemaPtr schema_;
    XmlDocPtr document_;
    bool valid_ = false;
};

} // namespace

ContenderPtr libxml2Validate(Sources const& sources, What what, Layout layout) {
    return std::make_unique<Validate>(sources, what, layout);
}

} // namespace bench
