// Whether a tree is valid by a schema.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <reader/Reader.h>
#include <tree/Document.h>
#include <validation/Schema.h>

namespace tibxml::validation {

// Something that is wrong with a document.
struct Mismatch {
    std::uint32_t code; // errorInvalid with the processor's own number added
    std::string reason;
    std::uint64_t element; // the element at fault: its number in document order, from 1
    long line = 0;         // see the functions below
};

inline constexpr std::uint32_t errorInvalid = 0xC00CE000;

// The validation stops when it has found as many.
inline constexpr std::size_t mostMismatches = 1000;

// All that is wrong with a document, which must have a root element, in the order in which it
// shows; empty when it is valid. The tree is handed to the schema processor event by event, so
// memory is taken for open elements, for the values that the schema wants to be unique, and for one
// text at a time. Throws std::bad_alloc, and std::length_error for texts above 2 GiB.
std::vector<Mismatch> validate(Schema const& schema, tree::Document const& document);

// Fill in the lines on which the start tags of the elements end, from 1: in the bytes of a file
// that holds the document, or in the text that output::writeXml gives. What is not found there
// keeps line 0. Both throw std::bad_alloc.
void findLines(std::span<Mismatch> mismatches, reader::ByteSource& file);
void findLines(std::span<Mismatch> mismatches, tree::Document const& document);

} // namespace tibxml::validation
