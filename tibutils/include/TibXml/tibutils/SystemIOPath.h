#pragma once

#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

namespace TibUtils::SystemIO::Path {

/// The full path of a new temporary file which no other process has or gets. The file is made,
/// empty, so that the name is taken at once, and only the current user may read and write it. The
/// caller owns the file and deletes it (see `File::Delete`).
///
/// `directory` is where the file lies; null or empty for the user's directory for temporary files
/// (the environment variable TMPDIR, or the system's default without it). `prefix` is what the
/// file's name begins with, null for "tib"; `extension` is what it ends with, with its dot if it
/// shall have one, null for ".tmp". Neither may hold a "/".
///
/// Empty when no file could be made: no such directory, no right to write there, no space, a name
/// which is too long or has no UTF-8 form. Throws `std::bad_alloc`.
TIBXML_API CString GetTempFileNameW(wchar_t const* directory, wchar_t const* prefix,
                                    wchar_t const* extension);

} // namespace TibUtils::SystemIO::Path
