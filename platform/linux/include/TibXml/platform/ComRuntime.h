#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/IUnknown.h>
#include <TibXml/platform/WindowsTypes.h>

#include <span>

/// Where an object may live. Everything lives in the process here, so a context has to allow that.
inline constexpr DWORD CLSCTX_INPROC_SERVER = 0x1;
inline constexpr DWORD CLSCTX_ALL = 0x17;

inline constexpr DWORD COINIT_APARTMENTTHREADED = 0x2;
inline constexpr DWORD COINIT_MULTITHREADED = 0x0;

/// Objects need no preparation of the thread here; the calls are there so that one source serves
/// both platforms. They return `S_OK` every time.
TIBXML_API HRESULT CoInitialize(void* reserved) noexcept;
TIBXML_API HRESULT CoInitializeEx(void* reserved, DWORD model) noexcept;
TIBXML_API void CoUninitialize() noexcept;

/// Makes an object of a class and stores its interface `iid` in `*object`, with a reference that
/// the caller releases. `*object` is null after any failure: `E_POINTER` when `object` is null,
/// `CLASS_E_NOAGGREGATION` when `outer` is not, `REGDB_E_CLASSNOTREG` for an unknown class or a
/// context without `CLSCTX_INPROC_SERVER`, `E_NOINTERFACE`, `E_OUTOFMEMORY`.
TIBXML_API HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid,
                                    void** object) noexcept;

/// Brings an object into its running state, in which objects are from the start here: `S_OK`, or
/// `E_INVALIDARG` for null.
TIBXML_API HRESULT OleRun(IUnknown* object) noexcept;

namespace tibxml::platform {

/// A class that can be made by its identifier. `create` makes an object and answers as
/// `CoCreateInstance` does.
struct ComClass {
    CLSID clsid;
    HRESULT (*create)(REFIID iid, void** object) noexcept;
};

/// The classes that there are. The engine defines this function, not the platform: the table is a
/// constant that the linker finds, so it is there however early an object is wanted.
std::span<ComClass const> comClasses() noexcept;

} // namespace tibxml::platform

/// The handle of a module that is loaded in this process, found by its path, the name it was built
/// with or its file name, with upper and lower case as they are; null when no such module is
/// loaded. Nothing is loaded and the module is not kept loaded. A null name gives the program's own
/// handle.
TIBXML_API HMODULE GetModuleHandleA(char const* name) noexcept;
