#include <string_view>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "Strings.h"

namespace bench {

namespace {

class Strings final : public Contender {
public:
    explicit Strings(StringSet const& set)
        : set_{set},
          document_{pugixmlDocument(stringMap(set))},
          root_{document_->document_element()} {
        variables_.add("context", pugi::xpath_type_string);
        variables_.add("key", pugi::xpath_type_string);
        query_ = pugi::xpath_query{"context[@name=$context]/string[@nonTranslatableString=$key]",
                                   &variables_};
    }

    void run() override {
        print_ = {};
        for (std::size_t i = 0; i < set_.size(); i += sampleStep) {
            variables_.set("context", contextName(i % set_.contexts).c_str());
            variables_.set("key", keyName(i / set_.contexts).c_str());
            pugi::xml_node const found = root_.select_node(query_).node();
            print_.addVisible(std::string_view{found.attribute("locString").value()});
        }
    }

    double weight() const override { return sampleStep; }

    std::uint64_t answer() override { return print_.value(); }

private:
    StringSet set_;
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    pugi::xpath_variable_set variables_;
    pugi::xpath_query query_;
    Fingerprint print_;
};

} // namespace

ContenderPtr pugixmlStrings(StringSet const& set) {
    return std::make_unique<Strings>(set);
}

} // namespace bench
