// What the tool asks of the operating system beyond the platform services of the library.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace dyadctx::tool {

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

// A path as the library reads it, in which both separators separate.
std::filesystem::path NativePath(const std::string& path);

} // namespace dyadctx::tool
