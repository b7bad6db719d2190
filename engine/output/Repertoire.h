// The characters that an encoding has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Converter.h"

namespace tibxml::output {

class Repertoire {
public:
    // Throws EncodingError for an encoding that the system does not know.
    explicit Repertoire(std::string_view encoding);

    bool has(char32_t character);

    // Throws EncodingError when a text of whole characters holds one that the encoding does not
    // have; `where` says for people where it would stand.
    void demand(std::string_view text, std::string_view where);

private:
    enum class Answer : unsigned char { unknown, yes, no };

    bool ask(char32_t character);

    std::string encoding_;
    Converter converter_;
    std::vector<Answer> answers_; // by character: asking costs more than remembering
};

} // namespace tibxml::output
