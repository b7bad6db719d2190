// How the encoding of a document is found out.
#pragma once

namespace tibxml::reader {

// detect: the byte order mark, else the declaration, else UTF-8. alwaysUtf8: whatever is declared.
enum class EncodingRule { detect, alwaysUtf8 };

} // namespace tibxml::reader
