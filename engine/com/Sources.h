// Where loads read from: paths, streams and strings.
#pragma once

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
// The path is tried as it is, then as a file: URL, then with its %XX decoded. `location` becomes
// the absolute path of the file that was read.
bool readFile(tree::Document& document, std::string const& path, std::string& location,
              reader::ReadError& error);

// From the current position of an object that offers ISequentialStream or IStream.
bool readStream(tree::Document& document, IUnknown* object, reader::ReadError& error);

// Up to the first NUL.
bool readWide(tree::Document& document, BSTR text, reader::ReadError& error);

} // namespace tibxml::com
