// SPDX-License-Identifier: MIT
// A client program for tests that need a process of their own.
//
//   xml_probe read FILE           reads the file and writes what the collector holds
//   xml_probe write FILE TARGET   reads the file, writes a line, and writes the collector
//
// The DB context environment is on. Status 0 for success, 1 for a refusal, 2 for wrong usage.
#include "platform/VELDbContextEnvironment.h"
#include "support/ContextFile.h"

#include <cstdio>
#include <string>

namespace {

using namespace dyadctx::test;

int Read(const Creation& creation) {
    std::printf("%d contexts\n", creation.collector->GetNbCtxs());
    return 0;
}

int Write(Creation& creation, const char* target) {
    std::printf("writing\n");
    std::fflush(stdout);
    VELUnicodeString message;
    return creation.collector->Stream(VELUnicodeString(target), message) >= 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::string command = argc > 1 ? argv[1] : "";
    const bool isKnown = (command == "read" && argc == 3) || (command == "write" && argc == 4);
    if (!isKnown)
        return 2;
    SetDbContextEnvironment(true);
    Creation creation = CreateFromFile(argv[2]);
    if (creation.collector == nullptr) {
        std::printf("%s", creation.message.c_str());
        return 1;
    }
    return command == "read" ? Read(creation) : Write(creation, argv[3]);
}
