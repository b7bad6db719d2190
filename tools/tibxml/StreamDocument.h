#pragma once

#include "InputFile.h"

class WXmlSax;

namespace tibxml::tool {

/// Tells the callbacks of a SAX object what is in a file. Throws `Failure` when the file cannot be
/// read (status failed) or is not well-formed (status not found: "name:line:column: reason"), and
/// what a callback throws. `name` is the file's name in messages.
void streamDocument(WXmlSax& sax, InputFile& input, std::string const& name);

} // namespace tibxml::tool
