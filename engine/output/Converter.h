// The system's character set conversion from UTF-8.
#pragma once

#include <string>
#include <string_view>

#include <output/Sink.h>

namespace tibxml::output {

class Converter {
public:
    // Throws EncodingError for an encoding that the system does not know.
    explicit Converter(std::string const& encoding);
    Converter(Converter const&) = delete;
    Converter& operator=(Converter const&) = delete;
    ~Converter();

    // Whether the encoding has this one character, so that it is the same one when it is read:
    // some have bytes for two and give the other one back. Forgets what was converted before.
    bool canConvert(std::string_view character);

    // Converts a piece of whole characters, and at the end what brings an encoding with shift
    // states back to its start. Throws EncodingError for a character that the encoding does not
    // have, and what the sink throws.
    void convert(std::string_view utf8, Sink& bytes);
    void finish(Sink& bytes);

private:
    bool isReadAs(std::string_view character, std::string_view bytes);

    void* handle_;
    void* back_;
};

} // namespace tibxml::output
