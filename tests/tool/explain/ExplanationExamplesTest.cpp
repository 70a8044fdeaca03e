// SPDX-License-Identifier: MIT
// Every message and every other finding is explained, and every example shows what it says.
#include "check/VELDyadCtxFileCheck.h"
#include "tool/ToolTest.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace dyadctx::test {

namespace {

// Faults that cannot occur without another error.
const std::map<std::string, std::set<std::string>> Companions{
    {"Ctx.Check.CtxAndFriendWithSameName", {"Ctx.Check.CtxAndFriendWithCyclicity"}},
    {"Ctx.Check.CtxAndAssocWithSameName", {"Ctx.Check.CtxAndAssocWithCyclicity"}},
    {"Ctx.Parse.CtxNoConnector", {"Ctx.Parse.CtxNoDatabase"}},
    {"Ctx.Parse.CtxNoDatabase", {"Ctx.Parse.CtxNoConnector"}},
    {"nearest-name", {"Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx"}},
};

std::set<std::string> KeysOfCatalog() {
    std::ifstream in(DYADCTX_SOURCE_DIR "/resources/messages/VELDyadCtxDlgSelection.en.po");
    const std::string start = "msgctxt \"";
    std::set<std::string> keys;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(start))
            keys.insert(line.substr(start.size(), line.size() - start.size() - 1));
    }
    return keys;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class ExplanationExamples : public ToolTest {
protected:
    ExplanationExamples() {
        std::filesystem::copy(ExampleFile("site.xml"), folder_.Path());
        environment_ = {{"XDG_CONFIG_HOME", folder_.PathOf("settings")},
                        {"VELMessageLanguage", "en"}};
    }

    std::set<std::string> Keys(const std::string& group) const {
        std::set<std::string> keys;
        const Json document = RunForJson({"explain"}, 0, environment_);
        for (const Json& one : document["keys"]) {
            if (one["group"] == group)
                keys.insert(one["key"]);
        }
        return keys;
    }

    std::vector<Json> Explanations() const {
        std::vector<Json> all;
        const Json document = RunForJson({"explain"}, 0, environment_);
        for (const Json& one : document["keys"])
            all.push_back(RunForJson({"explain", one["key"]}, 0, environment_)["explanation"]);
        return all;
    }

    // The examples of a role and language of all explanations, by key.
    std::vector<std::pair<Json, Json>> Examples(const std::string& role,
                                                const std::string& language) const {
        std::vector<std::pair<Json, Json>> found;
        for (const Json& explanation : Explanations()) {
            for (const Json& example : explanation["examples"]) {
                if (example["role"] == role && example["language"] == language)
                    found.emplace_back(explanation, example);
            }
        }
        return found;
    }

    static std::string ProgramOf(const Json& explanation) {
        return DYADCTX_PROGRAM_FOLDER "/explained-" + explanation["key"].get<std::string>();
    }

    Json Check(const Json& example) const {
        folder_.Write("example.xml", example["text"].get<std::string>());
        std::vector<std::string> arguments{"check", "example.xml", "--format", "json"};
        for (const Json& option : example["options"])
            arguments.push_back(option);
        return Json::parse(Run(arguments, environment_).standardOutput)["files"][0];
    }

    ChildResult CheckByProgram(const Json& explanation, const Json& example) const {
        ChildRun run;
        run.program = ProgramOf(explanation);
        run.arguments = {folder_.Write("example.xml", example["text"].get<std::string>())};
        run.environment = environment_;
        return RunChild(run);
    }

    // What the commands of an example say, one after the other in one shell.
    std::string Said(const Json& explanation, const Json& example) const {
        std::string script = "dyadctx() { \"$DYADCTX\" \"$@\"; }\n"
                             "program() { \"$PROGRAM\" \"$@\"; }\nexec 2>&1\n";
        std::istringstream in(example["text"].get<std::string>());
        for (std::string line; std::getline(in, line);)
            script += line.starts_with("$ ") ? line.substr(2) + "\n" : "";
        Environment environment = environment_;
        environment["PROGRAM"] = ProgramOf(explanation);
        return RunInShell(script, environment).standardOutput;
    }

    Environment environment_;
};

std::string Shown(const Json& example) {
    std::istringstream in(example["text"].get<std::string>());
    std::string shown;
    for (std::string line; std::getline(in, line);)
        shown += line.starts_with("$ ") ? "" : line + "\n";
    return shown;
}

// A heading is no finding; it begins the message of the library.
bool ShowsFault(const Json& explanation, const Json& document) {
    if (explanation["kind"] == "heading")
        return document["message"].get<std::string>().starts_with(
            explanation["text"].get<std::string>() + " : ");
    return std::any_of(document["findings"].begin(), document["findings"].end(),
                       [&](const Json& one) {
                           return one["key"] == explanation["key"] &&
                                  one["parameters"].size() == explanation["parameters"].size();
                       });
}

