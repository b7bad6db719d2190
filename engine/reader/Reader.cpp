#include <reader/Reader.h>

#include <reader/Decoder.h>
#include <tree/Lifetimes.h>

#include "Run.h"
#include "TreeBuilder.h"

namespace tibxml::reader {

namespace {

// Nothing of a broken tree shows, whatever way the reading ends.
bool readOrClear(tree::Document& document, Window& window, ReadError& error) {
    bool done = false;
    error = {};
    try {
        TreeBuilder builder{document};
        Parser<TreeBuilder> parser{window, builder};
        done = run(parser, window, error);
    } catch (...) {
        tree::clear(document);
        throw;
    }
    if (!done) tree::clear(document);
    return done;
}

} // namespace

void describe(ParseFailure const& failure, Window& window, ReadError& error) {
    Place const place = window.placeOf(failure.at);
    error.code = failure.code;
    error.reason = failure.reason;
    error.sourceLine = wellFormed(window.lineOf(failure.at));
    error.line = place.line;
    error.column = place.column;
    error.offset = window.offsetOf(failure.at);
}

bool read(tree::Document& document, ByteSource& source, ReadError& error) {
    Decoder decoder{source, EncodingRule::detect};
    Window window{decoder};
    return readOrClear(document, window, error);
}

bool readInSteps(tree::Document& document, ByteSource& source, std::size_t windowSize,
                 ReadError& error) {
    Decoder decoder{source, EncodingRule::detect};
    Window window{decoder, windowSize};
    return readOrClear(document, window, error);
}

bool readWide(tree::Document& document, std::wstring_view text, ReadError& error) {
    WideSource source{text};
    Window window{source};
    return readOrClear(document, window, error);
}

bool readUtf8(tree::Document& document, std::string_view text, ReadError& error) {
    Window window{text};
    return readOrClear(document, window, error);
}

} // namespace tibxml::reader
