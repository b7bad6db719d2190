// Reads XML into a tree by libxml2's parser: strict, without document type declarations, without
// network, at most 256 elements deep.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <tree/Document.h>

namespace tibxml::reader {

// Where the bytes of a document come from.
class ByteSource {
public:
    // Puts at most `size` bytes into `buffer`; returns how many, 0 at the end, negative on failure.
    virtual std::ptrdiff_t read(char* buffer, std::size_t size) noexcept = 0;

protected:
    ~ByteSource() = default;
};

// Why a document could not be read. Lines and columns count from 1, columns in characters; the
// offset counts bytes of UTF-8. All zero and empty when all went well.
struct ReadError {
    std::uint32_t code = 0;
    std::string reason;
    std::string sourceLine;
    long line = 0;
    long column = 0;
    long offset = 0;
};

// A document type declaration, even an empty one.
inline constexpr std::uint32_t errorDocumentType = 0xC00CE584;
// More than maximumDepth elements inside each other.
inline constexpr std::uint32_t errorTooDeep = 0xC00CE586;
// The source failed.
inline constexpr std::uint32_t errorSource = 0xC00CE587;
// Any other error of well-formedness has this code with the parser's own number added.
inline constexpr std::uint32_t errorNotWellFormed = 0xC00CE000;

inline constexpr int maximumDepth = 256;

// Reads a document from bytes: the encoding is that of the byte order mark, else the declared one,
// else UTF-8. The document given must be empty; its preservesWhiteSpace is obeyed. False with
// `error` filled and the document empty when the source is not a well-formed document. Throws
// std::bad_alloc, with the document empty.
bool read(tree::Document& document, ByteSource& source, ReadError& error);

// The same from text that is UTF-8 whatever it declares.
bool readUtf8(tree::Document& document, std::string_view text, ReadError& error);

} // namespace tibxml::reader
