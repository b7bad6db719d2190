#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/WindowsTypes.h>

/// The handle of a module that is loaded in this process, found by its path, the name it was built
/// with or its file name, with upper and lower case as they are; null when no such module is
/// loaded. Nothing is loaded and the module is not kept loaded. A null name gives the program's own
/// handle.
TIBXML_API HMODULE GetModuleHandleA(char const* name) noexcept;
