// Runs a fuzz target over files and over all files of folders, without a fuzzer. The target ends
// the program when something is wrong.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

void replay(std::filesystem::path const& path) {
    std::ifstream file{path, std::ios::binary};
    std::ostringstream content;
    content << file.rdbuf();
    std::string const bytes = content.str();
    std::cout << path.filename().string() << ": " << bytes.size() << " bytes" << std::endl;
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
}

std::size_t replayAll(std::filesystem::path const& path) {
    if (!std::filesystem::is_directory(path)) {
        replay(path);
        return 1;
    }
    std::size_t count = 0;
    for (auto const& entry : std::filesystem::directory_iterator{path})
        count += replayAll(entry.path());
    return count;
}

} // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i)
        count += replayAll(argv[i]);
    std::cout << count << " inputs\n";
    return count != 0 ? 0 : 1;
}
