#include "../Documents.h"
#include "../Fingerprint.h"
#include "../load/Load.h"
#include "Edit.h"

namespace bench {

namespace {

class Clone final : public Contender {
public:
    Clone(std::string const& text, DropCopy drop)
        : text_{text},
          timedDrop_{drop == DropCopy::timed} {
        load();
    }

    void run() override {
        copy_ = root_.Clone(true);
        if (timedDrop_) copy_ = {};
    }

    bool needsRestoring() const override { return !timedDrop_; }

    // The document is loaded again, because memory that its last copy took is there for the next.
    void restore() override {
        if (!timedDrop_) load();
    }

    std::uint64_t answer() override {
        CString const xml = (timedDrop_ ? root_ : copy_).GetXML();
        Fingerprint print;
        print.addVisible(xml.view());
        return print.value();
    }

private:
    void load() {
        copy_ = {};
        root_ = {};
        document_ = {};
        returnFreeMemory();
        document_ = tibxmlDocument(text_);
        root_ = document_.GetRootNode();
    }

    std::string const& text_;
    bool timedDrop_;
    WXmlDoc document_;
    WXmlNode root_;
    WXmlNode copy_;
};

class Graft final : public Contender {
public:
    explicit Graft(std::string const& text)
        : document_{tibxmlDocument(text)},
          root_{document_.GetRootNode()},
          other_{tibxmlDocument(otherDocument)},
          otherRoot_{other_.GetRootNode()},
          moved_{root_.GetNode(L"*")} {}

    void run() override {
        moved_.Graft(otherRoot_, -1);
        there_ = otherRoot_.GetNumChildren();
        moved_.Graft(root_, -1);
    }

    std::uint64_t answer() override {
        CString const xml = root_.GetXML();
        Fingerprint print;
        print.addVisible(xml.view());
        print.add(static_cast<std::uint64_t>(there_));
        return print.value();
    }

private:
    WXmlDoc document_;
    WXmlNode root_;
    WXmlDoc other_;
    WXmlNode otherRoot_;
    WXmlNode moved_;
    int there_ = 0;
};

} // namespace

ContenderPtr tibxmlClone(std::string const& document, DropCopy drop) {
    return std::make_unique<Clone>(document, drop);
}

ContenderPtr tibxmlGraft(std::string const& document) {
    return std::make_unique<Graft>(document);
}

} // namespace bench
