#include <libxml/xpathInternals.h>

#include "../Documents.h"
#include "../Libxml2Query.h"
#include "Lookup.h"

namespace bench {

namespace {

class One final : public Contender {
public:
    explicit One(Lookup const& lookup)
        : text_{lookup.document},
          query_{"item[@id='" + std::to_string(lookup.id) + "']/value"},
          fresh_{lookup.freshDocument} {
        load();
    }

    void run() override { value_ = numberIn(query_.evaluate()); }

    bool needsRestoring() const override { return fresh_; }

    void restore() override {
        if (fresh_) load();
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    void load() {
        document_ = libxml2Document(text_, libxml2Options());
        query_.setDocument(document_.get());
    }

    std::string const& text_;
    XmlDocPtr document_;
    Libxml2Query query_;
    bool fresh_;
    int value_ = -1;
};

class Scattered final : public Contender {
public:
    explicit Scattered(std::string const& text)
        : document_{libxml2Document(text, libxml2Options())} {
        query_.setDocument(document_.get());
    }

    void run() override {
        sum_ = 0;
        for (std::size_t i = 0; i < scatteredLookups; ++i) {
            id_ = nextScattered(id_);
            setVariable(std::to_string(id_));
            sum_ += numberIn(query_.evaluate());
        }
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(sum_); }

private:
    void setVariable(std::string const& value) {
        xmlXPathRegisterVariable(query_.context(), reinterpret_cast<xmlChar const*>("id"),
                                 xmlXPathNewCString(value.c_str()));
    }

    XmlDocPtr document_;
    Libxml2Query query_{"item[@id=$id]/value"};
    std::size_t id_ = 0;
    long sum_ = 0;
};

} // namespace

ContenderPtr libxml2Lookup(Lookup const& lookup) {
    return std::make_unique<One>(lookup);
}

ContenderPtr libxml2Scattered(std::string const& document) {
    return std::make_unique<Scattered>(document);
}

} // namespace bench
