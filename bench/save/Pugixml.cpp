#include "../Documents.h"
#include "Save.h"

namespace bench {

namespace {

class WideWriter final : public pugi::xml_writer {
public:
    void write(void const* data, std::size_t size) override {
        text.append(static_cast<wchar_t const*>(data), size / sizeof(wchar_t));
    }

    std::wstring text;
};

class Save final : public Contender {
public:
    explicit Save(std::string const& text) : document_{pugixmlDocument(text)} {}

    void run() override {
        WideWriter writer;
        document_->save(writer, "\t", pugi::format_indent, pugi::encoding_wchar);
        saved_ = std::move(writer.text);
    }

    std::uint64_t answer() override { return contentOf(saved_); }

private:
    std::unique_ptr<pugi::xml_document> document_;
    std::wstring saved_;
};

} // namespace

ContenderPtr pugixmlSave(std::string const& document) {
    return std::make_unique<Save>(document);
}

} // namespace bench
