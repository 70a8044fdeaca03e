// SPDX-License-Identifier: MIT
// Answers one question on standard output, or does one thing, in a process of its own.
//
//   environment                  the DB context environment's answer
//   setting REPOSITORY ATTRIBUTE the value, "absent" without repository, "refused" without value
//   access PATH MODE             what VELFileAccess returns
//   replace PATH TEXT            replaces a file; when that is refused, the reason on standard
//                                error and exit status 1
//   replace-counted PATH TEXT    the same, seen by a tracer
//   replace-without CALL PATH TEXT    the same while a system call fails
//   replace-limited BYTES PATH TEXT   the same while files cannot grow beyond a size
//   read-without CALL PATH       reads a file while a system call fails

#include "platform/VELDbContextEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"
#include "platform/detail/FileReader.h"
#include "support/SystemCalls.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace test = dyadctx::test;

namespace {

constexpr int Done = 0;
constexpr int Refused = 1;
constexpr int WrongUse = 2;
constexpr int NotPossibleHere = 77;

int Replace(const std::string& path, const std::string& text) {
    VELFileRefusal refusal;
    if (VELReplaceFile(VELUnicodeString(path), text, &refusal) >= 0)
        return Done;
    std::fputs(refusal.reason.ConvertToChar(), stderr);
    return Refused;
}

int ReadSetting(const std::string& repository, const std::string& attribute) {
    VELSysSettingRepository* settings =
        VELSysSettingRepository::GetRepository(repository.c_str(), 0);
    VELUnicodeString value("untouched");
    if (settings == nullptr)
        std::puts("absent");
    else if (settings->ReadAttr(attribute.c_str(), value) < 0)
        std::printf("refused, %s\n", value.ConvertToChar());
    else
        std::printf("value <%s>\n", value.ConvertToChar());
    return Done;
}

int ReadFile(const std::string& path) {
    dyadctx::FileReader file;
    std::array<char, 100> buffer;
    if (!file.Open(VELUnicodeString(path)))
        return Refused;
    return file.Read(buffer.data(), buffer.size()) >= 0 ? Done : Refused;
}

int Run(const std::vector<std::string>& words) {
    const std::string& command = words[0];
    if (command == "environment")
        return std::puts(IsDbContextEnvironmentActivated().ConvertToChar()) >= 0 ? Done : Refused;
    if (command == "setting" && words.size() == 3)
        return ReadSetting(words[1], words[2]);
    if (command == "access" && words.size() == 3)
        return VELFileAccess(VELUnicodeString(words[1]), std::stoi(words[2])) == 0 ? Done : Refused;
    if (command == "replace" && words.size() == 3)
        return Replace(words[1], words[2]);
    if (command == "replace-counted" && words.size() == 3) {
        test::CountSystemCallsFromHere();
        return Replace(words[1], words[2]);
    }
    if (command == "replace-without" && words.size() == 4)
        return test::RefuseSystemCall(words[1]) ? Replace(words[2], words[3]) : NotPossibleHere;
    if (command == "replace-limited" && words.size() == 4) {
        test::LimitFileSize(std::stoul(words[1]));
        return Replace(words[2], words[3]);
    }
    if (command == "read-without" && words.size() == 3)
        return test::RefuseSystemCall(words[1]) ? ReadFile(words[2]) : NotPossibleHere;
    return WrongUse;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    return words.empty() ? WrongUse : Run(words);
}
