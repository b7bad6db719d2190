#include <cstring>
#include <memory>
#include <stdexcept>

#include <libxml/parser.h>

#include "Counts.h"
#include "Sax.h"

namespace bench {

namespace {

std::size_t lengthOf(xmlChar const* text) noexcept {
    return std::strlen(reinterpret_cast<char const*>(text));
}

class Sax final : public Contender {
public:
    Sax(std::string const& path, Letters letters) : path_{path}, letters_{letters} {
        handler_.initialized = XML_SAX2_MAGIC;
        handler_.startDocument = startDocument;
        handler_.endDocument = startDocument;
        handler_.startElementNs = startElement;
        handler_.endElementNs = endElement;
        handler_.characters = characters;
        handler_.ignorableWhitespace = characters;
        handler_.cdataBlock = characters;
    }

    void run() override {
        counts_ = {};
        done_ = xmlSAXUserParseFile(&handler_, &counts_, path_.c_str()) == 0;
    }

    std::uint64_t answer() override {
        if (!done_) throw std::runtime_error{"libxml2 does not parse the file"};
        return counts_.fingerprint(letters_);
    }

private:
    static void startDocument(void* data) { ++static_cast<Counts*>(data)->documents; }

    static void startElement(void* data, xmlChar const* local, xmlChar const*, xmlChar const*, int,
                             xmlChar const**, int attributeCount, int, xmlChar const** attributes) {
        Counts& counts = *static_cast<Counts*>(data);
        ++counts.elements;
        counts.nameCharacters += lengthOf(local);
        counts.attributes += static_cast<unsigned>(attributeCount);
        for (int i = 0; i != attributeCount; ++i, attributes += 5) {
            counts.nameCharacters += lengthOf(attributes[0]);
            counts.valueCharacters += static_cast<std::size_t>(attributes[4] - attributes[3]);
        }
    }

    static void endElement(void* data, xmlChar const* local, xmlChar const*, xmlChar const*) {
        Counts& counts = *static_cast<Counts*>(data);
        ++counts.ends;
        counts.nameCharacters += lengthOf(local);
    }

    static void characters(void* data, xmlChar const*, int length) {
        static_cast<Counts*>(data)->textCharacters += static_cast<unsigned>(length);
    }

    std::string path_;
    Letters letters_;
    xmlSAXHandler handler_{};
    Counts counts_;
    bool done_ = false;
};

} // namespace

ContenderPtr libxml2Sax(std::string const& path, Letters letters) {
    return std::make_unique<Sax>(path, letters);
}

} // namespace bench
