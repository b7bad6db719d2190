#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "Edit.h"

namespace bench {

namespace {

std::uint64_t countOf(pugi::xml_node parent) {
    auto const children = parent.children();
    return static_cast<std::uint64_t>(std::distance(children.begin(), children.end()));
}

class Children final : public Contender {
public:
    Children(std::string const& text, std::size_t atOnce)
        : document_{pugixmlDocument(text)},
          root_{document_->document_element()},
          atOnce_{atOnce} {
        children_.reserve(atOnce);
    }

    void run() override {
        for (std::size_t made = 0; made < childrenPerRun; made += atOnce_) {
            for (std::size_t i = 0; i < atOnce_; ++i)
                make(static_cast<int>(made + i));
            removeAll();
        }
    }

    std::uint64_t answer() override {
        Fingerprint print;
        make(4711);
        std::ostringstream out;
        children_.front().print(out, "", pugi::format_raw);
        print.addVisible(std::string_view{out.str()});
        removeAll();
        print.add(countOf(root_));
        return print.value();
    }

private:
    void make(int number) {
        children_.push_back(root_.append_child("entry"));
        children_.back().append_attribute("id").set_value(number);
        children_.back().append_attribute("value").set_value(number * 7);
    }

    void removeAll() {
        for (pugi::xml_node const child : children_)
            root_.remove_child(child);
        children_.clear();
    }

    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    std::size_t atOnce_;
    std::vector<pugi::xml_node> children_;
};

class Ensure final : public Contender {
public:
    Ensure(std::string const& text, Descendant descendant)
        : document_{pugixmlDocument(text)},
          root_{document_->document_element()},
          missing_{descendant == Descendant::missing} {
        if (!missing_) ensure();
    }

    void run() override {
        pugi::xml_node const left = ensure();
        length_ = std::char_traits<char>::length(left.name());
        if (missing_) root_.remove_child(left.parent().parent());
    }

    std::uint64_t answer() override {
        Fingerprint print;
        print.add(length_);
        print.add(countOf(root_));
        return print.value();
    }

private:
    pugi::xml_node ensure() {
        pugi::xml_node node = root_;
        for (char const* const name : {"window", "position", "left"}) {
            pugi::xml_node const child = node.child(name);
            node = child ? child : node.append_child(name);
        }
        return node;
    }

    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    bool missing_;
    std::size_t length_ = 0;
};

class SetAndRead final : public Contender {
public:
    explicit SetAndRead(std::string const& text)
        : document_{pugixmlDocument(text)},
          root_{document_->document_element()} {}

    void run() override {
        root_.select_node(query_).node().text().set(nextNumber(number_));
        value_ = root_.select_node(query_).node().text().as_int(-1);
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    pugi::xpath_query query_{"item[@id='7']/value"};
    int number_ = 0;
    int value_ = -1;
};

} // namespace

ContenderPtr pugixmlChildren(std::string const& document, std::size_t atOnce) {
    return std::make_unique<Children>(document, atOnce);
}

ContenderPtr pugixmlEnsure(std::string const& document, Descendant descendant) {
    return std::make_unique<Ensure>(document, descendant);
}

ContenderPtr pugixmlSetAndRead(std::string const& document) {
    return std::make_unique<SetAndRead>(document);
}

} // namespace bench
