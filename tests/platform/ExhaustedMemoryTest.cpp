#include "FailingAllocation.h"

#include <TibXml/platform/CString.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/Stream.h>
#include <TibXml/platform/Utf.h>
#include <TibXml/platform/Variant.h>

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <ostream>
#include <string>

namespace {

/// Whether a call throws the right thing when memory ran out and nothing otherwise.
template <class Call>
bool throwsBadAlloc(FailingAllocation const& failing, Call call) {
    try {
        call();
        return !failing.happened();
    } catch (std::bad_alloc const&) {
        return failing.happened();
    }
}

template <class Call>
bool raisesOutOfMemory(FailingAllocation const& failing, Call call) {
    try {
        call();
        return !failing.happened();
    } catch (_com_error const& error) {
        return failing.happened() && error.Error() == E_OUTOFMEMORY;
    }
}

TEST(ExhaustedMemory, WideStringsAreMadeOrThrow) {
    CString const shared{L"abc"};
    failEveryAllocation(4, [&](auto const& failing) {
        return throwsBadAlloc(failing, [&] {
            CString const text{L"text"};
            CString const sum = shared + text + L"more";
            CString const part = sum.Mid(1, 3);
            CString const repeated{L'x', 20};
            CString const joined = L"front" + part;
        });
    });
}

struct Change {
    char const* name;
    void (*apply)(CString&);

