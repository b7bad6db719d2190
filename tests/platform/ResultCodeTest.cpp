#include <TibXml/platform/CLibrary.h>
#include <TibXml/platform/WindowsTypes.h>

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using tibxml::platform::resultFromErrno;

TEST(ResultCode, HasThePlatformsValues) {
    struct {
        HRESULT code;
        std::uint32_t value;
    } const cases[] = {{S_OK, 0},
                       {S_FALSE, 1},
                       {E_NOTIMPL, 0x80004001},
                       {E_NOINTERFACE, 0x80004002},
                       {E_POINTER, 0x80004003},
                       {E_ABORT, 0x80004004},
                       {E_FAIL, 0x80004005},
                       {E_UNEXPECTED, 0x8000FFFF},
                       {E_ACCESSDENIED, 0x80070005},
                       {E_OUTOFMEMORY, 0x8007000E},
                       {E_INVALIDARG, 0x80070057},
                       {CLASS_E_NOAGGREGATION, 0x80040110},
                       {REGDB_E_CLASSNOTREG, 0x80040154}};

    for (auto const& [code, value] : cases)
        EXPECT_EQ(static_cast<std::uint32_t>(code), value);
}

TEST(ResultCode, TheSignTellsFailure) {
    EXPECT_TRUE(SUCCEEDED(S_OK) && SUCCEEDED(S_FALSE) && SUCCEEDED(0x40000));
    EXPECT_TRUE(FAILED(E_FAIL) && FAILED(E_OUTOFMEMORY) && FAILED(-1));
    EXPECT_FALSE(FAILED(S_FALSE) || SUCCEEDED(E_FAIL));
}

TEST(ResultCode, CarriesSystemErrors) {
    EXPECT_EQ(static_cast<std::uint32_t>(HRESULT_FROM_WIN32(2)), 0x80070002u);
    EXPECT_EQ(HRESULT_FROM_WIN32(0), S_OK);
    EXPECT_EQ(HRESULT_FROM_WIN32(static_cast<DWORD>(E_FAIL)), E_FAIL);
    EXPECT_EQ(HRESULT_FROM_WIN32(14), E_OUTOFMEMORY);
}

TEST(ResultCode, ComesFromErrno) {
    EXPECT_EQ(resultFromErrno(ENOENT), HRESULT_FROM_WIN32(2));
    EXPECT_EQ(resultFromErrno(ENOTDIR), HRESULT_FROM_WIN32(3));
    EXPECT_EQ(resultFromErrno(EMFILE), HRESULT_FROM_WIN32(4));
    EXPECT_EQ(resultFromErrno(EACCES), E_ACCESSDENIED);
    EXPECT_EQ(resultFromErrno(EISDIR), E_ACCESSDENIED);
    EXPECT_EQ(resultFromErrno(EROFS), E_ACCESSDENIED);
    EXPECT_EQ(resultFromErrno(ENOMEM), E_OUTOFMEMORY);
    EXPECT_EQ(resultFromErrno(EEXIST), HRESULT_FROM_WIN32(80));
    EXPECT_EQ(resultFromErrno(ENOSPC), HRESULT_FROM_WIN32(112));
    EXPECT_EQ(resultFromErrno(ENAMETOOLONG), HRESULT_FROM_WIN32(206));
}

TEST(ResultCode, NoErrnoIsASuccess) {
    for (int error = -1; error < 200; ++error)
        EXPECT_TRUE(FAILED(resultFromErrno(error))) << error;
}

TEST(Guid, ComparesEveryField) {
    constexpr GUID one{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    constexpr GUID same{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    static_assert(one == same);
    GUID const others[] = {{9, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}},
                           {1, 9, 3, {4, 5, 6, 7, 8, 9, 10, 11}},
                           {1, 2, 9, {4, 5, 6, 7, 8, 9, 10, 11}},
                           {1, 2, 3, {9, 5, 6, 7, 8, 9, 10, 11}},
                           {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 12}}};
    for (auto const& other : others)
        EXPECT_TRUE(one != other);
    EXPECT_TRUE(GUID_NULL == IID_NULL);
}

} // namespace
