// Encodings that the system converts to, and which characters they have.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <output/Serializer.h>

namespace tibxml::output {

/// The system's character set conversion from UTF-8.
class Converter {
public:
    /// Throws EncodingError for an encoding that the system does not know.
    explicit Converter(std::string const& encoding);
    Converter(Converter const&) = delete;
    Converter& operator=(Converter const&) = delete;
    ~Converter();

    /// Whether the encoding has this one character, so that it is the same one when it is read:
    /// some have bytes for two and give the other one back. Forgets what was converted before.
    bool canConvert(std::string_view character);

    /// Converts a piece of whole characters, and at the end what brings an encoding with shift
    /// states back to its start. Throws EncodingError for a character that the encoding does not
    /// have, and what the sink throws.
    void convert(std::string_view utf8, Sink& bytes);
    void finish(Sink& bytes);

private:
    bool isReadAs(std::string_view character, std::string_view bytes);

    void* handle_;
    void* back_;
};

/// The characters that an encoding has.
class Repertoire {
public:
    /// Throws EncodingError for an encoding that the system does not know.
    explicit Repertoire(std::string_view encoding);

    bool has(char32_t character);

    /// Throws EncodingError when a text of whole characters holds one that the encoding does not
    /// have; `where` says for people where it would stand.
    void demand(std::string_view text, std::string_view where);

private:
    enum class Answer : unsigned char { unknown, yes, no };

    bool ask(char32_t character);

    std::string encoding_;
    Converter converter_;
    std::vector<Answer> answers_; // by character: asking costs more than remembering
};

} // namespace tibxml::output
