// Reads XML into a tree: strict, without document type declarations, at most 256 elements deep. No
// tag, comment, CDATA section or processing instruction may be longer than 1 GiB; documents and
// texts may.
#pragma once

#include <cstddef>
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

// The same from wide text. What is no Unicode is an error with the code errorSource.
bool readWide(tree::Document& document, std::wstring_view text, ReadError& error);

// As read(), looking at so few bytes at a time, for tests: the result never depends on it.
bool readInSteps(tree::Document& document, ByteSource& source, std::size_t windowSize,
                 ReadError& error);

} // namespace tibxml::reader
