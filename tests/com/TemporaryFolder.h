#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

// A folder of its own for each test, gone with everything in it afterwards.
class TemporaryFolder : public testing::Test {
protected:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "engine-test-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }

    ~TemporaryFolder() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::filesystem::path path(std::string const& name) const { return folder_ / name; }

    void write(std::string const& name, std::string const& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }

    std::string contentOf(std::string const& name) const {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    long fileCount() const {
        return std::distance(std::filesystem::directory_iterator{folder_},
                             std::filesystem::directory_iterator{});
    }

private:
    std::filesystem::path folder_;
};
