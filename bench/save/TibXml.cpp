#include "../Documents.h"
#include "Save.h"

namespace bench {

namespace {

class Save final : public Contender {
public:
    explicit Save(std::string const& text) : document_{tibxmlDocument(text)} {}

    void run() override { saved_ = document_.SaveToString(); }

    std::uint64_t answer() override {
        return contentOf({saved_.GetString(), static_cast<std::size_t>(saved_.GetLength())});
    }

private:
    WXmlDoc document_;
    CString saved_;
};

} // namespace

ContenderPtr tibxmlSave(std::string const& document) {
    return std::make_unique<Save>(document);
}

} // namespace bench
