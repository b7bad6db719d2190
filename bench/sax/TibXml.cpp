#include <stdexcept>

#include <TibXml/TibXml.h>

#include "Counts.h"
#include "Sax.h"

namespace bench {

namespace {

class Sax final : public Contender {
public:
    Sax(std::string const& path, Letters letters)
        : path_{path.begin(), path.end()},
          letters_{letters} {
        sax_.OnStartDocument = {this, startDocument};
        sax_.OnEndDocument = {this, endDocument};
        sax_.OnStartElement = {this, startElement};
        sax_.OnEndElement = {this, endElement};
        sax_.OnCharacters = {this, characters};
    }

    void run() override {
        counts_ = {};
        done_ = sax_.ParseFile(path_.c_str());
    }

    std::uint64_t answer() override {
        if (!done_) throw std::runtime_error{"TibXml does not parse the file"};
        return counts_.fingerprint(letters_);
    }

private:
    static Counts& countsOf(void* context) noexcept { return static_cast<Sax*>(context)->counts_; }

    static bool startDocument(void* context) { return ++countsOf(context).documents != 0; }

    static bool endDocument(void* context) { return ++countsOf(context).documents != 0; }

    static bool startElement(void* context, WXmlSaxText const* name,
                             std::vector<WXmlSaxAttribute> const* attributes) {
        Counts& counts = countsOf(context);
        ++counts.elements;
        counts.nameCharacters += static_cast<unsigned>(name->length);
        counts.attributes += attributes->size();
        for (WXmlSaxAttribute const& attribute : *attributes) {
            counts.nameCharacters += static_cast<unsigned>(attribute.nameLength);
            counts.valueCharacters += static_cast<unsigned>(attribute.valueLength);
        }
        return true;
    }

    static bool endElement(void* context, WXmlSaxText const* name) {
        Counts& counts = countsOf(context);
        ++counts.ends;
        counts.nameCharacters += static_cast<unsigned>(name->length);
        return true;
    }

    static bool characters(void* context, WXmlSaxText const* text) {
        countsOf(context).textCharacters += static_cast<unsigned>(text->length);
        return true;
    }

    std::wstring path_;
    Letters letters_;
    WXmlSax sax_;
    Counts counts_;
    bool done_ = false;
};

} // namespace

ContenderPtr tibxmlSax(std::string const& path, Letters letters) {
    return std::make_unique<Sax>(path, letters);
}

} // namespace bench
