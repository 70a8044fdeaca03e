// SPDX-License-Identifier: MIT
#include "platform/detail/FileReader.h"

#include "platform/Probe.h"
#include "support/SpecialFiles.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

using dyadctx::FileReader;
using dyadctx::test::TemporaryFolder;

namespace {

std::string ReadAll(FileReader& file, std::size_t chunk) {
    std::string content;
    std::string buffer(chunk, '\0');
    for (;;) {
        const std::int64_t got = file.Read(buffer.data(), buffer.size());
        if (got <= 0)
            return got == 0 ? content : "(error)";
        content.append(buffer, 0, static_cast<std::size_t>(got));
    }
}

bool CanOpen(const std::string& path) {
    FileReader file;
    return file.Open(VELUnicodeString(path));
}

} // namespace

TEST(FileReader, ReturnsTheWholeContentInChunks) {
    const TemporaryFolder folder;
    std::string content("zero \0 and more ", 16);
    content += std::string(100000, 'x');
    const VELUnicodeString path(folder.Write("a.xml", content));
    for (const std::size_t chunk : {1000U, 65536U, 1000000U}) {
        FileReader file;
        ASSERT_TRUE(file.Open(path));
        EXPECT_EQ(content.size(), file.Size());
        EXPECT_EQ(content, ReadAll(file, chunk));
        EXPECT_EQ("", ReadAll(file, chunk));
    }
}

TEST(FileReader, GoesBackToTheBeginning) {
    const TemporaryFolder folder;
    FileReader file;
    EXPECT_FALSE(file.Rewind());
    ASSERT_TRUE(file.Open(VELUnicodeString(folder.Write("a.xml", "some text"))));
    std::array<char, 4> start;
    EXPECT_EQ(4, file.Read(start.data(), start.size()));
    EXPECT_TRUE(file.Rewind());
    EXPECT_EQ("some text", ReadAll(file, 5));
    EXPECT_TRUE(file.Rewind());
    EXPECT_EQ("some text", ReadAll(file, 100));
}

TEST(FileReader, ReadsAnEmptyFile) {
    const TemporaryFolder folder;
    FileReader file;
    ASSERT_TRUE(file.Open(VELUnicodeString(folder.Write("a.xml", ""))));
    EXPECT_EQ(0U, file.Size());
    EXPECT_EQ("", ReadAll(file, 10));
}

TEST(FileReader, TakesBothSeparators) {
    const TemporaryFolder folder;
    folder.Write("sub/a.xml", "x");
    EXPECT_TRUE(CanOpen(folder.Path().string() + "\\sub\\a.xml"));
}

TEST(FileReader, RefusesWhatIsNoRegularFile) {
    const TemporaryFolder folder;
    dyadctx::test::MakeFifo(folder.PathOf("fifo"));
    dyadctx::test::MakeSocket(folder.PathOf("socket"));
    dyadctx::test::MakeLink("fifo", folder.PathOf("link"));
    for (const char* name : {"fifo", "socket", "link", "missing", ""})
        EXPECT_FALSE(CanOpen(folder.PathOf(name))) << name;
    EXPECT_FALSE(CanOpen("/dev/zero"));
    EXPECT_FALSE(CanOpen(""));
    EXPECT_FALSE(CanOpen(folder.Write("a.xml", "x") + std::string("\0", 1)));
}

TEST(FileReader, CannotReadBeforeAFileIsOpen) {
    FileReader file;
    std::array<char, 10> buffer;
    EXPECT_EQ(-1, file.Read(buffer.data(), buffer.size()));
    EXPECT_EQ(0U, file.Size());
}

TEST(FileReader, OpensOneFileAfterAnother) {
    const TemporaryFolder folder;
    FileReader file;
    ASSERT_TRUE(file.Open(VELUnicodeString(folder.Write("a.xml", "first"))));
    ASSERT_TRUE(file.Open(VELUnicodeString(folder.Write("b.xml", "second"))));
    EXPECT_EQ("second", ReadAll(file, 10));
    EXPECT_FALSE(file.Open(VELUnicodeString(folder.PathOf("missing"))));
    EXPECT_EQ("(error)", ReadAll(file, 10));
}

TEST(FileReader, DistinguishesAnErrorFromTheEnd) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "x");
    const int status = ProbeStatus({"read-without", "read", path});
    if (status == NotPossibleHere)
        GTEST_SKIP() << "system calls cannot be made to fail here";
    EXPECT_EQ(1, status);
}
