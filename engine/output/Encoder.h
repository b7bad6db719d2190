// From the serialiser's UTF-8 to the bytes of a file, in the encoding that the document declares.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <output/Serializer.h>

#include "Converter.h"

namespace tibxml::output {

class Encoder : public Sink {
public:
    virtual ~Encoder() = default;

    /// Must be called after the last piece.
    virtual void finish() = 0;

    /// What the encoding has; null when that is every character.
    virtual Repertoire* repertoire() noexcept { return nullptr; }
};

/// Writes to `bytes`, which must outlive it, in the encoding of that name; case does not matter and
/// an empty name means UTF-8. Throws EncodingError when the encoding is unknown.
std::unique_ptr<Encoder> makeEncoder(std::string_view encoding, Sink& bytes);

/// The content of an XML declaration to write where the text is not bytes: without the encoding,
/// unless that is UTF-16, which wide text was always allowed to claim.
std::string withoutEncoding(std::string_view declaration);

} // namespace tibxml::output
