#pragma once

#include <TibXml/tibutils/DataEncoding.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

// Standard paths and wide text, whatever the locale is: theirs is UTF-8 here.
inline std::wstring wideOf(std::filesystem::path const& path) {
    return std::wstring(TibUtils::DataEncoding::Utf8Decode(path.native()).view());
}

inline std::filesystem::path pathOf(std::wstring_view wide) {
    return TibUtils::DataEncoding::Utf8Encode(wide);
}

// A folder of its own for each test, gone with everything in it afterwards.
class InTemporaryFolder : public testing::Test {
protected:
    InTemporaryFolder() {
        std::string name =
            (std::filesystem::temp_directory_path() / "tibutils-test-XXXXXX").string();
        folder = ::mkdtemp(name.data());
    }

    ~InTemporaryFolder() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    std::filesystem::path path(char const* name) const { return folder / name; }

    std::wstring widePath(char const* name) const { return wideOf(path(name)); }

    void write(char const* name, std::string const& content) const {
        std::ofstream(path(name), std::ios::binary) << content;
    }

    std::string contentOf(std::filesystem::path const& file) const {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::filesystem::path folder;
};

inline bool isForItsOwnerOnly(std::filesystem::path const& file) {
    using std::filesystem::perms;
    return (std::filesystem::status(file).permissions() & perms::all) ==
           (perms::owner_read | perms::owner_write);
}
