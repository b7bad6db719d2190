#pragma once

#include <optional>
#include <span>
#include <string>

#include <TibXml/WXmlValueAccessor.h>

namespace tibxml::tool {

/// A type that values are read and written as.
struct ValueType {
    char const* name;

    /// How the type is called in a sentence: "an integer".
    char const* description;

    /// The value in the form in which it is printed; nothing when it does not read as the type.
    std::optional<std::string> (*read)(WXmlValueAccessor const& value);

    /// Writes a value in that form; false when the text is not of the type.
    bool (*write)(WXmlValueAccessor& value, std::string const& text);

    /// Printed as it is, without a line end after it.
    bool isBinary = false;
};

/// The types that there are; the first is the one that is meant when none is named.
std::span<ValueType const> valueTypes() noexcept;

/// The type of a name, which must be one of these.
ValueType const& valueType(std::string const& name) noexcept;

} // namespace tibxml::tool
