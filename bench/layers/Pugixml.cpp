#include <iterator>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "Layers.h"

namespace bench {

namespace {

class Read final : public Contender {
public:
    Read(Layers const& layers, int id)
        : defaults_{pugixmlDocument(layers.defaults)},
          user_{pugixmlDocument(layers.user)},
          query_{("item[@id='" + std::to_string(id) + "']").c_str()} {}

    void run() override {
        pugi::xml_attribute attribute = attributeIn(*user_);
        if (!attribute) attribute = attributeIn(*defaults_);
        value_ = attribute.as_int(-1);
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    pugi::xml_attribute attributeIn(pugi::xml_document const& document) const {
        return document.document_element().select_node(query_).node().attribute("id");
    }

    std::unique_ptr<pugi::xml_document> defaults_;
    std::unique_ptr<pugi::xml_document> user_;
    pugi::xpath_query query_;
    int value_ = -1;
};

class FirstWrite final : public Contender {
public:
    explicit FirstWrite(Layers const& layers)
        : defaults_{pugixmlDocument(layers.defaults)},
          user_{pugixmlDocument(layers.user)} {}

    void run() override {
        pugi::xml_node root = user_->document_element();
        pugi::xml_node const present = root.select_node(query_).node();
        pugi::xml_node const given = defaults_->document_element().select_node(query_).node();
        if (present || given.attribute("userCustomizable")) return;
        pugi::xml_node window = root.append_child("window");
        pugi::xml_node position = window.append_child("position");
        position.append_attribute("size").set_value(4711);
        value_ = position.attribute("size").as_int(-1);
        root.remove_child(window);
    }

    std::uint64_t answer() override {
        auto const children = user_->document_element().children();
        Fingerprint print;
        print.add(static_cast<std::uint64_t>(value_));
        print.add(static_cast<std::uint64_t>(std::distance(children.begin(), children.end())));
        return print.value();
    }

private:
    std::unique_ptr<pugi::xml_document> defaults_;
    std::unique_ptr<pugi::xml_document> user_;
    pugi::xpath_query query_{"window/position"};
    int value_ = -1;
};

} // namespace

ContenderPtr pugixmlRead(Layers const& layers, int id) {
    return std::make_unique<Read>(layers, id);
}

ContenderPtr pugixmlFirstWrite(Layers const& layers) {
    return std::make_unique<FirstWrite>(layers);
}

} // namespace bench
