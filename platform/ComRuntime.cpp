#include <TibXml/platform/ComRuntime.h>

#include <algorithm>

HRESULT CoInitialize(void* /*reserved*/) noexcept {
    return S_OK;
}

HRESULT CoInitializeEx(void* /*reserved*/, DWORD /*model*/) noexcept {
    return S_OK;
}

void CoUninitialize() noexcept {}

HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid,
                         void** object) noexcept {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    if ((context & CLSCTX_INPROC_SERVER) == 0) return REGDB_E_CLASSNOTREG;
    auto const classes = tibxml::platform::comClasses();
    auto const found = std::find_if(classes.begin(), classes.end(),
                                    [&](auto const& known) { return known.clsid == clsid; });
    if (found == classes.end()) return REGDB_E_CLASSNOTREG;
    auto const created = found->create(iid, object);
    if (FAILED(created)) *object = nullptr;
    return created;
}

HRESULT OleRun(IUnknown* object) noexcept {
    return object == nullptr ? E_INVALIDARG : S_OK;
}
