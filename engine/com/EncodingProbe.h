// Whether what is saved in an encoding can be read again.
#pragma once

#include <tree/Document.h>

namespace tibxml::com {

// Throws output::EncodingError when a document with this one's XML declaration, saved in the
// encoding that it names, would not be understood by the reader: nothing of UTF-7 looks like an XML
// declaration, for one. Found out by doing so with a small document, except for encodings of which
// it is known. Throws std::bad_alloc.
void checkReadBack(tree::Document const& document);

} // namespace tibxml::com
