// Where documents are read from and saved to: paths, streams and strings.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <TibXml/platform/Stream.h>
#include <TibXml/platform/Variant.h>
#include <reader/Input.h>
#include <reader/ReadError.h>

#include "ComPtr.h"

namespace tibxml::com {

/// Whether a variant names something to load from or save to: a string or an object.
bool isSource(VARIANT const& source) noexcept;

/// The object in a variant; null for other variants.
IUnknown* objectIn(VARIANT const& value) noexcept;

/// A path or `file:` URL as UTF-8, empty if it is not Unicode text. Throws std::bad_alloc.
std::string pathOf(BSTR text);

/// The stream in an object that a caller passes: null if the object is null or no stream. Throws
/// what the object throws.
ComPtr<ISequentialStream> streamOf(IUnknown* object);

/// A text up to its first NUL.
reader::Input inputOf(BSTR text) noexcept;

/// Reads an open input: false if there is an error in it.
using Reading = std::function<bool(reader::Input const&)>;

/// Both return what `read` does, or false with the error filled if there is nothing to be read.

/// Opens the file that a caller's name means; `location` becomes its absolute path.
bool readFile(std::string const& name, std::string& location, reader::ReadError& error,
              Reading const& read);

/// From the current position of an object that offers ISequentialStream or IStream. Throws what
/// that throws, after reading.
bool readStream(IUnknown* object, reader::ReadError& error, Reading const& read);

} // namespace tibxml::com
