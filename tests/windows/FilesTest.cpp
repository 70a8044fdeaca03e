// SPDX-License-Identifier: MIT
// Files as Windows has them: held by others, read-only, with attributes, with several names.
#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/SettingsLock.h"
#include "platform/detail/TraceOutput.h"
#include "platform/windows/WindowsApi.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <thread>

namespace fs = std::filesystem;
using namespace dyadctx::test;
using dyadctx::Handle;
using dyadctx::WidePath;

namespace {

using Kind = VELFileRefusal::Kind;

VELFileRefusal Replace(const std::string& path, std::string_view content = "new") {
    VELFileRefusal refusal;
    const VELResult result = VELReplaceFile(VELUnicodeString(path), content, &refusal);
    EXPECT_EQ(result, refusal.kind == Kind::None ? S_OK : E_FAIL);
    return refusal;
}

std::string Reason(const VELFileRefusal& refusal) {
    return refusal.reason.ConvertToChar();
}

std::ptrdiff_t EntriesOf(const TemporaryFolder& folder) {
    return std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator());
}

Handle Hold(const std::string& path, DWORD sharing) {
    Handle held(CreateFileW(WidePath(path)->c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_TRUE(held.IsOpen());
    return Handle(held.Release());
}

bool CanRead(const std::string& path) {
    dyadctx::FileReader file;
    return file.Open(VELUnicodeString(path));
}

// A folder below, so deep that its path is longer than the system takes by itself.
std::string DeepFolder(const TemporaryFolder& folder) {
    std::string name =
        std::string(100, 'a') + "/" + std::string(100, 'b') + "/" + std::string(100, 'c');
    fs::create_directories(L"\\\\?\\" + (folder.Path() / name).make_preferred().wstring());
    return folder.PathOf(name);
}

} // namespace

TEST(WindowsFile, HeldByOthersForAMomentIsReplaced) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    Handle held = Hold(path, FILE_SHARE_READ);
    std::thread holder([&held] {
        Sleep(200);
        held.Close();
    });
    EXPECT_EQ(Reason(Replace(path)), "");
    holder.join();
    EXPECT_EQ(folder.Read("a.xml"), "new");
    EXPECT_EQ(EntriesOf(folder), 1);
}

TEST(WindowsFile, HeldByOthersForLongIsRefusedWithTheReason) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    const Handle held = Hold(path, FILE_SHARE_READ);
    const VELFileRefusal refusal = Replace(path);
    EXPECT_EQ(refusal.kind, Kind::NotReplaceable);
    EXPECT_TRUE(Reason(refusal).starts_with("another program has it open (")) << Reason(refusal);
    EXPECT_EQ(folder.Read("a.xml"), "former");
    EXPECT_EQ(EntriesOf(folder), 1);
}

TEST(WindowsFile, HeldByOthersWhoShareItLeavesNoTemporaryFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    {
        const Handle held = Hold(path, dyadctx::ShareAll);
        const bool isReplaced = Replace(path).kind == Kind::None;
        EXPECT_EQ(folder.Read("a.xml"), isReplaced ? "new" : "former");
    }
    EXPECT_EQ(EntriesOf(folder), 1);
}

