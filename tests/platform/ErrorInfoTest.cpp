#include <TibXml/platform/ComError.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

IErrorInfo* makeInfo(std::wstring description) {
    ICreateErrorInfo* maker = nullptr;
    EXPECT_EQ(CreateErrorInfo(&maker), S_OK);
    EXPECT_EQ(maker->SetDescription(description.data()), S_OK);
    void* info = nullptr;
    EXPECT_EQ(maker->QueryInterface(IID_IErrorInfo, &info), S_OK);
    EXPECT_EQ(maker->Release(), 1u);
    return static_cast<IErrorInfo*>(info);
}

std::wstring takeText(BSTR text) {
    std::wstring copy{text == nullptr ? L"(null)" : text};
    SysFreeString(text);
    return copy;
}

std::wstring descriptionOf(IErrorInfo* info) {
    BSTR text = nullptr;
    EXPECT_EQ(info->GetDescription(&text), S_OK);
    return takeText(text);
}

ULONG references(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST(ErrorInfo, KeepsWhatItIsTold) {
    ICreateErrorInfo* maker = nullptr;
    ASSERT_EQ(CreateErrorInfo(&maker), S_OK);
    std::wstring source = L"engine";
    std::wstring description = L"bad path";
    std::wstring help = L"help.txt";
    EXPECT_EQ(maker->SetGUID(IID_IErrorInfo), S_OK);
    EXPECT_EQ(maker->SetSource(source.data()), S_OK);
    EXPECT_EQ(maker->SetDescription(description.data()), S_OK);
    EXPECT_EQ(maker->SetHelpFile(help.data()), S_OK);
    EXPECT_EQ(maker->SetHelpContext(17), S_OK);
    void* found = nullptr;
    ASSERT_EQ(maker->QueryInterface(IID_IErrorInfo, &found), S_OK);
    auto* const info = static_cast<IErrorInfo*>(found);
    GUID interfaceId{};
    DWORD context = 0;
    BSTR text = nullptr;
    EXPECT_EQ(info->GetGUID(&interfaceId), S_OK);
    EXPECT_TRUE(interfaceId == IID_IErrorInfo);
    EXPECT_EQ(info->GetSource(&text), S_OK);
    EXPECT_EQ(takeText(text), L"engine");
    EXPECT_EQ(descriptionOf(info), L"bad path");
    EXPECT_EQ(info->GetHelpFile(&text), S_OK);
    EXPECT_EQ(takeText(text), L"help.txt");
    EXPECT_EQ(info->GetHelpContext(&context), S_OK);
    EXPECT_EQ(context, 17u);
    info->Release();
    EXPECT_EQ(maker->Release(), 0u);
}

TEST(ErrorInfo, WhatWasNotSetIsNull) {
    auto* const info = makeInfo(L"x");
    GUID interfaceId = IID_IErrorInfo;
    DWORD context = 1;
    BSTR text = nullptr;
    EXPECT_EQ(info->GetGUID(&interfaceId), S_OK);
    EXPECT_TRUE(interfaceId == GUID_NULL);
    EXPECT_EQ(info->GetSource(&text), S_OK);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(info->GetHelpFile(&text), S_OK);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(info->GetHelpContext(&context), S_OK);
    EXPECT_EQ(context, 0u);
    info->Release();
}

TEST(ErrorInfo, TextsCanBeReplacedAndTakenBack) {
    ICreateErrorInfo* maker = nullptr;
    ASSERT_EQ(CreateErrorInfo(&maker), S_OK);
    std::wstring text = L"one";
    maker->SetDescription(text.data());
    text = L"two";
    maker->SetDescription(text.data());
    void* found = nullptr;
    maker->QueryInterface(IID_IErrorInfo, &found);
    auto* const info = static_cast<IErrorInfo*>(found);
    EXPECT_EQ(descriptionOf(info), L"two");
    EXPECT_EQ(maker->SetDescription(nullptr), S_OK);
    EXPECT_EQ(descriptionOf(info), L"(null)");
    info->Release();
    maker->Release();
}

TEST(ErrorInfo, RefusesNullPointers) {
    auto* const info = makeInfo(L"x");
    EXPECT_EQ(info->GetGUID(nullptr), E_POINTER);
    EXPECT_EQ(info->GetSource(nullptr), E_POINTER);
    EXPECT_EQ(info->GetDescription(nullptr), E_POINTER);
    EXPECT_EQ(info->GetHelpFile(nullptr), E_POINTER);
    EXPECT_EQ(info->GetHelpContext(nullptr), E_POINTER);
    info->Release();
    EXPECT_EQ(CreateErrorInfo(nullptr), E_POINTER);
}

TEST(ErrorInfo, IsTakenOnce) {
    auto* const info = makeInfo(L"once");
    EXPECT_EQ(SetErrorInfo(0, info), S_OK);
    EXPECT_EQ(references(info), 2u);
    IErrorInfo* taken = nullptr;
    EXPECT_EQ(GetErrorInfo(0, &taken), S_OK);
    EXPECT_EQ(taken, info);
    taken->Release();
    taken = info;
    EXPECT_EQ(GetErrorInfo(0, &taken), S_FALSE);
    EXPECT_EQ(taken, nullptr);
    EXPECT_EQ(info->Release(), 0u);
}

TEST(ErrorInfo, NewInformationReplacesTheOld) {
    auto* const old = makeInfo(L"old");
    auto* const fresh = makeInfo(L"fresh");
    SetErrorInfo(0, old);
    SetErrorInfo(0, fresh);
    EXPECT_EQ(references(old), 1u);
    EXPECT_EQ(SetErrorInfo(0, nullptr), S_OK);
    EXPECT_EQ(references(fresh), 1u);
    old->Release();
    fresh->Release();
}

TEST(ErrorInfo, SettingTheSameAgainKeepsIt) {
    auto* const info = makeInfo(L"same");
    SetErrorInfo(0, info);
    SetErrorInfo(0, info);
    EXPECT_EQ(references(info), 2u);
    SetErrorInfo(0, nullptr);
    info->Release();
}

TEST(ErrorInfo, RefusesBadArguments) {
    IErrorInfo* info = nullptr;
    EXPECT_EQ(SetErrorInfo(1, nullptr), E_INVALIDARG);
    EXPECT_EQ(GetErrorInfo(1, &info), E_INVALIDARG);
    EXPECT_EQ(GetErrorInfo(0, nullptr), E_INVALIDARG);
}

TEST(ErrorInfo, BelongsToItsThreadAndEndsWithIt) {
    auto* const mine = makeInfo(L"mine");
    auto* const theirs = makeInfo(L"theirs");
    SetErrorInfo(0, mine);
    std::thread{[theirs] {
        IErrorInfo* found = nullptr;
        EXPECT_EQ(GetErrorInfo(0, &found), S_FALSE);
        SetErrorInfo(0, theirs);
        EXPECT_EQ(references(theirs), 2u);
    }}.join();
    EXPECT_EQ(references(theirs), 1u);
    EXPECT_EQ(references(mine), 2u);
    SetErrorInfo(0, nullptr);
    mine->Release();
    theirs->Release();
}

} // namespace
