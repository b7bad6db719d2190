// Where loads read from: paths, streams and strings.
#pragma once

#include <functional>
#include <string>

#include <TibXml/platform/Variant.h>
#include <reader/Reader.h>

namespace tibxml::com {

// Whether a variant names something to load from or save to: a string or an object.
bool isSource(VARIANT const& source) noexcept;

// A path or `file:` URL as UTF-8, empty when it is no Unicode text. Throws std::bad_alloc.
std::string pathOf(BSTR text);

// All as reader::read: false with the error filled when there is nothing that can be read or it is
// not a document.
//
// The path is tried as it is, then as a file: URL, then with its %XX decoded.
bool readFile(tree::Document& document, std::string const& path, reader::ReadError& error);

// The first of those that is there and may be read; empty when none is. Throws std::bad_alloc.
std::string existingFile(std::string const& path);

// Hands the bytes of a file to `use`; false when it cannot be opened. Throws what `use` throws.
bool useFile(std::string const& path, std::function<void(reader::ByteSource&)> const& use);

// From the current position of an object that offers ISequentialStream or IStream.
bool readStream(tree::Document& document, IUnknown* object, reader::ReadError& error);

// Up to the first NUL.
bool readWide(tree::Document& document, BSTR text, reader::ReadError& error);

} // namespace tibxml::com
