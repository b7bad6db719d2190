#pragma once

#include <string>

#include <TibXml/WXmlValueAccessor.h>

namespace tibxml::tool {

// How a value of each type is written, from the form in which it is printed. False, with nothing
// written, when the whole text is not such a form. Throw what the setters throw.

bool writeString(WXmlValueAccessor& value, std::string const& text);
bool writeBool(WXmlValueAccessor& value, std::string const& text);
bool writeInt(WXmlValueAccessor& value, std::string const& text);
bool writeInt64(WXmlValueAccessor& value, std::string const& text);
bool writeDouble(WXmlValueAccessor& value, std::string const& text);

/// These also take the form that stands in documents, `(1,2)`, and a size one number for both.
bool writePoint(WXmlValueAccessor& value, std::string const& text);
bool writeSize(WXmlValueAccessor& value, std::string const& text);
bool writeRect(WXmlValueAccessor& value, std::string const& text);

/// `name` is a file, whose bytes are the value. Throws `Failure` when it cannot be read or the
/// target cannot hold bytes.
bool writeBinary(WXmlValueAccessor& value, std::string const& name);

} // namespace tibxml::tool
