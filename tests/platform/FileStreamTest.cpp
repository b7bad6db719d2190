#include "StreamCalls.h"

#include <TibXml/platform/Stream.h>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace {

namespace fs = std::filesystem;

std::string contentOf(fs::path const& path) {
    std::ostringstream content;
    content << std::ifstream{path, std::ios::binary}.rdbuf();
    return content.str();
}

class FileStream : public testing::Test {
protected:
    FileStream() {
        auto pattern = (fs::temp_directory_path() / "tibxml-stream-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        file_ = folder_ / "file.xml";
        std::ofstream{file_} << "abcdef";
    }

    ~FileStream() override { fs::remove_all(folder_); }

    IStream* open(DWORD mode) { return open(file_, mode); }

    IStream* open(fs::path const& path, DWORD mode) {
        IStream* stream = nullptr;
        EXPECT_EQ(SHCreateStreamOnFileW(path.wstring().c_str(), mode, &stream), S_OK);
        return stream;
    }

    HRESULT failure(fs::path const& path, DWORD mode) {
        auto* const unchanged = reinterpret_cast<IStream*>(this);
        auto* stream = unchanged;
        auto const code = SHCreateStreamOnFileW(path.wstring().c_str(), mode, &stream);
        EXPECT_EQ(stream, nullptr);
        return code;
    }

    fs::path folder_;
    fs::path file_;
};

TEST_F(FileStream, ReadsFromTheStartToTheEnd) {
    auto* const stream = open(STGM_READ);
    EXPECT_EQ(readFrom(stream, 4), (ReadResult{S_OK, "abcd"}));
    EXPECT_EQ(readFrom(stream, 4), (ReadResult{S_FALSE, "ef"}));
    EXPECT_EQ(readFrom(stream, 4), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(stream->Release(), 0u);
}

TEST_F(FileStream, WritesStraightToTheFile) {
    auto* const stream = open(STGM_READWRITE);
    EXPECT_EQ(seek(stream, 4, STREAM_SEEK_SET), S_OK);
    EXPECT_EQ(writeTo(stream, "XYZ"), S_OK);
    EXPECT_EQ(contentOf(file_), "abcdXYZ");
    EXPECT_EQ(sizeOf(stream), 7u);
    stream->Release();
}

TEST_F(FileStream, CreatesAndEmpties) {
    auto const fresh = folder_ / "new.xml";
    auto* stream = open(fresh, STGM_WRITE | STGM_CREATE);
    EXPECT_EQ(writeTo(stream, "new"), S_OK);
    stream->Release();
    EXPECT_EQ(contentOf(fresh), "new");
    stream = open(STGM_READWRITE | STGM_CREATE | STGM_SHARE_EXCLUSIVE);
    EXPECT_EQ(sizeOf(stream), 0u);
    stream->Release();
    EXPECT_EQ(contentOf(file_), "");
    stream = open(fresh, STGM_READ | STGM_CREATE);
    EXPECT_EQ(readFrom(stream, 1), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(writeTo(stream, "x"), STG_E_ACCESSDENIED);
    stream->Release();
}

TEST_F(FileStream, FileNamesAreUtf8WhateverTheLocale) {
    IStream* stream = nullptr;
    auto const path = folder_.wstring() + L"/ä-€-😀";
    EXPECT_EQ(SHCreateStreamOnFileW(path.c_str(), STGM_WRITE | STGM_CREATE, &stream), S_OK);
    stream->Release();
    EXPECT_TRUE(fs::exists(folder_ / "\xC3\xA4-\xE2\x82\xAC-\xF0\x9F\x98\x80"));
}

TEST_F(FileStream, KeepsToItsAccess) {
    auto* const reading = open(STGM_READ);
    EXPECT_EQ(writeTo(reading, "x"), STG_E_ACCESSDENIED);
    EXPECT_EQ(reading->SetSize({0}), STG_E_ACCESSDENIED);
    reading->Release();
    auto* const writing = open(STGM_WRITE);
    EXPECT_EQ(readFrom(writing, 1), (ReadResult{STG_E_ACCESSDENIED, ""}));
    writing->Release();
    EXPECT_EQ(contentOf(file_), "abcdef");
}

TEST_F(FileStream, SeeksFromEveryOrigin) {
    auto* const stream = open(STGM_READ);
    ULONGLONG position = 0;
    EXPECT_EQ(seek(stream, 3, STREAM_SEEK_SET, &position), S_OK);
    EXPECT_EQ(position, 3u);
    EXPECT_EQ(seek(stream, -1, STREAM_SEEK_CUR, &position), S_OK);
    EXPECT_EQ(position, 2u);
    EXPECT_EQ(seek(stream, -2, STREAM_SEEK_END, &position), S_OK);
    EXPECT_EQ(position, 4u);
    EXPECT_EQ(seek(stream, -5, STREAM_SEEK_CUR), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, 0, 3), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(stream->Seek({0}, STREAM_SEEK_CUR, nullptr), S_OK);
    EXPECT_EQ(positionOf(stream), 4u);
    stream->Release();
}

TEST_F(FileStream, ChangesItsSize) {
    auto* const stream = open(STGM_READWRITE);
    EXPECT_EQ(stream->SetSize({2}), S_OK);
    EXPECT_EQ(contentOf(file_), "ab");
    EXPECT_EQ(stream->SetSize({~0ULL}), STG_E_MEDIUMFULL);
    stream->Release();
}

TEST_F(FileStream, TellsAboutItself) {
    auto* const stream = open(STGM_READ | STGM_SHARE_DENY_NONE);
    STATSTG status{};
    EXPECT_EQ(stream->Stat(&status, STATFLAG_DEFAULT), S_OK);
    EXPECT_EQ(status.pwcsName, nullptr);
    EXPECT_EQ(status.type, STGTY_STREAM);
    EXPECT_EQ(status.cbSize.QuadPart, 6u);
    EXPECT_EQ(status.grfMode, STGM_READ);
    EXPECT_EQ(stream->Stat(nullptr, STATFLAG_DEFAULT), STG_E_INVALIDPOINTER);
    stream->Release();
}

TEST_F(FileStream, TellsItsTimeSince1601) {
    timeval const times[2] = {{0, 0}, {1, 500000}};
    ASSERT_EQ(::utimes(file_.c_str(), times), 0);
    auto* const stream = open(STGM_READ);
    STATSTG status{};
    EXPECT_EQ(stream->Stat(&status, STATFLAG_DEFAULT), S_OK);
    auto const time = ULONGLONG{status.mtime.dwHighDateTime} << 32 | status.mtime.dwLowDateTime;
    EXPECT_EQ(time, 116444736000000000ULL + 15'000'000);
    stream->Release();
}

TEST_F(FileStream, CopiesToAnotherStream) {
    auto* const stream = open(STGM_READ);
    auto* const target = open(folder_ / "copy", STGM_WRITE | STGM_CREATE);
    EXPECT_EQ(stream->CopyTo(target, {~0ULL}, nullptr, nullptr), S_OK);
    EXPECT_EQ(contentOf(folder_ / "copy"), "abcdef");
    ULARGE_INTEGER read{};
    ULARGE_INTEGER written{9};
    seek(stream, 0, STREAM_SEEK_SET);
    EXPECT_EQ(stream->CopyTo(stream, {3}, &read, &written), STG_E_ACCESSDENIED);
    EXPECT_EQ(read.QuadPart, 3u);
    EXPECT_EQ(written.QuadPart, 0u);
    EXPECT_EQ(target->CopyTo(stream, {3}, &read, &written), STG_E_ACCESSDENIED);
    stream->Release();
    target->Release();
}

TEST_F(FileStream, CannotBeCloned) {
    auto* const stream = open(STGM_READ);
    auto* clone = stream;
    EXPECT_EQ(stream->Clone(&clone), E_NOTIMPL);
    EXPECT_EQ(clone, nullptr);
    EXPECT_EQ(stream->Clone(nullptr), STG_E_INVALIDPOINTER);
    stream->Release();
}

TEST_F(FileStream, SaysWhyAFileCannotBeOpened) {
    EXPECT_EQ(failure(folder_ / "missing", STGM_READ), HRESULT_FROM_WIN32(2));
    EXPECT_EQ(failure(folder_ / "missing", STGM_READWRITE), HRESULT_FROM_WIN32(2));
    EXPECT_EQ(failure(folder_ / "no" / "file", STGM_READ | STGM_CREATE), HRESULT_FROM_WIN32(2));
    EXPECT_EQ(failure(file_ / "below", STGM_READ), HRESULT_FROM_WIN32(3));
    EXPECT_EQ(failure(L"", STGM_READ), HRESULT_FROM_WIN32(2));
    EXPECT_EQ(failure(folder_ / std::string(300, 'x'), STGM_READ), HRESULT_FROM_WIN32(206));
}

TEST_F(FileStream, AFolderIsNoFile) {
    EXPECT_EQ(failure(folder_, STGM_READ), E_ACCESSDENIED);
    EXPECT_EQ(failure(folder_, STGM_READWRITE), E_ACCESSDENIED);
    EXPECT_EQ(failure(folder_, STGM_WRITE | STGM_CREATE), E_ACCESSDENIED);
}

TEST_F(FileStream, RefusesWhatTheUserMayNotOpen) {
    if (::geteuid() == 0) GTEST_SKIP() << "everything may be opened";
    fs::permissions(file_, fs::perms::none);
    EXPECT_EQ(failure(file_, STGM_READ), E_ACCESSDENIED);
}

TEST_F(FileStream, RefusesBadArguments) {
    auto const path = file_.wstring();
    EXPECT_EQ(SHCreateStreamOnFileW(path.c_str(), STGM_READ, nullptr), E_INVALIDARG);
    auto* stream = reinterpret_cast<IStream*>(this);
    EXPECT_EQ(SHCreateStreamOnFileW(nullptr, STGM_READ, &stream), E_INVALIDARG);
    EXPECT_EQ(stream, nullptr);
    EXPECT_EQ(failure(file_, 3), E_INVALIDARG);
    EXPECT_EQ(failure(file_, 0x04000000), E_INVALIDARG);
    wchar_t const surrogate[] = {L'a', wchar_t(0xD800), L'\0'};
    EXPECT_EQ(SHCreateStreamOnFileW(surrogate, STGM_READ, &stream), E_INVALIDARG);
    EXPECT_EQ(contentOf(file_), "abcdef");
}

TEST_F(FileStream, RefusesNullBuffers) {
    auto* const stream = open(STGM_READWRITE);
    EXPECT_EQ(stream->Read(nullptr, 1, nullptr), STG_E_INVALIDPOINTER);
    EXPECT_EQ(stream->Write(nullptr, 1, nullptr), STG_E_INVALIDPOINTER);
    stream->Release();
}

TEST_F(FileStream, ReportsAFullMedium) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    auto* const stream = open("/dev/full", STGM_WRITE);
    EXPECT_EQ(writeTo(stream, "x"), HRESULT_FROM_WIN32(112));
    stream->Release();
}

void onSignal(int /*number*/) {}

TEST_F(FileStream, GoesOnAfterASignal) {
    // A pipe that fills slowly, and signals that interrupt the wait for it.
    auto const pipe = folder_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    struct sigaction action {};

    struct sigaction old {};

    action.sa_handler = onSignal;
    ASSERT_EQ(::sigaction(SIGUSR1, &action, &old), 0);
    auto const reader = ::pthread_self();
    std::thread writer{[&] {
        auto* const out = open(pipe, STGM_WRITE);
        for (char const* const piece : {"ab", "cd", "ef"}) {
            for (int i = 0; i < 20; ++i) {
                ::pthread_kill(reader, SIGUSR1);
                std::this_thread::sleep_for(std::chrono::milliseconds{1});
            }
            EXPECT_EQ(writeTo(out, piece), S_OK);
        }
        out->Release();
    }};
    auto* const stream = open(pipe, STGM_READ);
    EXPECT_EQ(readFrom(stream, 6), (ReadResult{S_OK, "abcdef"}));
    EXPECT_EQ(readFrom(stream, 6), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(seek(stream, 0, STREAM_SEEK_SET), STG_E_INVALIDFUNCTION);
    writer.join();
    stream->Release();
    ::sigaction(SIGUSR1, &old, nullptr);
}

} // namespace
