#include <stdexcept>
#include <string_view>

#include <TibXml/TibXml.h>

#include "Count.h"

namespace bench {

namespace {

std::uint64_t utf8Size(WXmlSaxText const& text) noexcept {
    std::uint64_t size = 0;
    for (wchar_t const c : std::wstring_view{text.text, static_cast<std::size_t>(text.length)}) {
        auto const code = static_cast<char32_t>(c);
        size += code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    }
    return size;
}

class Count final : public Contender {
public:
    explicit Count(std::string const& path) : path_{path.begin(), path.end()} {
        sax_.OnStartElement = {this, startElement};
        sax_.OnEndElement = {this, endElement};
        sax_.OnCharacters = {this, characters};
    }

    void run() override {
        counts_ = {};
        done_ = sax_.ParseFile(path_.c_str());
    }

    std::uint64_t answer() override {
        if (!done_) throw std::runtime_error{"TibXml does not count the file"};
        return counts_.fingerprint();
    }

private:
    static FileCounts& countsOf(void* context) noexcept {
        return static_cast<Count*>(context)->counts_;
    }

    static bool startElement(void* context, WXmlSaxText const*,
                             std::vector<WXmlSaxAttribute> const* attributes) {
        countsOf(context).start(attributes->size());
        return true;
    }

    static bool endElement(void* context, WXmlSaxText const*) {
        countsOf(context).end();
        return true;
    }

    static bool characters(void* context, WXmlSaxText const* text) {
        countsOf(context).text(utf8Size(*text));
        return true;
    }

    std::wstring path_;
    WXmlSax sax_;
    FileCounts counts_;
    bool done_ = false;
};

} // namespace

ContenderPtr tibxmlCount(std::string const& path) {
    return std::make_unique<Count>(path);
}

} // namespace bench
