// SPDX-License-Identifier: MIT
// Looks into the built library for the texts that others rely on.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string WithoutEscapes(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            plain += text[++i] == 'n' ? '\n' : text[i];
        else
            plain += text[i];
    }
    return plain;
}

std::vector<std::string> ListedTexts() {
    std::ifstream in(DYADCTX_SOURCE_DIR "/tests/library/library_texts.txt");
    std::vector<std::string> texts;
    for (std::string line; std::getline(in, line);) {
        if (line.size() > 2 && line.front() == '"' && line.back() == '"')
            texts.push_back(WithoutEscapes(line.substr(1, line.size() - 2)));
    }
    return texts;
}

} // namespace

TEST(LibraryTexts, EachListedTextIsInTheLibraryAsAWhole) {
    const std::string library = ReadFile(DYADCTX_LIBRARY_FILE);
    const std::vector<std::string> texts = ListedTexts();
    ASSERT_GT(texts.size(), 170U);
    for (const std::string& text : texts) {
        // With its ending zero byte, so that no longer text is taken for it.
        EXPECT_NE(library.find(text + '\0'), std::string::npos) << text;
    }
}

// These keys are put together at run time; as a whole they are in the embedded catalogs.
TEST(LibraryTexts, TheHeadingsOfFailedStepsAreInTheCatalogs) {
    const std::string library = ReadFile(DYADCTX_LIBRARY_FILE);
    for (const char* key :
         {"Ctx.Collector.ParseError", "Ctx.Collector.SetFriendsAndAssociatedError",
          "Ctx.Collector.CheckError", "Ctx.Collector.StreamError"}) {
        EXPECT_NE(library.find(std::string(key) + '\x04'), std::string::npos) << key;
    }
}

TEST(LibraryTexts, ATextThatIsNotThereIsNotFound) {
    const std::string library = ReadFile(DYADCTX_LIBRARY_FILE);
    EXPECT_EQ(library.find(std::string("VELDyadCtxCollector:NoSuchLine") + '\0'),
              std::string::npos);
}