TEST(WindowsFile, ThatIsReadOnlyIsNotReplaced) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    ASSERT_TRUE(SetFileAttributesW(WidePath(path)->c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(VELFileAccess(VELUnicodeString(path), 4), 0);
    EXPECT_LT(VELFileAccess(VELUnicodeString(path), 2), 0);
    EXPECT_EQ(Replace(path).kind, Kind::NotPermitted);
    EXPECT_EQ(folder.Read("a.xml"), "former");
    EXPECT_EQ(EntriesOf(folder), 1);
    SetFileAttributesW(WidePath(path)->c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(WindowsFile, ThatIsReplacedKeepsItsAttributes) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    ASSERT_TRUE(SetFileAttributesW(WidePath(path)->c_str(), FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(Reason(Replace(path)), "");
    EXPECT_EQ(folder.Read("a.xml"), "new");
    EXPECT_NE(GetFileAttributesW(WidePath(path)->c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

TEST(WindowsFile, WithSeveralNamesKeepsItsContentUnderTheOthers) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    ASSERT_TRUE(CreateHardLinkW(WidePath(folder.PathOf("b.xml"))->c_str(), WidePath(path)->c_str(),
                                nullptr));
    EXPECT_EQ(Reason(Replace(path)), "");
    EXPECT_EQ(folder.Read("a.xml"), "new");
    EXPECT_EQ(folder.Read("b.xml"), "former");
}

TEST(WindowsFile, APipeIsWrittenAndNeverReplaced) {
    const std::wstring name =
        L"\\\\.\\pipe\\dyadctx-test-" + std::to_wstring(GetCurrentProcessId());
    const std::string path = dyadctx::Utf8Text(name);
    EXPECT_EQ(Replace(path).kind, Kind::NoReader);
    const Handle pipe(CreateNamedPipeW(name.c_str(), PIPE_ACCESS_INBOUND, PIPE_TYPE_BYTE, 1, 0,
                                       65536, 0, nullptr));
    ASSERT_TRUE(pipe.IsOpen());
    EXPECT_EQ(Reason(Replace(path, "through the pipe")), "");
    std::array<char, 100> buffer;
    DWORD got = 0;
    ASSERT_TRUE(
        ReadFile(pipe.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr));
    EXPECT_EQ(std::string(buffer.data(), got), "through the pipe");
    // A question does not open it.
    VELFileInfo info;
    EXPECT_NE(VELGetFileInfo(VELUnicodeString(path), info), 0);
    EXPECT_FALSE(CanRead(path));
}

TEST(WindowsFile, NamedLikeAnOldDeviceIsRefusedByEveryOperation) {
    const TemporaryFolder folder;
    for (const std::string& path :
         {std::string("NUL"), std::string("CON"), folder.PathOf("con.xml")}) {
        SCOPED_TRACE(path);
        VELFileInfo info;
        EXPECT_LT(VELGetFileInfo(VELUnicodeString(path), info), 0);
        EXPECT_LT(VELFileAccess(VELUnicodeString(path), 0), 0);
        EXPECT_FALSE(CanRead(path));
        EXPECT_EQ(Replace(path).kind, Kind::PathNotUsable);
        EXPECT_EQ(dyadctx::OpenTraceFile(VELUnicodeString(path)), dyadctx::NoTraceHandle);
    }
    EXPECT_EQ(EntriesOf(folder), 0);
}

TEST(WindowsFile, DeepBelowManyFoldersIsWrittenAndRead) {
    const TemporaryFolder folder;
    const std::string deep = DeepFolder(folder);
    const std::string path = deep + "/\xE6\x97\xA5 \xE6\x9C\xAC.xml";
    EXPECT_GT(path.size(), 300U);
    EXPECT_EQ(Reason(Replace(path, "first")), "");
    EXPECT_EQ(Reason(Replace(path, "second")), "");
    VELFileInfo info;
    EXPECT_EQ(VELGetFileInfo(VELUnicodeString(path), info), 0);
    EXPECT_EQ(info.mode, VELFileInfo::RegularFile);
    dyadctx::FileReader file;
    ASSERT_TRUE(file.Open(VELUnicodeString(path)));
    EXPECT_EQ(file.Size(), 6U);
}

TEST(WindowsSettings, InANewFolderDeepBelowManyFoldersAreKept) {
    const TemporaryFolder folder;
    const EnvironmentVariable variable("VELSettingPath",
                                       DeepFolder(folder) + "/\xC3\xA9t\xC3\xA9/new folder");
    VELSettingRefusal refusal;
    EXPECT_GE(VELSysSettingRepository::SetAttr("R", "file", "C:\\a b\\\xC3\xA9.xml", &refusal), 0)
        << refusal.reason.ConvertToChar();
    VELUnicodeString value;
    VELSysSettingRepository* settings = VELSysSettingRepository::GetRepository("R", 0);
    ASSERT_NE(settings, nullptr);
    EXPECT_EQ(settings->ReadAttr("file", value), S_OK);
    EXPECT_STREQ(value.ConvertToChar(), "C:\\a b\\\xC3\xA9.xml");
}

TEST(WindowsSettings, OfAFolderAreLockedUnderEachOfItsNames) {
    const TemporaryFolder folder;
    folder.Write("sub/a", "");
    const dyadctx::SettingsLock lock{VELUnicodeString(folder.PathOf("sub"))};
    ASSERT_TRUE(lock.IsHeld());
    const std::string otherName = folder.Path().string() + "/other/../SUB/";
    const auto locksIt = [&] {
        return dyadctx::SettingsLock(VELUnicodeString(otherName)).IsHeld();
    };
    EXPECT_FALSE(std::async(std::launch::async, locksIt).get());
}

TEST(WindowsTrace, HasPlainLineEnds) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("trace \xC3\xA9.log");
    const dyadctx::TraceHandle handle = dyadctx::OpenTraceFile(VELUnicodeString(path));
    ASSERT_NE(handle, dyadctx::NoTraceHandle);
    dyadctx::WriteTrace(handle, "LOG one\nLOG two\n");
    EXPECT_EQ(folder.Read("trace \xC3\xA9.log"), "LOG one\nLOG two\n");
    CloseHandle(reinterpret_cast<HANDLE>(handle));
}
