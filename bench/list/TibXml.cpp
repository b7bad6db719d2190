#include "../Documents.h"
#include "../Fingerprint.h"
#include "List.h"

namespace bench {

namespace {

class List final : public Contender {
public:
    explicit List(std::string const& text)
        : document_{tibxmlDocument(text)},
          root_{document_.GetRootNode()} {}

    void run() override {
        print_ = {};
        for (WXmlNode const& node : root_.GetNodes(L"//item[@kind='k3']/name")) {
            CString const text = node.Value().GetString(L"");
            print_.add(static_cast<std::uint64_t>(text.GetLength()));
        }
    }

    std::uint64_t answer() override { return print_.value(); }

private:
    WXmlDoc document_;
    WXmlNode root_;
    Fingerprint print_;
};

} // namespace

ContenderPtr tibxmlList(std::string const& document) {
    return std::make_unique<List>(document);
}

} // namespace bench