void ExpectNoOtherError(const Json& explanation, const Json& document) {
    const std::string key = explanation["key"];
    const auto companions = Companions.find(key);
    for (const Json& finding : document["findings"]) {
        const std::string other = finding["key"];
        const bool belongs = other == key || explanation["kind"] == "heading" ||
                             (companions != Companions.end() && companions->second.contains(other));
        EXPECT_TRUE(belongs || finding["severity"] == "note") << other;
    }
}

} // namespace

TEST_F(ExplanationExamples, EveryMessageOfTheCatalogIsExplainedAndNoOther) {
    EXPECT_GT(KeysOfCatalog().size(), 40U);
    EXPECT_EQ(Keys("catalog"), KeysOfCatalog());
}

TEST_F(ExplanationExamples, EveryOtherFindingIsExplainedAndNoOther) {
    // This one is the tool's own.
    std::set<std::string> expected{"variable-without-effect"};
    const VELListVal<VELDyadCtxFindingKind> kinds = VELDyadCtxFileCheck::GetFindingKinds();
    for (int i = 1; i <= kinds.Size(); ++i)
        expected.insert(std::string(kinds[i].id.AsView()));
    EXPECT_EQ(Keys("own"), expected);
}

TEST_F(ExplanationExamples, EachKeyHasAWrongAndARightExampleOrOneThatIsNeither) {
    for (const Json& explanation : Explanations()) {
        std::multiset<std::string> roles;
        for (const Json& example : explanation["examples"]) {
            if (example["role"] != "Program")
                roles.insert(example["role"]);
        }
        const bool isLabel = explanation["kind"] == "label";
        const std::multiset<std::string> pair{"Right", "Wrong"};
        const std::multiset<std::string> one{"Example"};
        EXPECT_EQ(roles, isLabel ? one : pair) << explanation["key"];
    }
}

TEST_F(ExplanationExamples, TheParametersAreThoseOfTheText) {
    for (const Json& explanation : Explanations()) {
        const std::string text = explanation["text"];
        const std::size_t count = explanation["parameters"].size();
        EXPECT_NE(text, "") << explanation["key"];
        EXPECT_FALSE(Contains(text, "{" + std::to_string(count) + "}")) << text;
        // What the check appends to the text of these is not in it.
        if (explanation["group"] == "catalog" && count > 0) {
            EXPECT_TRUE(Contains(text, "{" + std::to_string(count - 1) + "}")) << text;
        }
    }
}

TEST_F(ExplanationExamples, TheWrongFileHasTheFaultAndNoOtherThatIsAvoidable) {
    const auto examples = Examples("Wrong", "xml");
    EXPECT_GT(examples.size(), 45U);
    for (const auto& [explanation, example] : examples) {
        SCOPED_TRACE(explanation["key"]);
        if (example["byProgram"].get<bool>()) {
            const ChildResult result = CheckByProgram(explanation, example);
            EXPECT_EQ(result.standardOutput, "[" + explanation["key"].get<std::string>() + "]\n");
            continue;
        }
        const Json document = Check(example);
        EXPECT_TRUE(ShowsFault(explanation, document)) << document.dump(2);
        ExpectNoOtherError(explanation, document);
    }
}

TEST_F(ExplanationExamples, TheRightFileIsValidAndTheCheckHasNothingToSay) {
    const auto examples = Examples("Right", "xml");
    EXPECT_GT(examples.size(), 45U);
    for (const auto& [explanation, example] : examples) {
        SCOPED_TRACE(explanation["key"]);
        if (example["byProgram"].get<bool>()) {
            const ChildResult result = CheckByProgram(explanation, example);
            EXPECT_EQ(result.status, 0);
            EXPECT_EQ(result.standardOutput, "");
            continue;
        }
        const Json document = Check(example);
        EXPECT_EQ(document["valid"], true);
        EXPECT_EQ(document["message"], "");
        EXPECT_EQ(document["findings"], Json::array());
    }
}

TEST_F(ExplanationExamples, CommandsSayWhatIsShown) {
    std::size_t count = 0;
    for (const char* role : {"Wrong", "Right", "Example"}) {
        for (const auto& [explanation, example] : Examples(role, "console")) {
            SCOPED_TRACE(explanation["key"]);
            EXPECT_NE(Shown(example), "");
            EXPECT_EQ(Said(explanation, example), Shown(example));
            ++count;
        }
    }
    EXPECT_GE(count, 12U);
}

TEST_F(ExplanationExamples, WrongCommandsShowTheFaultAndRightOnesDoNot) {
    const auto shows = [](const Json& explanation, const Json& example) {
        const std::string part = explanation["kind"] == "heading"
                                     ? explanation["text"].get<std::string>() + " : "
                                     : "[" + explanation["key"].get<std::string>() + "]";
        return Contains(Shown(example), part);
    };
    for (const auto& [explanation, example] : Examples("Wrong", "console"))
        EXPECT_TRUE(shows(explanation, example)) << explanation["key"];
    for (const auto& [explanation, example] : Examples("Right", "console"))
        EXPECT_FALSE(shows(explanation, example)) << explanation["key"];
}

} // namespace dyadctx::test
