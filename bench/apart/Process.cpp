#include "Process.h"

#include <array>
#include <stdexcept>

#include "Fork.h"

namespace bench {

namespace {

[[noreturn]] void become(std::vector<std::string> const& arguments, int output) {
    std::string const program = "/proc/self/exe";
    std::vector<char*> all{const_cast<char*>(program.c_str())};
    for (std::string const& argument : arguments)
        all.push_back(const_cast<char*>(argument.c_str()));
    all.push_back(nullptr);
    dup2(output, STDOUT_FILENO);
    close(output);
    execv(program.c_str(), all.data());
    _exit(1);
}

std::string readAll(int input) {
    std::string all;
    std::array<char, 4096> piece{};
    for (ssize_t size = 0; (size = read(input, piece.data(), piece.size())) > 0;)
        all.append(piece.data(), static_cast<std::size_t>(size));
    close(input);
    return all;
}

} // namespace

std::string outputOfThisProgram(std::vector<std::string> const& arguments) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error{"the system makes no pipe"};
    pid_t const process = fork();
    if (process < 0) throw std::runtime_error{"the system makes no process"};
    if (process == 0) {
        close(ends[0]);
        become(arguments, ends[1]);
    }
    close(ends[1]);
    std::string output = readAll(ends[0]);
    awaitProcess(process);
    return output;
}

} // namespace bench
