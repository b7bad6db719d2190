// The encoding of a saved document.
#pragma once

#include <stdexcept>
#include <string_view>

#include <tree/Document.h>

namespace tibxml::output {

// Why a document cannot be saved in its encoding; what() is a sentence for people and names the
// encoding, and the character and what it stands in where one is the cause.
class EncodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The encoding that the document's XML declaration names, as written there; empty when it names
// none. Valid until the declaration changes.
std::string_view declaredEncoding(tree::Document const& document) noexcept;

} // namespace tibxml::output
