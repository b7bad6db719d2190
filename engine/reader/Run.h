// One reading of a document: from a window to a consumer, with failures as a ReadError.
#pragma once

#include "Parser.h"

namespace tibxml::reader {

// Fills the error for people from a failure in this window.
void describe(ParseFailure const& failure, Window& window, ReadError& error);

// True when the whole document was read; otherwise the error is filled. Throws std::bad_alloc and
// what the consumer throws.
template <class Consumer>
bool run(Parser<Consumer>& parser, Window& window, ReadError& error) {
    try {
        parser.run();
        return true;
    } catch (ParseFailure const& failure) {
        describe(failure, window, error);
        return false;
    }
}

} // namespace tibxml::reader
