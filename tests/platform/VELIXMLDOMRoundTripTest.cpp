// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/DomTesting.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

using namespace dyadctx::test;

namespace {

std::string Utf8(std::uint32_t c) {
    const auto tail = [c](int shift) { return static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80)
        return {static_cast<char>(c)};
    if (c < 0x800)
        return {static_cast<char>(0xC0U | (c >> 6U)), tail(0)};
    if (c < 0x10000)
        return {static_cast<char>(0xE0U | (c >> 12U)), tail(6), tail(0)};
    return {static_cast<char>(0xF0U | (c >> 18U)), tail(12), tail(6), tail(0)};
}

// What an element was made of.
struct Plan {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::vector<Plan> children;
};

// Random documents, the same for the same seed.
class RandomTree {
public:
    explicit RandomTree(unsigned int seed) : random_(seed) {
        root_.name = Name();
        const VELIDOMElement root = MakeElement(document_, root_.name);
        EXPECT_EQ(document_.AppendChild(root), S_OK);
        Fill(root, root_, 0);
    }

    const VELIDOMDocument& Document() const { return document_; }
    const Plan& Root() const { return root_; }

private:
    std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(random_() % limit);
    }

    // Mostly from where something special is near.
    std::uint32_t AnyCharacter() {
        constexpr std::uint32_t Limits[] = {0x80, 0x80, 0x800, 0x10000, 0x110000};
        for (;;) {
            const std::uint32_t c = Below(Limits[Below(5)]);
            const bool isControl = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
            const bool isSurrogate = c >= 0xD800 && c < 0xE000;
            if (!isControl && !isSurrogate && c != 0xFFFE && c != 0xFFFF)
                return c;
        }
    }

    std::string Value() {
        std::string value;
        for (std::uint32_t length = Below(20); length > 0; --length)
            value += Utf8(AnyCharacter());
        return value;
    }

    // Letters of any script; what the platform does not take as a name is left out.
    std::string Name() {
        for (;;) {
            std::string name = "n";
            for (std::uint32_t length = Below(4); length > 0; --length)
                name += Utf8(Below(8) == 0 ? Below(0xFFFE) : 'a' + Below(26));
            VELIDOMElement element;
            if (document_.CreateElement(VELUnicodeString(name), element) == S_OK &&
                name.find(':') == std::string::npos) // other parsers know prefixes
                return name;
        }
    }

    void Fill(const VELIDOMElement& element, Plan& plan, int depth) {
        for (std::uint32_t count = Below(5); count > 0; --count) {
            const std::string name = Name();
            plan.attributes[name] = Value();
            EXPECT_EQ(element.SetAttribute(VELUnicodeString(name),
                                           VELUnicodeString(plan.attributes[name])),
                      S_OK);
        }
        if (depth == 4)
            return;
        plan.children.resize(Below(4));
        for (Plan& child : plan.children) {
            child.name = Name();
            Fill(AddElement(document_, element, child.name), child, depth + 1);
        }
    }

    std::mt19937 random_;
    VELIDOMDocument document_ = MakeDocument();
    Plan root_;
};

// The element children of an element.
std::vector<VELIDOMElement> ElementsIn(const VELIDOMElement& element) {
    std::vector<VELIDOMElement> elements;
    for (const VELIDOMNode& child : ChildrenOf(element)) {
        if (!VELIDOMElement(child).IsNull())
            elements.emplace_back(child);
    }
    return elements;
}

void ExpectAsPlanned(const VELIDOMElement& element, const Plan& plan) {
    EXPECT_EQ(TagOf(element), plan.name);
    for (const auto& [name, value] : plan.attributes)
        EXPECT_EQ(AttributeOf(element, name), value) << name;
    const std::vector<VELIDOMElement> children = ElementsIn(element);
    ASSERT_EQ(children.size(), plan.children.size());
    for (std::size_t i = 0; i < children.size(); ++i)
        ExpectAsPlanned(children[i], plan.children[i]);
}

std::string Find(const char* program) {
    for (const char* folder : {"/usr/bin/", "/usr/local/bin/", "/bin/"}) {
        const std::string path = std::string(folder) + program;
        if (std::filesystem::exists(path))
            return path;
    }
    return {};
}

// Expects another parser to find nothing wrong with written documents. Both programs complain on
// one of the streams.
void ExpectAcceptedBy(const std::string& program, const std::vector<std::string>& options) {
    const TemporaryFolder folder;
    for (unsigned int seed = 0; seed < 20; ++seed) {
        ChildRun run;
        run.program = program;
        run.arguments = options;
        run.arguments.push_back(folder.PathOf("written.xml"));
        ASSERT_EQ(WriteXml(RandomTree(seed).Document(), run.arguments.back()), S_OK);

        const ChildResult result = RunChild(run);

        EXPECT_EQ(result.status, 0) << seed;
        EXPECT_EQ(result.standardOutput + result.standardError, "") << seed;
    }
}

} // namespace

TEST(VELIXMLDOM, WhatIsWrittenIsReadBackTheSame) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("x.xml");
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        const RandomTree tree(seed);
        ASSERT_EQ(WriteXml(tree.Document(), path), S_OK) << seed;
        const DomReading reading = ReadXmlFile(path);
        ASSERT_EQ(reading.result, S_OK) << seed << ": " << reading.failures[0].reason;
        ExpectAsPlanned(RootOf(tree.Document()), tree.Root());
        ExpectAsPlanned(RootOf(reading.document), tree.Root());
        ASSERT_FALSE(HasFailure()) << seed;
    }
}

TEST(VELIXMLDOM, WhatIsReadAndWrittenAgainIsTheSameText) {
    const TemporaryFolder folder;
    for (unsigned int seed = 1; seed <= 50; ++seed) {
        ASSERT_EQ(WriteXml(RandomTree(seed).Document(), folder.PathOf("one.xml")), S_OK);
        ASSERT_EQ(
            WriteXml(ReadXmlFile(folder.PathOf("one.xml")).document, folder.PathOf("two.xml")),
            S_OK);
        ASSERT_EQ(folder.Read("one.xml"), folder.Read("two.xml")) << seed;
    }
}

TEST(VELIXMLDOM, XmllintAcceptsWhatIsWritten) {
    const std::string program = Find("xmllint");
    if (program.empty())
        GTEST_SKIP() << "xmllint is not installed";
    ExpectAcceptedBy(program, {"--noout", "--nonet"});
}

TEST(VELIXMLDOM, XmlwfAcceptsWhatIsWritten) {
    const std::string program = Find("xmlwf");
    if (program.empty())
        GTEST_SKIP() << "xmlwf is not installed";
    ExpectAcceptedBy(program, {});
}
