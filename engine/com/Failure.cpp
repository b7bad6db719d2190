#include "Failure.h"

#include <exception>
#include <new>

#include <TibXml/platform/ComError.h>
#include <TibXml/platform/Utf.h>

namespace tibxml::com {

namespace {

void leaveErrorInfo(REFIID iid, char const* reason) noexcept {
    ICreateErrorInfo* info = nullptr;
    if (FAILED(CreateErrorInfo(&info))) return;
    BSTR const description = platform::bstrFromUtf8(reason);
    wchar_t source[] = L"TibXml";
    info->SetGUID(iid);
    info->SetSource(source);
    info->SetDescription(description);
    SysFreeString(description);
    void* readable = nullptr;
    if (SUCCEEDED(info->QueryInterface(IID_IErrorInfo, &readable))) {
        SetErrorInfo(0, static_cast<IErrorInfo*>(readable));
        static_cast<IErrorInfo*>(readable)->Release();
    }
    info->Release();
}

} // namespace

void leaveMessages(REFIID iid, std::string const& messages) noexcept {
    SetErrorInfo(0, nullptr);
    if (!messages.empty()) leaveErrorInfo(iid, messages.c_str());
}

HRESULT reportException(REFIID iid) noexcept {
    try {
        throw;
    } catch (Failure const& failure) {
        leaveErrorInfo(iid, failure.what());
        return failure.code();
    } catch (std::bad_alloc const&) {
        SetErrorInfo(0, nullptr); // the words of an earlier failure would say the wrong thing
        return E_OUTOFMEMORY;
    } catch (std::length_error const&) {
        SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    } catch (std::exception const& error) { // a bad expression, an impossible encoding
        leaveErrorInfo(iid, error.what());
        return E_FAIL;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

} // namespace tibxml::com
