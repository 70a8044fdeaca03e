// SPDX-License-Identifier: MIT
// The text that file calls of the system get for a path.
#include "platform/windows/WindowsApi.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

using dyadctx::FullPath;
using dyadctx::WidePath;

namespace {

std::string Long(std::string start, std::size_t length) {
    start.append(length - start.size(), 'n');
    return start;
}

std::wstring WideLong(const std::wstring& start, std::size_t length) {
    return start + std::wstring(length, L'n').substr(start.size());
}

} // namespace

TEST(WidePath, IsTheTextItselfWithTheSystemsSeparators) {
    EXPECT_EQ(WidePath("C:/a folder/\xE6\x97\xA5\xE6\x9C\xAC.xml"),
              L"C:\\a folder\\\u65E5\u672C.xml");
    EXPECT_EQ(WidePath("./a.xml"), L".\\a.xml");
    EXPECT_EQ(WidePath("D:a.xml"), L"D:a.xml");
    EXPECT_EQ(WidePath(""), L"");
}

TEST(WidePath, TakesTheLongFormFrom248CharactersOn) {
    EXPECT_EQ(WidePath(Long("C:/", 247)), WideLong(L"C:\\", 247));
    EXPECT_EQ(WidePath(Long("C:/", 248)), L"\\\\?\\" + WideLong(L"C:\\", 248));
    EXPECT_EQ(WidePath(Long("C:/x/../", 300)), L"\\\\?\\C:\\" + std::wstring(300 - 8, L'n'));
    EXPECT_EQ(WidePath(Long("//server/share/", 300)),
              L"\\\\?\\UNC\\server\\share\\" + std::wstring(300 - 15, L'n'));
}

TEST(WidePath, OfARelativePathCountsTheCurrentFolderToo) {
    const auto path = WidePath(Long("./", 247));
    ASSERT_TRUE(path);
    EXPECT_TRUE(path->starts_with(L"\\\\?\\")) << path->size();
    EXPECT_TRUE(path->ends_with(std::wstring(L"\\") + std::wstring(245, L'n')));
}

TEST(WidePath, LeavesTheLongFormAsItIs) {
    const std::string path = Long("\\\\?\\C:\\", 300);
    EXPECT_EQ(WidePath(path), std::wstring(path.begin(), path.end()));
}

TEST(WidePath, NamesNoOldDevice) {
    for (const char* path : {"NUL", "con", "C:\\folder\\con.xml", "./Com1", "D:aux", "prn .txt",
                             "lpt9.a.b", "C:/x/conin$", "nul:"})
        EXPECT_EQ(WidePath(path), std::nullopt) << path;
    for (const char* path : {"C:/con/a.xml", "console.xml", "com0", "com10.xml", "xnul", ".nul"})
        EXPECT_NE(WidePath(path), std::nullopt) << path;
}

TEST(WidePath, RefusesWhatIsNoText) {
    EXPECT_EQ(WidePath("a\xFF.xml"), std::nullopt);
    EXPECT_EQ(WidePath(std::string("a\0b", 3)), std::nullopt);
}

TEST(FullPath, OfADriveWithoutFolderIsInTheCurrentFolderOfThatDrive) {
    ASSERT_TRUE(SetEnvironmentVariableW(L"=C:", L"C:\\windows"));
    wchar_t current[MAX_PATH];
    ASSERT_NE(GetCurrentDirectoryW(MAX_PATH, current), 0U);
    ASSERT_TRUE(SetCurrentDirectoryW(L"C:\\windows"));
    EXPECT_EQ(FullPath(L"C:a.xml"), L"C:\\windows\\a.xml");
    EXPECT_TRUE(SetCurrentDirectoryW(current));
}
