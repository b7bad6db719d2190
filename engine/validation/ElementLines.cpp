#include "ElementLines.h"

#include <algorithm>
#include <new>
#include <utility>

#include <libxml/parserInternals.h>

#include <libxml/LibxmlErrors.h>
#include <libxml/LibxmlTypes.h>
#include <output/Serializer.h>

namespace tibxml::validation {

// Gives a text to the search as it is written, so that it never exists as a whole.
class LineSink final : public output::Sink {
public:
    explicit LineSink(ElementLines& lines) noexcept : lines_{lines} {}

    void write(std::string_view piece) override { lines_.parse(piece); }

private:
    ElementLines& lines_;
};

ElementLines::ElementLines(std::vector<std::uint64_t> elements, reader::ByteSource& file)
    : elements_{std::move(elements)} {
    begin(0);
    std::vector<char> buffer(std::size_t{1} << 16);
    while (!isDone()) {
        std::ptrdiff_t const count = file.read(buffer.data(), buffer.size());
        if (count <= 0) return;
        parse({buffer.data(), static_cast<std::size_t>(count)});
    }
}

ElementLines::ElementLines(std::vector<std::uint64_t> elements, tree::Document const& document)
    : elements_{std::move(elements)} {
    begin(XML_PARSE_IGNORE_ENC);
    LineSink sink{*this};
    output::writeXml(document, document.node(), sink);
}

void ElementLines::begin(int options) {
    std::sort(elements_.begin(), elements_.end());
    elements_.erase(std::unique(elements_.begin(), elements_.end()), elements_.end());
    lines_.reserve(elements_.size());
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = startElement;
    handler.serror = ignoreError;
    libxml::LibxmlErrors const errors{ignoreError, nullptr};
    context_.reset(libxml::allocated(xmlCreatePushParserCtxt(&handler, this, nullptr, 0, nullptr)));
    xmlCtxtUseOptions(context_.get(), XML_PARSE_HUGE | XML_PARSE_NONET | options);
}

// What the text has wrong was reported when it was read as a document.
void ElementLines::ignoreError(void* /*data*/, xmlError* /*error*/) {}

void ElementLines::parse(std::string_view piece) {
    constexpr std::size_t most = std::size_t{1} << 20;
    libxml::LibxmlErrors const errors{ignoreError, nullptr};
    for (; !piece.empty() && !isDone(); piece.remove_prefix(std::min(most, piece.size()))) {
        auto const size = static_cast<int>(std::min(most, piece.size()));
        if (xmlParseChunk(context_.get(), piece.data(), size, 0) == XML_ERR_NO_MEMORY)
            throw std::bad_alloc{};
    }
}

void ElementLines::startElement(void* data, xmlChar const* /*local*/, xmlChar const* /*prefix*/,
                                xmlChar const* /*uri*/, int /*declarationCount*/,
                                xmlChar const** /*declarations*/, int /*attributeCount*/,
                                int /*defaulted*/, xmlChar const** /*attributes*/) {
    static_cast<ElementLines*>(data)->noteElement();
}

void ElementLines::noteElement() noexcept {
    ++passed_;
    if (!isDone() && elements_[lines_.size()] == passed_) lines_.push_back(context_->input->line);
}

long ElementLines::lineOf(std::uint64_t element) const noexcept {
    auto const found = std::lower_bound(elements_.begin(), elements_.end(), element);
    auto const index = static_cast<std::size_t>(found - elements_.begin());
    bool const isKnown = found != elements_.end() && *found == element && index < lines_.size();
    return isKnown ? lines_[index] : 0;
}

} // namespace tibxml::validation
