#include <sstream>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Settings.h"
#include "../load/Load.h"
#include "Edit.h"

namespace bench {

namespace {

std::uint64_t contentOf(pugi::xml_node node, std::uint64_t number) {
    std::ostringstream out;
    node.print(out, "", pugi::format_raw);
    std::string const text = out.str();
    std::wstring const wide = widened(text.data(), text.size());
    Fingerprint print;
    print.addVisible(std::wstring_view{wide});
    if (number != 0) print.add(number);
    return print.value();
}

class Clone final : public Contender {
public:
    Clone(std::string const& text, DropCopy drop)
        : document_{pugixmlDocument(text)},
          root_{document_->document_element()},
          timedDrop_{drop == DropCopy::timed} {}

    void run() override {
        copy_ = document_->append_copy(root_);
        if (timedDrop_) drop();
    }

    bool needsRestoring() const override { return !timedDrop_; }

    void restore() override {
        if (copy_) drop();
        returnFreeMemory();
    }

    std::uint64_t answer() override { return contentOf(timedDrop_ ? root_ : copy_, 0); }

private:
    void drop() {
        document_->remove_child(copy_);
        copy_ = {};
    }

    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    bool timedDrop_;
    pugi::xml_node copy_;
};

class Graft final : public Contender {
public:
    explicit Graft(std::string const& text)
        : document_{pugixmlDocument(text)},
          root_{document_->document_element()},
          other_{pugixmlDocument(otherDocument)},
          otherRoot_{other_->document_element()} {}

    void run() override {
        otherRoot_.append_copy(root_.first_child());
        root_.remove_child(root_.first_child());
        there_ = otherRoot_.first_child() ? 1 : 0;
        root_.append_copy(otherRoot_.first_child());
        otherRoot_.remove_child(otherRoot_.first_child());
    }

    std::uint64_t answer() override { return contentOf(root_, there_); }

private:
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node root_;
    std::unique_ptr<pugi::xml_document> other_;
    pugi::xml_node otherRoot_;
    std::uint64_t there_ = 0;
};

} // namespace

ContenderPtr pugixmlClone(std::string const& document, DropCopy drop) {
    return std::make_unique<Clone>(document, drop);
}

ContenderPtr pugixmlGraft(std::string const& document) {
    return std::make_unique<Graft>(document);
}

} // namespace bench
