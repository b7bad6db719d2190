#include <array>
#include <cwchar>

#include "../Documents.h"
#include "Lookup.h"

namespace bench {

namespace {

std::wstring pathTo(std::size_t id) {
    return L"item[@id='" + std::to_wstring(id) + L"']/value";
}

class One final : public Contender {
public:
    explicit One(Lookup const& lookup)
        : text_{lookup.document},
          path_{pathTo(lookup.id)},
          fresh_{lookup.freshDocument} {
        load();
    }

    void run() override {
        WXmlNode node;
        value_ = root_.GetNode(WXPath{path_.c_str()}, node) ? node.Value().GetInt(-1) : -1;
    }

    bool needsRestoring() const override { return fresh_; }

    void restore() override {
        if (fresh_) load();
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    void load() {
        document_ = tibxmlDocument(text_);
        root_ = document_.GetRootNode();
    }

    std::string const& text_;
    std::wstring path_;
    bool fresh_;
    WXmlDoc document_;
    WXmlNode root_;
    int value_ = -1;
};

class Scattered final : public Contender {
public:
    explicit Scattered(std::string const& text)
        : document_{tibxmlDocument(text)},
          root_{document_.GetRootNode()} {}

    void run() override {
        sum_ = 0;
        for (std::size_t i = 0; i < scatteredLookups; ++i) {
            id_ = nextScattered(id_);
            std::array<wchar_t, 48> path{};
            (void)std::swprintf(path.data(), path.size(), L"item[@id='%zu']/value", id_);
            WXmlNode node;
            sum_ += root_.GetNode(path.data(), node) ? node.Value().GetInt(-1) : -1;
        }
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(sum_); }

private:
    WXmlDoc document_;
    WXmlNode root_;
    std::size_t id_ = 0;
    long sum_ = 0;
};

} // namespace

ContenderPtr tibxmlLookup(Lookup const& lookup) {
    return std::make_unique<One>(lookup);
}

ContenderPtr tibxmlScattered(std::string const& document) {
    return std::make_unique<Scattered>(document);
}

} // namespace bench
