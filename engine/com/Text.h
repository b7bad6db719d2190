// Strings on their way across the engine's boundary.
#pragma once

#include <string>
#include <string_view>

#include <TibXml/platform/Variant.h>

namespace tibxml::com {

// A string for the caller, who frees it. Throws std::bad_alloc.
BSTR toBstr(std::string_view utf8);
BSTR toBstr(std::wstring_view text);

// The characters of a string that a caller passed; null counts as empty.
std::wstring_view viewOf(BSTR text) noexcept;

// Whether XML can hold every one of the characters.
bool isXmlText(std::wstring_view text) noexcept;

// The characters of a string that a caller passed, as UTF-8. Throws Failure (E_INVALIDARG) when it
// holds characters that XML cannot hold: control characters, surrogates, U+FFFE, U+FFFF and values
// beyond Unicode.
std::string xmlText(BSTR text);

// CR LF and CR become LF, as they do when a document is read.
void normalizeLineEnds(std::string& text);

// A string in a variant of which the caller becomes the owner.
VARIANT stringVariant(std::string_view utf8);

// The string in a variant, which keeps it. Throws Failure with the code for another kind.
BSTR stringIn(VARIANT const& value, HRESULT otherwise);

// An integer or boolean in a variant. Throws Failure with the code for another kind.
LONG integerIn(VARIANT const& value, HRESULT otherwise);

} // namespace tibxml::com
