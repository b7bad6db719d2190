#include <xpath/byte_stream.h>

#include <algorithm>

namespace TinyXPath {

// make_unique's value-initialisation supplies the terminating zero.
byte_stream::byte_stream(std::string_view utf8)
    : length(utf8.size() + 1),
      buffer(std::make_unique<char[]>(length)),
      current(buffer.get()),
      end(buffer.get() + utf8.size()),
      hasMore(current != end) {
    std::copy(utf8.begin(), utf8.end(), buffer.get());
}

unsigned char byte_stream::lookAhead() const noexcept {
    return end - current < 2 ? static_cast<unsigned char>(0)
                             : static_cast<unsigned char>(current[1]);
}

void byte_stream::advance() noexcept {
    if (hasMore) {
        ++current;
        hasMore = current != end;
    }
}

} // namespace TinyXPath
