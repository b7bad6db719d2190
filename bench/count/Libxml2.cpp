#include <stdexcept>

#include <libxml/parser.h>

#include "Count.h"

namespace bench {

namespace {

FileCounts& countsOf(void* data) noexcept {
    return *static_cast<FileCounts*>(data);
}

class Count final : public Contender {
public:
    explicit Count(std::string const& path) : path_{path} {
        handler_.initialized = XML_SAX2_MAGIC;
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
        if (!done_) throw std::runtime_error{"libxml2 does not count the file"};
        return counts_.fingerprint();
    }

private:
    static void startElement(void* data, xmlChar const*, xmlChar const*, xmlChar const*, int,
                             xmlChar const**, int attributeCount, int, xmlChar const**) {
        countsOf(data).start(static_cast<std::size_t>(attributeCount));
    }

    static void endElement(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        countsOf(data).end();
    }

    static void characters(void* data, xmlChar const*, int length) {
        countsOf(data).text(static_cast<std::uint64_t>(length));
    }

    std::string path_;
    xmlSAXHandler handler_{};
    FileCounts counts_;
    bool done_ = false;
};

} // namespace

ContenderPtr libxml2Count(std::string const& path) {
    return std::make_unique<Count>(path);
}

} // namespace bench
