// Where documents are read from: paths, streams and strings.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <TibXml/platform/Variant.h>
#include <reader/ByteSource.h>
#include <reader/ReadError.h>

namespace tibxml::com {

// Whether a variant names something to load from or save to: a string or an object.
bool isSource(VARIANT const& source) noexcept;

// A path or `file:` URL as UTF-8, empty when it is no Unicode text. Throws std::bad_alloc.
std::string pathOf(BSTR text);

// What becomes of a source once it is open: both functions answer as reader::read does.
class SourceReader {
public:
    virtual bool readBytes(reader::ByteSource& source, reader::ReadError& error) = 0;
    virtual bool readText(std::wstring_view text, reader::ReadError& error) = 0;

protected:
    ~SourceReader() = default;
};

// All answer what the reader does, or false with the error filled when there is nothing that it can
// read.
//
// The path is tried as it is, then as a file: URL, then with its %XX decoded. `location` becomes
// the absolute path of the file that was read.
bool readFile(SourceReader& reader, std::string const& path, std::string& location,
              reader::ReadError& error);

// The first of those that is there and may be read; empty when none is. Throws std::bad_alloc.
std::string existingFile(std::string const& path);

// Hands the bytes of a file to `use`; false when it cannot be opened. Throws what `use` throws.
bool useFile(std::string const& path, std::function<void(reader::ByteSource&)> const& use);

// From the current position of an object that offers ISequentialStream or IStream. Throws what that
// throws, once the reader is done.
bool readStream(SourceReader& reader, IUnknown* object, reader::ReadError& error);

// Up to the first NUL.
bool readWide(SourceReader& reader, BSTR text, reader::ReadError& error);

} // namespace tibxml::com
