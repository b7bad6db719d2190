#pragma once

#include <TibXml/platform/Export.h>

/// What can be done to a file by its path. A path which is null, empty or has no UTF-8 form names
/// no file. Nothing here reports why it failed. All of them throw `std::bad_alloc`.
namespace TibUtils::SystemIO::File {

/// Takes the name `path`: makes an empty file which only the current user may read and write, or
/// leaves the file that is there, with its content, as it is. True when there is now a file that
/// can be written to; false for directories.
TIBXML_API bool ProbeCreateFile(wchar_t const* path);

/// Removes the file; of a symbolic link, the link. False when it was not there or could not be
/// removed, and for directories, which stay.
TIBXML_API bool Delete(wchar_t const* path);

/// Whether there is a file (anything but a directory) at `path`; symbolic links are followed, so
/// one to nothing is not a file. False, too, when it cannot be found out.
TIBXML_API bool Exists(wchar_t const* path);

} // namespace TibUtils::SystemIO::File
