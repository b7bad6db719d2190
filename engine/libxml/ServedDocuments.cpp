#include "ServedDocuments.h"

#include <limits>
#include <utility>

namespace tibxml::validation {

namespace {

thread_local SchemaDocuments const* served = nullptr;

xmlParserInputBuffer* bufferFor(char const* name, xmlCharEncoding encoding) {
    auto const index = served->indexOf(name);
    if (!index) return nullptr;
    std::string const text = served->textOf(*index);
    if (text.size() > std::size_t{std::numeric_limits<int>::max()}) return nullptr;
    // The buffer is a copy of the text.
    return xmlParserInputBufferCreateMem(text.data(), static_cast<int>(text.size()), encoding);
}

// Called from frames of C: what cannot be served for want of memory is not served.
xmlParserInputBuffer* serve(char const* name, xmlCharEncoding encoding) noexcept {
    try {
        return bufferFor(name, encoding);
    } catch (...) {
        return nullptr;
    }
}

} // namespace

ServedDocuments::ServedDocuments(SchemaDocuments const& documents) noexcept
    : before_{std::exchange(served, &documents)},
      input_{serve} {}

ServedDocuments::~ServedDocuments() {
    served = before_;
}

} // namespace tibxml::validation
