// Reads XML into a tree by libxml2's parser: strict, without document type declarations, without
// network, at most 256 elements deep.
#pragma once

#include <string_view>

#include <reader/ByteSource.h>
#include <reader/ReadError.h>
#include <tree/Document.h>

namespace tibxml::reader {

// Reads a document from bytes: the encoding is that of the byte order mark, else the declared one,
// else UTF-8. The document given must be empty; its preservesWhiteSpace is obeyed. False with
// `error` filled and the document empty when the source is not a well-formed document. Throws
// std::bad_alloc, with the document empty.
bool read(tree::Document& document, ByteSource& source, ReadError& error);

// The same from text that is UTF-8 whatever it declares.
bool readUtf8(tree::Document& document, std::string_view text, ReadError& error);

} // namespace tibxml::reader
