// What libxml2 takes and gives as text.
#pragma once

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include <libxml/tree.h>

namespace bench {

inline xmlChar const* asXml(char const* text) noexcept {
    return reinterpret_cast<xmlChar const*>(text);
}

// An integer as text, as callers of a C library write it: libxml2 takes no numbers.
class Digits {
public:
    explicit Digits(int number) noexcept {
        std::snprintf(text_.data(), text_.size(), "%d", number);
    }

    xmlChar const* xml() const noexcept { return asXml(text_.data()); }

private:
    std::array<char, 16> text_{};
};

// The markup of a node, as UTF-8.
inline std::string markupOf(xmlNode* node) {
    std::unique_ptr<xmlBuffer, void (*)(xmlBuffer*)> const buffer{xmlBufferCreate(), xmlBufferFree};
    xmlNodeDump(buffer.get(), node->doc, node, 0, 0);
    return reinterpret_cast<char const*>(xmlBufferContent(buffer.get()));
}

} // namespace bench
