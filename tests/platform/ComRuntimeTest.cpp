#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/ComRuntime.h>

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr CLSID CLSID_Thing{0x11, 0, 0, {}};
constexpr CLSID CLSID_Careless{0x12, 0, 0, {}};
constexpr CLSID CLSID_Unknown{0x13, 0, 0, {}};
constexpr IID IID_IThing{0x21, 0, 0, {}};

class Thing final : public IUnknown {
public:
    HRESULT QueryInterface(REFIID iid, void** object) noexcept override {
        *object = iid == IID_IUnknown || iid == IID_IThing ? this : nullptr;
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    ULONG AddRef() noexcept override { return ++references; }

    ULONG Release() noexcept override { return --references; }

    ULONG references = 0;
};

Thing thing;

HRESULT createThing(REFIID iid, void** object) noexcept {
    return thing.QueryInterface(iid, object);
}

HRESULT createCarelessly(REFIID /*iid*/, void** object) noexcept {
    *object = &thing;
    return E_OUTOFMEMORY;
}

constexpr std::array classes{tibxml::platform::ComClass{CLSID_Thing, createThing},
                             tibxml::platform::ComClass{CLSID_Careless, createCarelessly}};

} // namespace

std::span<tibxml::platform::ComClass const> tibxml::platform::comClasses() noexcept {
    return classes;
}

namespace {

TEST(ComRuntime, InitialisingAlwaysWorks) {
    EXPECT_EQ(CoInitialize(nullptr), S_OK);
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    CoUninitialize();
    CoUninitialize();
    CoUninitialize();
}

TEST(ComRuntime, MakesObjectsOfKnownClasses) {
    void* object = nullptr;
    EXPECT_EQ(CoCreateInstance(CLSID_Thing, nullptr, 0x17, IID_IThing, &object), S_OK);
    EXPECT_EQ(object, &thing);
    EXPECT_EQ(thing.Release(), 0u);
}

TEST(ComRuntime, LeavesNullBehindWhenItFails) {
    struct {
        CLSID clsid;
        IUnknown* outer;
        DWORD context;
        IID iid;
        HRESULT expected;
    } const cases[] = {
        {CLSID_Unknown, nullptr, CLSCTX_ALL, IID_IUnknown, REGDB_E_CLASSNOTREG},
        {CLSID_Thing, nullptr, CLSCTX_ALL, IID_NULL, E_NOINTERFACE},
        {CLSID_Thing, &thing, CLSCTX_ALL, IID_IUnknown, CLASS_E_NOAGGREGATION},
        {CLSID_Thing, nullptr, 0x4, IID_IUnknown, REGDB_E_CLASSNOTREG},
        {CLSID_Careless, nullptr, CLSCTX_ALL, IID_IUnknown, E_OUTOFMEMORY},
    };

    for (auto const& [clsid, outer, context, iid, expected] : cases) {
        void* object = &thing;
        EXPECT_EQ(CoCreateInstance(clsid, outer, context, iid, &object), expected);
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(CoCreateInstance(CLSID_Thing, nullptr, CLSCTX_ALL, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(thing.references, 0u);
}

TEST(ComRuntime, ObjectsRunFromTheStart) {
    EXPECT_EQ(OleRun(&thing), S_OK);
    EXPECT_EQ(OleRun(nullptr), E_INVALIDARG);
}

} // namespace
