// libxml2's parser, asked the same question: what it says about a document, in the notation of
// Trace.h. The rules around it are the reader's: no document types, at most 256 elements deep, what
// is wrong with namespaces is an error.
#pragma once

#include <string>
#include <string_view>

namespace tibxml::reader::test {

struct PeerTraces {
    bool isAccepted = false;
    std::string reason;    // when it is not
    std::string preserved; // a tree with all white space
    std::string dropped;   // a tree without that which only lays out
    std::string sax;       // events; those up to the error when it is refused
};

// `ignoresDeclaredEncoding`: the bytes are UTF-8 whatever they declare.
PeerTraces askPeer(std::string_view bytes, bool ignoresDeclaredEncoding);

} // namespace tibxml::reader::test
