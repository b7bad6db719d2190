#include "../Documents.h"
#include "Lookup.h"

namespace bench {

namespace {

class One final : public Contender {
public:
    explicit One(Lookup const& lookup)
        : text_{lookup.document},
          query_{("item[@id='" + std::to_string(lookup.id) + "']/value").c_str()},
          fresh_{lookup.freshDocument} {
        load();
    }

    void run() override { value_ = root_.select_node(query_).node().text().as_int(-1); }

    bool needsRestoring() const override { return fresh_; }

    void restore() override {
        if (fresh_) load();
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    void load() {
        document_ = pugixmlDocument(text_);
        root_ = document_->document_element();
    }

    std::string const& text_;
    pugi::xpath_query query_;
    bool fresh_;
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    int value_ = -1;
};

class Scattered final : public Contender {
public:
    explicit Scattered(std::string const& text)
        : document_{pugixmlDocument(text)},
          root_{document_->document_element()} {
        variables_.set("id", "");
    }

    void run() override {
        sum_ = 0;
        for (std::size_t i = 0; i < scatteredLookups; ++i) {
            id_ = nextScattered(id_);
            variables_.set("id", std::to_string(id_).c_str());
            sum_ += root_.select_node(query_).node().text().as_int(-1);
        }
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(sum_); }

private:
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    pugi::xpath_variable_set variables_;
    // The variable must be there, with its type, when the query is compiled.
    pugi::xpath_query query_{"item[@id=$id]/value",
                             (variables_.add("id", pugi::xpath_type_string), &variables_)};
    std::size_t id_ = 0;
    long sum_ = 0;
};

} // namespace

ContenderPtr pugixmlLookup(Lookup const& lookup) {
    return std::make_unique<One>(lookup);
}

ContenderPtr pugixmlScattered(std::string const& document) {
    return std::make_unique<Scattered>(document);
}

} // namespace bench