    /// Without it a test would be named after the addresses in here.
    friend std::ostream& operator<<(std::ostream& out, Change const& change) {
        return out << change.name;
    }
};

class ChangedString : public testing::TestWithParam<Change> {};

TEST_P(ChangedString, IsWhatItWasAfterAFailure) {
    CString const original{L"a.b.c"};
    failEveryAllocation(1, [&](auto const& failing) {
        CString text{original};
        auto const right = throwsBadAlloc(failing, [&] { GetParam().apply(text); });
        return right && original == L"a.b.c" && (!failing.happened() || text == original);
    });
}

INSTANTIATE_TEST_SUITE_P(
    Operations, ChangedString,
    testing::Values(Change{"assign", [](CString& text) { text = L"other"; }},
                    Change{"append", [](CString& text) { text += L"other"; }},
                    Change{"append itself", [](CString& text) { text += text; }},
                    Change{"append character", [](CString& text) { text += L'x'; }},
                    Change{"replace text", [](CString& text) { text.Replace(L".", L"::"); }},
                    Change{"replace character", [](CString& text) { text.Replace(L'.', L':'); }},
                    Change{"preallocate", [](CString& text) { text.Preallocate(100); }},
                    Change{"buffer",
                           [](CString& text) {
                               text.GetBuffer(100);
                               text.ReleaseBuffer();
                           }}),
    [](auto const& test) {
        std::string name = test.param.name;
        std::erase(name, ' ');
        return name;
    });

TEST(ExhaustedMemory, StringsOfTheEngineAreNull) {
    failEveryAllocation(3, [](auto const& failing) {
        auto* const one = SysAllocString(L"abc");
        auto* const two = SysAllocStringLen(nullptr, 10);
        auto* const three = tibxml::platform::bstrFromUtf8("abc");
        auto const all = one != nullptr && two != nullptr && three != nullptr;
        for (auto* const text : {one, two, three})
            SysFreeString(text);
        return all != failing.happened();
    });
}

TEST(ExhaustedMemory, ArraysAreNull) {
    failEveryAllocation(2, [](auto const& failing) {
        auto* const array = SafeArrayCreateVector(VT_UI1, 0, 10);
        SafeArrayDestroy(array);
        return (array == nullptr) == failing.happened();
    });
    auto* const array = SafeArrayCreateVector(VT_UI1, 0, 10);
    failEveryAllocation(2, [&](auto const& failing) {
        SAFEARRAY* copy = array;
        auto const code = SafeArrayCopy(array, &copy);
        auto const right = failing.happened() ? code == E_OUTOFMEMORY && copy == nullptr
                                              : code == S_OK && copy != nullptr;
        SafeArrayDestroy(copy);
        return right;
    });
    SafeArrayDestroy(array);
}

TEST(ExhaustedMemory, ACopiedVariantIsWhatItWas) {
    _variant_t const text{L"new"};
    failEveryAllocation(1, [&](auto const& failing) {
        VARIANT target{};
        target.vt = VT_INT;
        target.intVal = 7;
        auto const code = VariantCopy(&target, &text);
        auto const right = failing.happened()
                               ? code == E_OUTOFMEMORY && target.vt == VT_INT && target.intVal == 7
                               : code == S_OK && target.vt == VT_BSTR;
        VariantClear(&target);
        return right;
    });
}

TEST(ExhaustedMemory, OwnedStringsAndVariantsRaise) {
    auto* const string = SysAllocString(L"abc");
    failEveryAllocation(8, [&](auto const& failing) {
        return raisesOutOfMemory(failing, [&] {
            _bstr_t text{L"abc"};
            _bstr_t const copied{string, true};
            _bstr_t empty;
            empty.GetBSTR() = nullptr;
            text.Assign(string);
            SysFreeString(text.copy());
            _variant_t const variant{L"abc"};
            // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): tested
            _variant_t const copy{variant};
        });
    });
    SysFreeString(string);
}

TEST(ExhaustedMemory, AnAdoptedStringIsFreedAtAnyRate) {
    failEveryAllocation(2, [](auto const& failing) {
        return raisesOutOfMemory(failing, [] {
            auto* const string = SysAllocString(L"abc");
            if (string == nullptr) _com_issue_error(E_OUTOFMEMORY);
            _bstr_t const adopted{string, false};
        });
    });
}

TEST(ExhaustedMemory, ErrorInformationAnswersACode) {
    failEveryAllocation(2, [](auto const& failing) {
        ICreateErrorInfo* info = nullptr;
        wchar_t text[] = L"text";
        auto code = CreateErrorInfo(&info);
        if (info != nullptr) code = info->SetDescription(text);
        if (info != nullptr) info->Release();
        return code == (failing.happened() ? E_OUTOFMEMORY : S_OK);
    });
}

TEST(ExhaustedMemory, AnErrorsDescriptionRaises) {
    ICreateErrorInfo* maker = nullptr;
    ASSERT_EQ(CreateErrorInfo(&maker), S_OK);
    wchar_t text[] = L"text";
    ASSERT_EQ(maker->SetDescription(text), S_OK);
    void* info = nullptr;
    ASSERT_EQ(maker->QueryInterface(IID_IErrorInfo, &info), S_OK);
    maker->Release();
    _com_error const error{E_FAIL, static_cast<IErrorInfo*>(info)};
    failEveryAllocation(2, [&](auto const& failing) {
        return raisesOutOfMemory(failing, [&] { error.Description(); });
    });
}

TEST(ExhaustedMemory, StreamsAnswerACodeOrNull) {
    failEveryAllocation(3, [](auto const& failing) {
        auto* const stream = SHCreateMemStream(reinterpret_cast<BYTE const*>("abc"), 3);
        if (stream != nullptr) stream->Release();
        return (stream == nullptr) == failing.happened();
    });
    failEveryAllocation(2, [](auto const& failing) {
        // Long enough for the converted path to need memory of its own.
        IStream* stream = nullptr;
        auto const code =
            SHCreateStreamOnFileW(L"/dev/../dev/../dev/../dev/null", STGM_READ, &stream);
        if (stream != nullptr) stream->Release();
        return code == (failing.happened() ? E_OUTOFMEMORY : S_OK);
    });
}

TEST(ExhaustedMemory, AMemoryStreamThatCannotGrowIsWhatItWas) {
    auto* const stream = SHCreateMemStream(reinterpret_cast<BYTE const*>("abc"), 3);
    std::string const content(10000, 'x');
    failEveryAllocation(2, [&](auto const& failing) {
        ULONG done = 9;
        STATSTG status{};
        IStream* clone = nullptr;
        auto const cloned = stream->Clone(&clone);
        if (failing.happened()) return cloned == E_OUTOFMEMORY && clone == nullptr;
        clone->Release();
        auto const code = stream->Write(content.data(), 10000, &done);
        if (!failing.happened()) return code == S_OK && done == 10000;
        stream->Stat(&status, STATFLAG_NONAME);
        return code == E_OUTOFMEMORY && done == 0 && status.cbSize.QuadPart == 3;
    });
    stream->Release();
}

TEST(ExhaustedMemory, AppendedTextThrowsAndChangesNothing) {
    failEveryAllocation(1, [](auto const& failing) {
        std::string text = "abc";
        auto const right = throwsBadAlloc(failing, [&] {
            tibxml::platform::appendUtf8(text, L"0123456789012345678901234567890");
        });
        return right && (!failing.happened() || text == "abc");
    });
}

} // namespace
