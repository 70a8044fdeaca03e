// SPDX-License-Identifier: MIT
#include "bench/ProcessServices.h"

#include <sys/resource.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace dyadctx::bench {

namespace {

// What Linux says of this program alone; 0 where it does not. The number of getrusage may be that
// of the program that started this one.
std::uint64_t PeakOfProgram() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) != 0)
            continue;
        std::uint64_t kibibytes = 0;
        std::istringstream(line.substr(6)) >> kibibytes;
        return kibibytes * 1024;
    }
    return 0;
}

} // namespace

std::uint64_t PeakMemory() {
    if (const std::uint64_t peak = PeakOfProgram())
        return peak;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

void SetVariable(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

bool IsVariableSet(const std::string& name) {
    return std::getenv(name.c_str()) != nullptr;
}

} // namespace dyadctx::bench
