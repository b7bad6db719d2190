#include <reader/Reader.h>

#include <tree/Lifetime.h>

#include "TextSource.h"
#include "TreeParser.h"

namespace tibxml::reader {

namespace {

// Nothing of a broken tree shows, whatever way the reading ends.
bool readOrClear(tree::Document& document, ByteSource& source, EncodingRule rule,
                 ReadError& error) {
    bool done = false;
    error = {};
    try {
        done = TreeParser{document, source, rule, error}.run();
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
