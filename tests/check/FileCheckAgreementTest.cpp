// SPDX-License-Identifier: MIT
// The check of a file and the factories never disagree.
#include "check/FileCheckSupport.h"
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <set>
#include <sstream>
#include <utility>

namespace dyadctx::test {

namespace {

constexpr int Files = 500;

// Contexts made by chance, with every kind of fault.
class FaultyContexts {
public:
    explicit FaultyContexts(std::uint32_t seed) : random_(seed) {}

    std::string Make() {
        std::string text;
        for (std::uint32_t i = 1 + Below(5); i > 0; --i)
            text += Chance(8) ? Container(2) : Context(2);
        return text;
    }

private:
    static constexpr std::array<const char*, 9> Names{"A", "B",  "C",      "D",   "E",
                                                      "",  "F!", "DYADIC", "Long"};
    static constexpr std::array<const char*, 6> Types{"Path", "Path",    "Path",
                                                      "File", "Default", "Database"};

    std::uint32_t Below(std::uint32_t bound) {
        return static_cast<std::uint32_t>(random_()) % bound;
    }
    bool Chance(std::uint32_t oneIn) { return Below(oneIn) == 0; }
    template<class Values>
    std::string One(const Values& values) {
        return values[Below(static_cast<std::uint32_t>(values.size()))];
    }

    std::string Attribute(const std::string& name, const std::string& value, std::uint32_t oneIn) {
        return Chance(oneIn) ? "" : " " + name + "=\"" + value + "\"";
    }

    std::string Context(int depth) {
        std::string name = One(Names);
        if (name == "Long")
            name = std::string(126, 'x');
        std::string text = "<Context" + Attribute("Name", name, 30);
        text += Attribute("Parameter", Chance(6) ? "" : "p" + name, 20);
        text += Attribute("ParameterType", Chance(20) ? "Pfad" : One(Types), 20);
        text += Attribute("ConnectorName", "KRL", 3) + Attribute("Role", name, 2) + ">\n";
        for (std::uint32_t i = Below(3); depth > 0 && i > 0; --i)
            text += Chance(12) ? Context(depth - 1) : Container(depth);
        return text + Scenarios() + "</Context>\n";
    }

    std::string Container(int depth) {
        const std::string tag = Chance(3) ? "CtxAssociated" : "CtxFriends";
        std::string text = "<" + tag + ">";
        for (std::uint32_t i = Below(3); depth > 0 && i > 0; --i)
            text += Chance(10) ? Container(depth - 1)
                               : (Chance(6) ? Context(depth - 1)
                                            : "<Context Name=\"" + One(Names) + "\"/>");
        return text + "</" + tag + ">\n";
    }

    std::string Scenarios() {
        if (!Chance(5))
            return "";
        return "<Scenario><ScenarioID Ident=\"1\" name=\"p\"><Option" + Attribute("name", "n", 6) +
               "/></ScenarioID></Scenario>";
    }

    std::mt19937 random_;
};

// What a factory said, line by line, without the heading of the step that failed.
std::vector<std::string> LinesOf(std::string message) {
    const std::size_t heading = message.find(" : ");
    if (heading != std::string::npos)
        message.erase(0, heading + 3);
    std::vector<std::string> lines;
    std::istringstream in(message);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// Those of the errors and what they entail.
std::set<std::string> ErrorTexts(const VELDyadCtxFileCheck& check) {
    std::set<std::string> texts;
    for (int pos = 1; pos <= check.GetNbFindings(); ++pos) {
        const VELDyadCtxFinding& finding = check.GetFindingAt(pos);
        if (finding.severity == VELDyadCtxSeverity::Error || finding.cause != 0)
            texts.insert(Text(finding.text));
    }
    return texts;
}

// Everything a check finds, to compare two checks.
std::vector<std::string> FindingsOf(const VELDyadCtxFileCheck& check) {
    std::vector<std::string> lines = PlacesOf(check);
    for (int pos = 1; pos <= check.GetNbFindings(); ++pos)
        lines[static_cast<std::size_t>(pos) - 1] += " " + Text(check.GetFindingAt(pos).text);
    return lines;
}

void ExpectTheSameOfTheText(const VELDyadCtxFileCheck& check, const Creation& creation,
                            const std::string& file, const std::string& text) {
    VELDyadCtxFileCheck ofText;
    EXPECT_EQ(ofText.Run(file.c_str(), VELUnicodeString(text)),
              creation.collector != nullptr ? S_OK : S_FALSE);
    EXPECT_EQ(FindingsOf(ofText), FindingsOf(check));
    EXPECT_EQ(ViewOf(*ofText.GetCollector()), ViewOf(*check.GetCollector()));
    for (const VELDyadCtxFileCheck* one : {&check, &std::as_const(ofText)}) {
        VELUnicodeString message;
        EXPECT_EQ(one->GetFactoryMessage(message), S_OK);
        EXPECT_EQ(Text(message), creation.message);
    }
}

// How many of the files a factory refused.
int CompareOnRandomFiles(std::uint32_t firstSeed) {
    const KeyCatalog catalog;
    const TemporaryFolder folder;
    int refused = 0;
    for (std::uint32_t seed = firstSeed; seed < firstSeed + Files; ++seed) {
        SCOPED_TRACE(seed);
        const std::string text = DocumentWith(FaultyContexts(seed).Make());
        const std::string file = folder.Write("file.xml", text);
        const Creation creation = CreateFromFile(file);
        VELDyadCtxFileCheck check;
        EXPECT_EQ(check.Run(file.c_str()), creation.collector != nullptr ? S_OK : S_FALSE);
        EXPECT_EQ(check.GetNbFindings(VELDyadCtxSeverity::Error) == 0,
                  creation.collector != nullptr);
        const std::set<std::string> texts = ErrorTexts(check);
        for (const std::string& line : LinesOf(creation.message))
            EXPECT_TRUE(texts.contains(line)) << line << "\n" << folder.Read("file.xml");
        if (creation.collector != nullptr) {
            EXPECT_EQ(ViewOf(*check.GetCollector()), ViewOf(*creation.collector));
        }
        ExpectTheSameOfTheText(check, creation, file, text);
        refused += creation.collector == nullptr ? 1 : 0;
        if (testing::Test::HasFailure())
            break;
    }
    return refused;
}

} // namespace

TEST(FileCheckAgreement, WithoutTheDbEnvironmentEverythingAFactorySaysIsFound) {
    const int refused = CompareOnRandomFiles(1);
    EXPECT_GT(refused, Files / 4);
    EXPECT_LT(refused, Files);
}

TEST(FileCheckAgreement, WithTheDbEnvironmentEverythingAFactorySaysIsFound) {
    const DbEnvironment db(true);
    const int refused = CompareOnRandomFiles(100000);
    EXPECT_GT(refused, Files / 4);
    EXPECT_LT(refused, Files);
}

} // namespace dyadctx::test
