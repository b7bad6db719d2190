#pragma once

#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

#include <string>
#include <string_view>

namespace TibUtils::DataEncoding {

/// The UTF-8 form of a wide text. What is not a Unicode character (a surrogate, anything above
/// U+10FFFF) becomes U+FFFD, the replacement character, one for each. NULs are encoded like any
/// other character. Throws `std::bad_alloc`.
TIBXML_API std::string Utf8Encode(std::wstring_view wide);

/// The wide form of a UTF-8 text. Whatever is ill-formed becomes U+FFFD: one for each byte that
/// cannot begin or go on with a character, and one for a character that was begun well but is not
/// finished, also at the end of the text. Throws `std::bad_alloc`, and `std::length_error` when the
/// result is longer than a string can be.
TIBXML_API CString Utf8Decode(std::string_view utf8);

/// Decodes UTF-8 which comes in pieces that may be cut anywhere, also in the middle of a character.
/// The results put together are what `Utf8Decode` makes of the pieces put together.
class TIBXML_API Utf8Decoder {
public:
    /// The wide form of what has come so far and was not returned yet, but for a character whose
    /// end is still missing: that is kept for the next piece. Ill-formed bytes and exceptions as
    /// for `Utf8Decode`; after an exception the piece was not taken.
    CString Decode(std::string_view piece);

    /// Ends the text: U+FFFD when a character is unfinished, else an empty string. The decoder is
    /// as new afterwards.
    CString Finish();

    /// Whether a character has been begun and its end is still missing.
    bool HasUnfinished() const noexcept { return !unfinished_.empty(); }

private:
    std::string unfinished_;
};

} // namespace TibUtils::DataEncoding
