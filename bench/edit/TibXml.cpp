#include "../Documents.h"
#include "../Fingerprint.h"
#include "Edit.h"

namespace bench {

namespace {

class Children final : public Contender {
public:
    Children(std::string const& text, std::size_t atOnce)
        : document_{tibxmlDocument(text)},
          root_{document_.GetRootNode()},
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
        CString const xml = children_.front().GetXML();
        print.addVisible(xml.view());
        removeAll();
        print.add(static_cast<std::uint64_t>(root_.GetNumChildren()));
        return print.value();
    }

private:
    void make(int number) {
        children_.push_back(root_.CreateChild(childName, nullptr));
        children_.back().Attribute(L"@id").SetInt(number);
        children_.back().Attribute(L"@value").SetInt(number * 7);
    }

    void removeAll() {
        for (WXmlNode& child : children_)
            child.Prune();
        children_.clear();
    }

    WXmlDoc document_;
    WXmlNode root_;
    std::size_t atOnce_;
    std::vector<WXmlNode> children_;
};

class Ensure final : public Contender {
public:
    Ensure(std::string const& text, Descendant descendant)
        : document_{tibxmlDocument(text)},
          root_{document_.GetRootNode()},
          missing_{descendant == Descendant::missing} {
        if (!missing_) root_.EnsureDescendantExists(path);
    }

    void run() override {
        left_ = root_.EnsureDescendantExists(path);
        if (missing_) left_.GetParentNode().GetParentNode().Prune();
    }

    std::uint64_t answer() override {
        Fingerprint print;
        print.add(static_cast<std::uint64_t>(left_.GetName().GetLength()));
        print.add(static_cast<std::uint64_t>(root_.GetNumChildren()));
        return print.value();
    }

private:
    static constexpr wchar_t const* path = L"window/position/left";

    WXmlDoc document_;
    WXmlNode root_;
    WXmlNode left_;
    bool missing_;
};

class SetAndRead final : public Contender {
public:
    explicit SetAndRead(std::string const& text)
        : document_{tibxmlDocument(text)},
          root_{document_.GetRootNode()} {}

    void run() override {
        WXmlNode node;
        if (root_.GetNode(path, node)) node.Value().SetInt(nextNumber(number_));
        WXmlNode again;
        value_ = root_.GetNode(path, again) ? again.Value().GetInt(-1) : -1;
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    static constexpr wchar_t const* path = L"item[@id='7']/value";

    WXmlDoc document_;
    WXmlNode root_;
    int number_ = 0;
    int value_ = -1;
};

} // namespace

ContenderPtr tibxmlChildren(std::string const& document, std::size_t atOnce) {
    return std::make_unique<Children>(document, atOnce);
}

ContenderPtr tibxmlEnsure(std::string const& document, Descendant descendant) {
    return std::make_unique<Ensure>(document, descendant);
}

ContenderPtr tibxmlSetAndRead(std::string const& document) {
    return std::make_unique<SetAndRead>(document);
}

} // namespace bench
