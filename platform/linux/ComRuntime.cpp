#include <TibXml/platform/ComRuntime.h>

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <array>
#include <climits>
#include <string_view>

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

namespace {

/// What is looked for among the loaded modules, and the path of the one that has it.
struct Search {
    std::string_view fileName;
    std::array<char, PATH_MAX> path;
};

int matchFileName(dl_phdr_info* info, std::size_t /*size*/, void* context) noexcept {
    auto& search = *static_cast<Search*>(context);
    std::string_view const path{info->dlpi_name == nullptr ? "" : info->dlpi_name};
    auto const fileName = path.substr(path.rfind('/') + 1);
    if (fileName != search.fileName || path.size() >= search.path.size()) return 0;
    // Copied, because the module may be unloaded by another thread once the walk is over.
    search.path[path.copy(search.path.data(), path.size())] = '\0';
    return 1;
}

HMODULE loadedHandle(char const* name) noexcept {
    auto* const handle = ::dlopen(name, RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr) ::dlclose(handle);
    return handle;
}

} // namespace

HMODULE GetModuleHandleA(char const* name) noexcept {
    if (name == nullptr) return loadedHandle(nullptr);
    if (*name == '\0') return nullptr;
    if (auto* const handle = loadedHandle(name)) return handle;
    Search search{name, {}};
    if (::dl_iterate_phdr(matchFileName, &search) == 0) return nullptr;
    return loadedHandle(search.path.data());
}
