#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

inline constexpr IID IID_ITold{1, 0, 0, {}};
inline constexpr IID IID_IUntold{2, 0, 0, {}};

/// Leaves error information for one of its interfaces only.
class Teller final : public tibxml::platform::ComObject<ISupportErrorInfo> {
public:
    HRESULT InterfaceSupportsErrorInfo(REFIID iid) noexcept override {
        return iid == IID_ITold ? S_OK : S_FALSE;
    }
};

IErrorInfo* makeInfo(std::wstring description, std::wstring source = L"engine") {
    ICreateErrorInfo* maker = nullptr;
    EXPECT_EQ(CreateErrorInfo(&maker), S_OK);
    maker->SetDescription(description.data());
    maker->SetSource(source.data());
    maker->SetGUID(IID_ITold);
    void* info = nullptr;
    EXPECT_EQ(maker->QueryInterface(IID_IErrorInfo, &info), S_OK);
    maker->Release();
    return static_cast<IErrorInfo*>(info);
}

void leaveInfo(wchar_t const* description) {
    auto* const info = makeInfo(description);
    SetErrorInfo(0, info);
    info->Release();
}

bool takeInfo() {
    IErrorInfo* info = nullptr;
    if (GetErrorInfo(0, &info) != S_OK) return false;
    info->Release();
    return true;
}

ULONG references(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST(ComError, CarriesACodeAlone) {
    _com_error const error{E_POINTER};
    EXPECT_EQ(error.Error(), E_POINTER);
    EXPECT_EQ(error.ErrorInfo(), nullptr);
    EXPECT_TRUE(!error.Description());
    EXPECT_TRUE(!error.Source());
    EXPECT_TRUE(error.GUID() == GUID_NULL);
}

TEST(ComError, CarriesWhatTheEngineSaid) {
    _com_error const error{E_FAIL, makeInfo(L"bad path")};
    EXPECT_TRUE(error.Description() == _bstr_t{L"bad path"});
    EXPECT_TRUE(error.Source() == _bstr_t{L"engine"});
    EXPECT_TRUE(error.GUID() == IID_ITold);
    auto* const info = error.ErrorInfo();
    EXPECT_EQ(references(info), 2u);
    info->Release();
}

TEST(ComError, TakesOrAddsAReference) {
    auto* const info = makeInfo(L"x");
    {
        _com_error const adding{E_FAIL, info, true};
        EXPECT_EQ(references(info), 2u);
    }
    EXPECT_EQ(references(info), 1u);
    info->AddRef();
    { _com_error const taking{E_FAIL, info}; }
    EXPECT_EQ(info->Release(), 0u);
}

TEST(ComError, CopiesShareTheInformation) {
    static_assert(std::is_nothrow_copy_constructible_v<_com_error>);
    static_assert(std::is_nothrow_copy_assignable_v<_com_error>);
    auto* const info = makeInfo(L"x");
    _com_error const error{E_FAIL, info};
    {
        auto copy = error; // NOLINT(performance-unnecessary-copy-initialization): tested
        EXPECT_EQ(references(info), 2u);
        _com_error other{E_POINTER};
        other = copy;
        EXPECT_EQ(references(info), 3u);
        EXPECT_EQ(other.Error(), E_FAIL);
        auto& same = other;
        other = same;
        EXPECT_EQ(references(info), 3u);
        other = _com_error{E_POINTER};
        EXPECT_EQ(references(info), 2u);
    }
    EXPECT_EQ(references(info), 1u);
}

struct MessageCase {
    HRESULT code;
    wchar_t const* text;
};

TEST(ComError, HasAShortTextForEveryCode) {
    MessageCase const cases[] = {
        {E_POINTER, L"Invalid pointer"},
        {E_OUTOFMEMORY, L"Out of memory"},
        {E_FAIL, L"Unspecified error"},
        {E_NOINTERFACE, L"No such interface supported"},
        {E_INVALIDARG, L"Invalid argument"},
        {REGDB_E_CLASSNOTREG, L"Class not registered"},
        {HRESULT_FROM_WIN32(2), L"File not found"},
        {tibxml::platform::resultCode(0x8004ABCD), L"Unknown error 0x8004ABCD"},
        {0x12, L"Unknown error 0x00000012"}};
    for (auto const& [code, text] : cases)
        EXPECT_STREQ(_com_error{code}.ErrorMessage(), text);
    _com_error copied{E_FAIL};
    copied = _com_error{tibxml::platform::resultCode(0xC00CE584)};
    EXPECT_STREQ(copied.ErrorMessage(), L"Unknown error 0xC00CE584");
}

template <class Raise>
_com_error raised(Raise raise) {
    try {
        raise();
    } catch (_com_error const& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was raised";
    return _com_error{S_OK};
}

TEST(ComError, IsRaisedWithItsInformation) {
    auto const error = raised([] { _com_raise_error(E_FAIL, makeInfo(L"given")); });
    EXPECT_EQ(error.Error(), E_FAIL);
    EXPECT_TRUE(error.Description() == _bstr_t{L"given"});
    EXPECT_EQ(raised([] { _com_raise_error(E_NOTIMPL); }).Error(), E_NOTIMPL);
}

TEST(ComError, AnIssuedCodeLeavesTheThreadsInformation) {
    leaveInfo(L"somebody else's");
    auto const error = raised([] { _com_issue_error(E_OUTOFMEMORY); });
    EXPECT_EQ(error.Error(), E_OUTOFMEMORY);
    EXPECT_TRUE(!error.Description());
    EXPECT_TRUE(takeInfo());
}

TEST(ComError, TakesTheInformationOfASupportedInterface) {
    auto* const object = new Teller;
    leaveInfo(L"mine");
    auto const error = raised([&] { _com_issue_errorex(E_FAIL, object, IID_ITold); });
    EXPECT_EQ(error.Error(), E_FAIL);
    EXPECT_TRUE(error.Description() == _bstr_t{L"mine"});
    EXPECT_FALSE(takeInfo());
    EXPECT_EQ(object->Release(), 0u);
}

TEST(ComError, LeavesTheInformationOfOtherInterfaces) {
    auto* const object = new Teller;
    leaveInfo(L"somebody else's");
    EXPECT_TRUE(!raised([&] { _com_issue_errorex(E_FAIL, object, IID_IUntold); }).Description());
    EXPECT_TRUE(takeInfo());
    EXPECT_EQ(object->Release(), 0u);
}

TEST(ComError, LeavesTheInformationOfObjectsThatLeaveNone) {
    auto* const info = makeInfo(L"x");
    leaveInfo(L"somebody else's");
    EXPECT_TRUE(!raised([&] { _com_issue_errorex(E_FAIL, info, IID_ITold); }).Description());
    EXPECT_TRUE(!raised([] { _com_issue_errorex(E_FAIL, nullptr, IID_ITold); }).Description());
    EXPECT_TRUE(takeInfo());
    info->Release();
}

} // namespace
