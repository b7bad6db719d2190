#include <TibXml/platform/ComRuntime.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

TEST(Module, FindsLoadedModulesByName) {
    EXPECT_NE(GetModuleHandleA("libc.so.6"), nullptr);
    EXPECT_NE(GetModuleHandleA("libstdc++.so.6"), nullptr);
}

TEST(Module, NullIsTheProgram) {
    auto* const program = ::dlopen(nullptr, RTLD_LAZY);
    EXPECT_EQ(GetModuleHandleA(nullptr), program);
    ::dlclose(program);
}

TEST(Module, DoesNotFindWhatIsNotLoaded) {
    EXPECT_EQ(GetModuleHandleA("UnitTestMarker.dll"), nullptr);
    EXPECT_EQ(GetModuleHandleA(""), nullptr);
    EXPECT_EQ(GetModuleHandleA("libc.so"), nullptr);
    EXPECT_EQ(GetModuleHandleA("LIBC.SO.6"), nullptr);
}

TEST(Module, FindsAModuleByItsFileNameWhileItIsLoaded) {
    // The module is known to the loader by its path only: the folder is not on any search path.
    auto* const module = ::dlopen(UNIT_TEST_MARKER, RTLD_LAZY);
    ASSERT_NE(module, nullptr) << ::dlerror();
    EXPECT_EQ(GetModuleHandleA("UnitTestMarker.dll"), module);
    EXPECT_EQ(GetModuleHandleA(UNIT_TEST_MARKER), module);
    // Looking kept no reference, so this one was the last.
    ::dlclose(module);
    EXPECT_EQ(GetModuleHandleA("UnitTestMarker.dll"), nullptr);
    EXPECT_EQ(GetModuleHandleA(UNIT_TEST_MARKER), nullptr);
}

} // namespace
