// SPDX-License-Identifier: MIT
// What the tool asks of the operating system beyond the platform services of the library.
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace dyadctx::tool {

// The arguments of the program without its name, in UTF-8.
std::vector<std::string> ArgumentsOf(int argc, char** argv);

// The files that a word of the command line names: itself, or what its `*` and `?` stand for, in
// the order of the alphabet, where that is left to the program and no file has that very name.
std::vector<std::string> FilesNamed(const std::string& word);

// Readies the standard streams for UTF-8, and a terminal for colours; as they were at the end.
class Console {
public:
    Console() noexcept;
    ~Console(); // NOLINT(performance-trivially-destructible): on Windows it has work to do
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

private:
    struct Former {
        unsigned int page = 0;
        std::array<unsigned long, 2> modes{};
    };
    Former former_;
};

// Sets an environment variable of this process, where the library sees it.
void SetEnvironment(const std::string& name, const std::string& value);

// The names of all environment variables of this process, in the order of the alphabet.
std::vector<std::string> EnvironmentNames();

// A stream to the standard output of the process. What anyone else writes to standard output from
// now on goes to standard error. To be called once.
std::FILE* TakeStandardOutput();

// All that comes on standard input, byte by byte. Throws std::system_error when it cannot be read.
std::string ReadStandardInput();

bool IsTerminal(std::FILE* stream);

} // namespace dyadctx::tool
