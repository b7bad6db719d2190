#include "ResultText.h"

#include <new>
#include <utility>

#include <libxml/encoding.h>
#include <libxslt/imports.h>
#include <libxslt/xsltutils.h>

#include "LibraryDocument.h"

namespace tibxml::transform {

namespace {

xmlCharEncodingHandler* handlerOf(std::string_view encoding) {
    return xmlFindCharEncodingHandler(std::string{encoding}.c_str());
}

// While this lives, a stylesheet asks for another encoding.
class EncodingChange {
public:
    // Throws std::bad_alloc.
    EncodingChange(xsltStylesheet& style, char const* encoding)
        : style_{style},
          before_{style.encoding} {
        style.encoding = allocated(xmlStrdup(reinterpret_cast<xmlChar const*>(encoding)));
    }

    EncodingChange(EncodingChange const&) = delete;
    EncodingChange& operator=(EncodingChange const&) = delete;

    ~EncodingChange() {
        xmlFree(style_.encoding);
        style_.encoding = before_;
    }

private:
    xsltStylesheet& style_;
    xmlChar* before_;
};

// Where libxml2 writes.
struct Written {
    std::string bytes;
    bool isOutOfMemory = false;
};

int append(void* context, char const* bytes, int size) noexcept {
    auto& written = *static_cast<Written*>(context);
    try {
        written.bytes.append(bytes, static_cast<std::size_t>(size));
        return size;
    } catch (...) {
        written.isOutOfMemory = true;
        return -1;
    }
}

// In UTF-8 without a handler, which becomes the output's.
std::string written(xsltStylesheet* style, xmlDoc& result, xmlCharEncodingHandler* handler) {
    Written written;
    xmlOutputBuffer* const buffer = xmlOutputBufferCreateIO(append, nullptr, &written, handler);
    if (buffer == nullptr) {
        if (handler != nullptr) xmlCharEncCloseFunc(handler);
        throw std::bad_alloc{};
    }
    bool const isWritten = xsltSaveResultTo(buffer, &result, style) >= 0;
    bool const isFinished = xmlOutputBufferClose(buffer) >= 0;
    if (written.isOutOfMemory) throw std::bad_alloc{};
    if (!isWritten || !isFinished)
        throw TransformError{"the result cannot be written in its encoding"};
    return std::move(written.bytes);
}

} // namespace

std::string_view knownEncoding(xsltStylesheet* style) noexcept {
    while (style != nullptr && style->encoding == nullptr)
        style = xsltNextImport(style);
    if (style == nullptr) return {};
    std::string_view const encoding = view(style->encoding);
    xmlCharEncodingHandler* const handler = xmlFindCharEncodingHandler(encoding.data());
    if (handler == nullptr) return {};
    xmlCharEncCloseFunc(handler);
    return encoding;
}

std::string textOf(xsltStylesheet* style, xmlDoc& result, TextEncoding encoding) {
    // Or else the characters of attribute values become references.
    if (result.encoding == nullptr)
        result.encoding = allocated(xmlStrdup(reinterpret_cast<xmlChar const*>("UTF-8")));
    if (encoding == TextEncoding::wide) {
        EncodingChange const change{*style, "UTF-16"};
        return written(style, result, nullptr);
    }
    std::string_view const name = knownEncoding(style);
    if (!name.empty()) return written(style, result, handlerOf(name));
    EncodingChange const change{*style, "UTF-8"};
    return written(style, result, nullptr);
}

} // namespace tibxml::transform
