// SPDX-License-Identifier: MIT
// Runs a fuzz target over each file of a corpus: what it once got wrong stays right.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Replay(const std::filesystem::path& file) {
    // Said first: a fault ends the process.
    std::printf("%s\n", file.filename().string().c_str());
    std::ifstream in(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        Replay(entry.path());
        ++count;
    }
    // A folder without files would prove nothing.
    return count > 0 ? 0 : 1;
}
