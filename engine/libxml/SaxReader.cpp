#include <reader/SaxReader.h>

#include "SaxParser.h"
#include "TextSource.h"

namespace tibxml::reader {

bool readSax(SaxEvents& events, ByteSource& source, ReadError& error) {
    error = {};
    return SaxParser{events, source, EncodingRule::detect, error}.runWithEnds();
}

bool readSaxUtf8(SaxEvents& events, std::string_view text, ReadError& error) {
    TextSource source{text};
    error = {};
    return SaxParser{events, source, EncodingRule::alwaysUtf8, error}.runWithEnds();
}

} // namespace tibxml::reader
