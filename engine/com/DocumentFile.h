// Saving documents.
#pragma once

#include <string>
#include <string_view>

#include <TibXml/platform/Stream.h>
#include <tree/Document.h>

namespace tibxml::com {

// Writes a document to a file, which holds either its old content or the whole new one, whatever
// happens, and keeps its permissions. What is not a regular file (a device, a pipe) is written in
// place. Throws Failure with the code of the system's error, and output::EncodingError.
void saveToFile(tree::Document const& document, std::string const& path);

// Writes a document to an object that offers ISequentialStream or IStream. Throws Failure with the
// stream's code, and output::EncodingError before anything was written.
void saveToStream(tree::Document const& document, IUnknown* object);

// Writes bytes to a stream. Throws Failure with the stream's code.
void writeToStream(std::string_view bytes, ISequentialStream& stream);

} // namespace tibxml::com
