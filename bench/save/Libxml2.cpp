#include "../Documents.h"
#include "../Settings.h"
#include "Save.h"

namespace bench {

namespace {

class Save final : public Contender {
public:
    // With its white space, so that what is saved is laid out as the others' is.
    explicit Save(std::string const& text)
        : document_{libxml2Document(text, libxml2OptionsWithWhiteSpace())} {}

    void run() override {
        xmlChar* bytes = nullptr;
        int size = 0;
        xmlDocDumpMemory(document_.get(), &bytes, &size);
        saved_ = widened(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(size));
        xmlFree(bytes);
    }

    std::uint64_t answer() override { return contentOf(saved_); }

private:
    XmlDocPtr document_;
    std::wstring saved_;
};

} // namespace

ContenderPtr libxml2Save(std::string const& document) {
    return std::make_unique<Save>(document);
}

} // namespace bench
