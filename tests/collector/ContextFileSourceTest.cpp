// SPDX-License-Identifier: MIT
#include "collector/detail/ContextFileSource.h"
#include "collector/detail/CollectorInternals.h"
#include "support/ContextFile.h"
#include "support/SpecialFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace dyadctx::test {
namespace {

struct FileCase {
    const char* what;
    // Behind the test's folder and a separator.
    const char* path;
    VELDyadCtxPathVerdict verdict;
};

std::ostream& operator<<(std::ostream& out, const FileCase& tested) {
    return out << tested.what;
}

class ContextFileVerdicts : public testing::TestWithParam<FileCase> {
protected:
    ContextFileVerdicts() {
        for (const char* name : {"a.xml", ".xml", "a.b.xml", "a.XML", "a.xml.bak", "a", "axml",
                                 "a.", "a.xmlx", "inner/b.xml"})
            folder_.Write(std::string("in/") + name, "text");
        std::filesystem::create_directories(folder_.Path() / "in/folder.xml");
        // Where there are none of these, they are missing.
        hasAll_ = MakeLink("a.xml", folder_.PathOf("in/link.xml")) &&
                  MakeLink("none.xml", folder_.PathOf("in/loose.xml")) &&
                  MakeFifo(folder_.PathOf("in/fifo.xml")) &&
                  MakeSocket(folder_.PathOf("in/socket.xml"));
    }

    VELUnicodeString Path() const {
        return VELUnicodeString((folder_.PathOf("in") + "/" + GetParam().path).c_str());
    }

    VELDyadCtxPathVerdict Expected() const {
        const std::string path = GetParam().path;
        const bool isSpecial = path == "link.xml" || path == "fifo.xml" || path == "socket.xml";
        return isSpecial && !hasAll_ ? VELDyadCtxPathVerdict::Missing : GetParam().verdict;
    }

    TemporaryFolder folder_;
    bool hasAll_ = false;
};

TEST_P(ContextFileVerdicts, AreGivenWithoutOpeningTheFile) {
    EXPECT_EQ(JudgeContextFile(Path()), Expected());
    EXPECT_EQ(CollectorInternals::CheckXMLFile(Path()),
              Expected() == VELDyadCtxPathVerdict::Usable ? S_OK : E_FAIL);
}

const FileCase FileCases[] = {
    {"a file", "a.xml", VELDyadCtxPathVerdict::Usable},
    {"an extension alone", ".xml", VELDyadCtxPathVerdict::Usable},
    {"two dots", "a.b.xml", VELDyadCtxPathVerdict::Usable},
    {"backslashes", "inner\\b.xml", VELDyadCtxPathVerdict::Usable},
    {"a link to a file", "link.xml", VELDyadCtxPathVerdict::Usable},
    {"a doubled separator", "/a.xml", VELDyadCtxPathVerdict::Usable},
    {"capital letters", "a.XML", VELDyadCtxPathVerdict::WrongExtension},
    {"the extension before the last dot", "a.xml.bak", VELDyadCtxPathVerdict::WrongExtension},
    {"no dot", "a", VELDyadCtxPathVerdict::WrongExtension},
    {"no dot before the extension", "axml", VELDyadCtxPathVerdict::WrongExtension},
    {"nothing behind the dot", "a.", VELDyadCtxPathVerdict::WrongExtension},
    {"a longer extension", "a.xmlx", VELDyadCtxPathVerdict::WrongExtension},
    {"a separator at the end", "a.xml/", VELDyadCtxPathVerdict::FolderMissing},
    {"a folder with a separator at the end", "inner/", VELDyadCtxPathVerdict::NoName},
    {"a missing folder", "none/a.xml", VELDyadCtxPathVerdict::FolderMissing},
    {"a file in place of a folder", "a.xml/b.xml", VELDyadCtxPathVerdict::FolderMissing},
    {"a missing file", "none.xml", VELDyadCtxPathVerdict::Missing},
    {"a folder", "folder.xml", VELDyadCtxPathVerdict::IsFolder},
    {"a link to nothing", "loose.xml", VELDyadCtxPathVerdict::Missing},
    {"a pipe", "fifo.xml", VELDyadCtxPathVerdict::NotRegular},
    {"a socket", "socket.xml", VELDyadCtxPathVerdict::NotRegular},
};

INSTANTIATE_TEST_SUITE_P(Files, ContextFileVerdicts, testing::ValuesIn(FileCases));

TEST(ContextFileVerdict, OfANameWithoutFolderIsARefusal) {
    EXPECT_EQ(JudgeContextFile(""), VELDyadCtxPathVerdict::NoFolder);
    EXPECT_EQ(JudgeContextFile("a.xml"), VELDyadCtxPathVerdict::NoFolder);
}

TEST(ContextFileVerdict, OfAFileBelowTheWorkingFolderNeedsADot) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "text");
    // On one drive, where a system has several.
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::temp_directory_path());
    const std::string relative = std::filesystem::relative(path).string();

    EXPECT_EQ(JudgeContextFile(VELUnicodeString(("./" + relative).c_str())),
              VELDyadCtxPathVerdict::Usable);
    std::filesystem::current_path(former);
}

TEST(ContextFileVerdict, OfAFileInTheRootLooksAtTheRoot) {
    EXPECT_EQ(JudgeContextFile("/no such file.xml"), VELDyadCtxPathVerdict::Missing);
}

TEST(DefaultContextFile, OfNoRootIsEmpty) {
    EXPECT_EQ(Text(FindDefaultContextFile("none")), "");
    EXPECT_EQ(Text(FindDefaultContextFile(";;")), "");
}

TEST(DefaultContextFile, OfALongListIsFoundAtItsEnd) {
    const TemporaryFolder folder;
    folder.Write("root/resources/xml/DYAD/CONTEXT/Default.xml", "text");
    std::string roots;
    for (int i = 0; i < 2000; ++i)
        roots += "none" + std::to_string(i) + ";";
    roots += folder.PathOf("root");

    EXPECT_EQ(Text(FindDefaultContextFile(VELUnicodeString(roots.c_str()))),
              folder.PathOf("root") + "\\resources\\xml\\DYAD\\CONTEXT\\Default.xml");
}

} // namespace
} // namespace dyadctx::test
