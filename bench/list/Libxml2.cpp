#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Libxml2Query.h"
#include "List.h"

namespace bench {

namespace {

class List final : public Contender {
public:
    explicit List(std::string const& text) : document_{libxml2Document(text, libxml2Options())} {
        query_.setDocument(document_.get());
    }

    void run() override {
        print_ = {};
        Libxml2Query::Result const result = query_.evaluate();
        for (int i = 0; i < result->nodesetval->nodeNr; ++i) {
            xmlChar* const text = xmlNodeGetContent(result->nodesetval->nodeTab[i]);
            print_.add(static_cast<std::uint64_t>(xmlStrlen(text)));
            xmlFree(text);
        }
    }

    std::uint64_t answer() override { return print_.value(); }

private:
    XmlDocPtr document_;
    Libxml2Query query_{"//item[@kind='k3']/name"};
    Fingerprint print_;
};

} // namespace

ContenderPtr libxml2List(std::string const& document) {
    return std::make_unique<List>(document);
}

} // namespace bench
