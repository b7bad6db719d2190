#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Libxml2Text.h"
#include "../Settings.h"
#include "../load/Load.h"
#include "Edit.h"

namespace bench {

namespace {

std::uint64_t contentOf(xmlNode* node, std::uint64_t number) {
    std::string const text = markupOf(node);
    std::wstring const wide = widened(text.data(), text.size());
    Fingerprint print;
    print.addVisible(std::wstring_view{wide});
    if (number != 0) print.add(number);
    return print.value();
}

struct FreeXmlNode {
    void operator()(xmlNode* node) const noexcept { xmlFreeNode(node); }
};

class Clone final : public Contender {
public:
    Clone(std::string const& text, DropCopy drop)
        : document_{libxml2Document(text, libxml2Options())},
          root_{xmlDocGetRootElement(document_.get())},
          timedDrop_{drop == DropCopy::timed} {}

    void run() override {
        copy_.reset(xmlDocCopyNode(root_, document_.get(), 1));
        if (timedDrop_) copy_.reset();
    }

    bool needsRestoring() const override { return !timedDrop_; }

    void restore() override {
        copy_.reset();
        returnFreeMemory();
    }

    std::uint64_t answer() override { return contentOf(timedDrop_ ? root_ : copy_.get(), 0); }

private:
    XmlDocPtr document_;
    xmlNode* root_;
    bool timedDrop_;
    std::unique_ptr<xmlNode, FreeXmlNode> copy_;
};

class Graft final : public Contender {
public:
    explicit Graft(std::string const& text)
        : document_{libxml2Document(text, libxml2Options())},
          root_{xmlDocGetRootElement(document_.get())},
          other_{libxml2Document(otherDocument, libxml2Options())},
          otherRoot_{xmlDocGetRootElement(other_.get())} {}

    void run() override {
        move(root_, otherRoot_);
        there_ = xmlChildElementCount(otherRoot_);
        move(otherRoot_, root_);
    }

    std::uint64_t answer() override { return contentOf(root_, there_); }

private:
    // Names live in a document's dictionary, which is why adding alone is not enough.
    static void move(xmlNode* from, xmlNode* to) {
        xmlNode* const moved = from->children;
        xmlDOMWrapAdoptNode(nullptr, from->doc, moved, to->doc, to, 0);
        xmlAddChild(to, moved);
    }

    XmlDocPtr document_;
    xmlNode* root_;
    XmlDocPtr other_;
    xmlNode* otherRoot_;
    std::uint64_t there_ = 0;
};

} // namespace

ContenderPtr libxml2Clone(std::string const& document, DropCopy drop) {
    return std::make_unique<Clone>(document, drop);
}

ContenderPtr libxml2Graft(std::string const& document) {
    return std::make_unique<Graft>(document);
}

} // namespace bench
