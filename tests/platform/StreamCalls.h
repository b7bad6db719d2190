#pragma once

#include <TibXml/platform/Stream.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

// The calls of a stream in the terms of a test: strings in, strings and codes out.

struct ReadResult {
    HRESULT code;
    std::string bytes;

    friend bool operator==(ReadResult const&, ReadResult const&) = default;
};

inline ReadResult readFrom(IStream* stream, ULONG count) {
    std::string buffer(count, '?');
    ULONG got = 99;
    auto const code = stream->Read(buffer.data(), count, &got);
    buffer.resize(got);
    return {code, buffer};
}

inline HRESULT writeTo(IStream* stream, std::string_view bytes) {
    ULONG done = 99;
    auto const code = stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &done);
    EXPECT_EQ(done, SUCCEEDED(code) ? bytes.size() : 0u);
    return code;
}

inline HRESULT seek(IStream* stream, LONGLONG move, DWORD origin, ULONGLONG* position = nullptr) {
    ULARGE_INTEGER reached{};
    auto const code = stream->Seek({move}, origin, &reached);
    if (position != nullptr) *position = reached.QuadPart;
    return code;
}

inline ULONGLONG positionOf(IStream* stream) {
    ULONGLONG position = 0;
    EXPECT_EQ(seek(stream, 0, STREAM_SEEK_CUR, &position), S_OK);
    return position;
}

inline ULONGLONG sizeOf(IStream* stream) {
    STATSTG status{};
    EXPECT_EQ(stream->Stat(&status, STATFLAG_NONAME), S_OK);
    return status.cbSize.QuadPart;
}
