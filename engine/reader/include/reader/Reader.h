// Reads XML into a tree: strict, without document type declarations, at most 256 elements deep. No
// tag, comment, CDATA section or processing instruction may be longer than 1 GiB; documents and
// texts may.
#pragma once

#include <reader/Input.h>
#include <reader/ReadError.h>
#include <tree/Document.h>

namespace tibxml::reader {

/// Reads a document into an empty one, whose preservesWhiteSpace is obeyed. False with `error`
/// filled and the document empty if the input is not a well-formed document. Throws std::bad_alloc,
/// with the document empty.
bool read(tree::Document& document, Input const& input, ReadError& error);

} // namespace tibxml::reader
