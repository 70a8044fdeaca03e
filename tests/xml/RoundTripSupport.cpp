// SPDX-License-Identifier: MIT
#include "xml/RoundTripSupport.h"

#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "xml/WriterSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace dyadctx::test {

namespace {

// Each file is flushed to disk when it is written; in memory that takes no time.
class FastFolders {
public:
    FastFolders() {
        if (std::filesystem::is_directory("/dev/shm"))
            folder_.emplace("TMPDIR", "/dev/shm");
    }

private:
    std::optional<EnvironmentVariable> folder_;
};

void ExpectRoundTrip(std::uint32_t seed, const GeneratedContent& content) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::string document = GenerateDocument(seed, content);
    const Creation first = CreateFromText(document);
    ASSERT_NE(first.collector, nullptr) << first.message << document;

    const Writing written = Write(*first.collector);
    ASSERT_EQ(written.result, S_OK);
    VELUnicodeString text;
    EXPECT_EQ(first.collector->StreamText(text), S_OK);
    EXPECT_EQ(Text(text), written.text);
    const Creation second = CreateFromText(written.text);
    ASSERT_NE(second.collector, nullptr) << second.message << written.text;

    EXPECT_EQ(Describe(*second.collector), Describe(*first.collector));
    EXPECT_EQ(Write(*second.collector).text, written.text);
}

} // namespace

void ExpectRoundTrips(std::uint32_t lastSeed, const GeneratedContent& content) {
    const FastFolders fast;
    for (std::uint32_t seed = 1; seed <= lastSeed; ++seed)
        ExpectRoundTrip(seed, content);
}

} // namespace dyadctx::test
