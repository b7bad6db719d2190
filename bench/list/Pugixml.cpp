#include "../Documents.h"
#include "../Fingerprint.h"
#include "List.h"

namespace bench {

namespace {

class List final : public Contender {
public:
    explicit List(std::string const& text)
        : document_{pugixmlDocument(text)},
          root_{document_->document_element()} {}

    void run() override {
        print_ = {};
        for (pugi::xpath_node const& found : root_.select_nodes(query_)) {
            std::string const text = found.node().text().get();
            print_.add(text.size());
        }
    }

    std::uint64_t answer() override { return print_.value(); }

private:
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    pugi::xpath_query query_{"//item[@kind='k3']/name"};
    Fingerprint print_;
};

} // namespace

ContenderPtr pugixmlList(std::string const& document) {
    return std::make_unique<List>(document);
}

} // namespace bench
