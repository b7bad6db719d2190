#include <reader/Reader.h>

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
        document.lifetimes().clear();
        throw;
    }
    if (!done) document.lifetimes().clear();
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

bool read(tree::Document& document, Input const& input, ReadError& error) {
    return withWindow(input, [&](Window& window) { return readOrClear(document, window, error); });
}

} // namespace tibxml::reader
