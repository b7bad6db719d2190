#include <reader/Reader.h>

#include <algorithm>
#include <cstring>

#include <tree/Lifetime.h>

#include "Parser.h"

namespace tibxml::reader {

namespace {

class TextSource final : public ByteSource {
public:
    explicit TextSource(std::string_view text) noexcept : rest_{text} {}

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        std::size_t const count = std::min(size, rest_.size());
        std::memcpy(buffer, rest_.data(), count);
        rest_.remove_prefix(count);
        return static_cast<std::ptrdiff_t>(count);
    }

private:
    std::string_view rest_;
};

// Nothing of a broken tree shows, whatever way the reading ends.
bool readOrClear(tree::Document& document, ByteSource& source, EncodingRule rule,
                 ReadError& error) {
    bool done = false;
    error = {};
    try {
        done = Parser{document, source, rule, error}.run();
    } catch (...) {
        tree::clear(document);
        throw;
    }
    if (!done) tree::clear(document);
    return done;
}

} // namespace

bool read(tree::Document& document, ByteSource& source, ReadError& error) {
    return readOrClear(document, source, EncodingRule::detect, error);
}

bool readUtf8(tree::Document& document, std::string_view text, ReadError& error) {
    TextSource source{text};
    return readOrClear(document, source, EncodingRule::alwaysUtf8, error);
}

} // namespace tibxml::reader
