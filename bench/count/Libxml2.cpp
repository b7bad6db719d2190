#include <algorithm>
#include <stdexcept>

#include <libxml/parser.h>

#include "Count.h"

namespace bench {

namespace {

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
        depth_ = 0;
        done_ = xmlSAXUserParseFile(&handler_, this, path_.c_str()) == 0;
    }

    std::uint64_t answer() override {
        if (!done_) throw std::runtime_error{"libxml2 does not count the file"};
        return counts_.fingerprint();
    }

private:
    static Count& self(void* data) noexcept { return *static_cast<Count*>(data); }

    static void startElement(void* data, xmlChar const*, xmlChar const*, xmlChar const*, int,
                             xmlChar const**, int attributeCount, int, xmlChar const**) {
        Count& count = self(data);
        ++count.counts_.elements;
        count.counts_.attributes += static_cast<unsigned>(attributeCount);
        count.counts_.depth = std::max(count.counts_.depth, ++count.depth_);
    }

    static void endElement(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        --self(data).depth_;
    }

    static void characters(void* data, xmlChar const*, int length) {
        self(data).counts_.textBytes += static_cast<unsigned>(length);
    }

    std::string path_;
    xmlSAXHandler handler_{};
    FileCounts counts_;
    std::uint64_t depth_ = 0;
    bool done_ = false;
};

} // namespace

ContenderPtr libxml2Count(std::string const& path) {
    return std::make_unique<Count>(path);
}

} // namespace bench
