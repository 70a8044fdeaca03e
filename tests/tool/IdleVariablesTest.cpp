// SPDX-License-Identifier: MIT
// Environment variables that are set and have no effect, as `which` and `check` tell them.
#include "tool/ToolTest.h"

#include <filesystem>

namespace dyadctx::test {

namespace {

constexpr const char* Contexts = R"(<Context Name="DYADIC" Parameter="" ParameterType="Default"/>)";
constexpr const char* DefaultFile = "resources/xml/DYAD/CONTEXT/Default.xml";

class IdleVariables : public ToolTest {
protected:
    void SetUp() override {
        WriteContexts("a.xml", Contexts);
        WriteContexts(std::string("root/") + DefaultFile, Contexts);
    }
    // "NAME: reason" of each.
    std::vector<std::string> Told(const Environment& environment,
                                  std::vector<std::string> arguments = {"which"}) const {
        arguments.insert(arguments.end(), {"--format", "json"});
        const ChildResult result = Run(arguments, environment);
        const Json document = Json::parse(result.standardOutput, nullptr, false);
        EXPECT_FALSE(document.is_discarded()) << result.standardError;
        std::vector<std::string> told;
        for (const Json& one : document["withoutEffect"]) {
            const std::string name = one["variable"];
            EXPECT_EQ(one["value"], environment.at(name).value_or("(none)"));
            told.push_back(name + ": " + one["reason"].get<std::string>());
        }
        return told;
    }
    std::string A() const { return folder_.PathOf("a.xml"); }
};

using Strings = std::vector<std::string>;

} // namespace

TEST_F(IdleVariables, WithoutAnyNothingIsTold) {
    EXPECT_EQ(Told({}), Strings());
    EXPECT_EQ(Told({{"VELDyadCtxInit", A()}, {"VELDyadCtxOut", "copy.xml"}}), Strings());
    EXPECT_EQ(Told({{"VELDyadCtxInit", "0"}}), Strings());
}

TEST_F(IdleVariables, AMisspeltNameWithAPrefixOfTheLibraryGetsTheNearestOne) {
    EXPECT_EQ(Told({{"VELDyadCtxInt", A()},
                    {"VELDYADCTXOUT", "copy.xml"},
                    {"TE_MULTISITE_DBCONTEXTS", "1"},
                    {"ExchangeChanel", A()}}),
              Strings({"ExchangeChanel: the library reads no such variable; the nearest one is "
                       "ExchangeChannel",
                       "TE_MULTISITE_DBCONTEXTS: the library reads no such variable; the nearest "
                       "one is TE_MULTISITE_DBCONTEXT",
                       "VELDYADCTXOUT: the library reads no such variable; the nearest one is "
                       "VELDyadCtxOut",
                       "VELDyadCtxInt: the library reads no such variable; the nearest one is "
                       "VELDyadCtxInit"}));
    EXPECT_EQ(Told({{"VELOCITY", "3"}, {"VELUM", ""}, {"VLDyadCtxInit", A()}, {"EXCHANGE", "x"}}),
              Strings());
}

TEST_F(IdleVariables, ANameInOtherLettersWithTheSameValueIsTheSameVariable) {
    EXPECT_EQ(Told({{"VELDyadCtxInit", A()}, {"VELDYADCTXINIT", A()}}), Strings());
}

TEST_F(IdleVariables, ASingleCharacterNamesNoFile) {
    EXPECT_EQ(Told({{"VELDyadCtxInit", "x"}}),
              Strings({"VELDyadCtxInit: a single character names no file"}));
    EXPECT_EQ(Told({{"VELDyadCtxInit", "\xC3\xA4"}}),
              Strings({"VELDyadCtxInit: a single character names no file"}));
}

TEST_F(IdleVariables, AnEmptyValueIsAsGoodAsNone) {
    for (const char* name : {"VELDyadCtxOut", "VELInstallPath", "VELSettingPath",
                             "VELDbContextEnvironment", "VELDyadContextTrace", "VELMessageLanguage",
                             "VELMessageCatalogPath", "NO_COLOR", "ExchangeChannel"})
        EXPECT_EQ(Told({{name, ""}}), Strings({std::string(name) + ": it is empty"}));
}

TEST_F(IdleVariables, WhatComesAfterTheDecisionDecidesNothing) {
    const std::string reason = ": an earlier source decides which file is taken";
    EXPECT_EQ(Told({{"VELDyadCtxInit", A()},
                    {"VELSettingPath", "settings"},
                    {"VELInstallPath", folder_.PathOf("root")}}),
              Strings({"VELSettingPath" + reason, "VELInstallPath" + reason}));
    folder_.Write("settings/DyadSettingsRep.toml", "DYAD_Ctx_XmlFile = '" + A() + "'");
    EXPECT_EQ(Told({{"VELSettingPath", folder_.PathOf("settings")},
                    {"VELInstallPath", folder_.PathOf("root")}}),
              Strings({"VELInstallPath" + reason}));
}

TEST_F(IdleVariables, AFolderWithoutWhatIsSoughtHasNoEffect) {
    EXPECT_EQ(Told({{"VELInstallPath", "/no/such;/neither"}}),
              Strings({"VELInstallPath: none of its folders holds a default file"}));
    EXPECT_EQ(Told({{"VELInstallPath", folder_.PathOf("")}}),
              Strings({"VELInstallPath: the folder does not hold this file"}));
    EXPECT_EQ(Told({{"VELInstallPath", "/no/such;" + folder_.PathOf("root")}}), Strings());
    EXPECT_EQ(Told({{"VELSettingPath", "/no/such"}}),
              Strings({"VELSettingPath: there is no file /no/such/DyadSettingsRep.toml"}));
    EXPECT_EQ(Told({{"XDG_CONFIG_HOME", "relative"}}),
              Strings({"XDG_CONFIG_HOME: it is not an absolute path"}));
    EXPECT_EQ(Told({{"XDG_CONFIG_HOME", "/no/such"}}), Strings());
}

TEST_F(IdleVariables, WithoutAFileNoneIsWritten) {
    EXPECT_EQ(Told({{"VELDyadCtxOut", "copy.xml"}}),
              Strings({"VELDyadCtxOut: no context file can be read, so none is written"}));
}

TEST_F(IdleVariables, OnlyOneValueSwitchesDatabasesOn) {
    const Strings idle{
        "VELDbContextEnvironment: only the value 1 switches the DB context environment on"};
    for (const char* value : {"true", "TRUE", " 1", "01", "2", "on"})
        EXPECT_EQ(Told({{"VELDbContextEnvironment", value}}), idle) << value;
    EXPECT_EQ(Told({{"VELDbContextEnvironment", "1"}}), Strings());
    EXPECT_EQ(Told({{"VELDbContextEnvironment", "0"}}), Strings());
    EXPECT_EQ(Told({{"VELDbContextEnvironment", "on"}}, {"which", "--db-context"}), Strings());
    EXPECT_EQ(Told({{"TE_MULTISITE_DBCONTEXT", "1"}}),
              Strings({"TE_MULTISITE_DBCONTEXT: there are no database contexts while the DB "
                       "context environment is off"}));
    EXPECT_EQ(Told({{"TE_MULTISITE_DBCONTEXT", ""}}, {"which", "--db-context"}), Strings());
}

TEST_F(IdleVariables, MessagesThatAreNotThereAreTold) {
    EXPECT_EQ(Told({{"VELMessageLanguage", "de_AT.UTF-8"}}), Strings());
    EXPECT_EQ(Told({{"VELMessageLanguage", "es"}}),
              Strings({"VELMessageLanguage: there are no messages in this language; English is "
                       "taken"}));
    EXPECT_EQ(Told({{"VELMessageCatalogPath", "/no/such"}}),
              Strings({"VELMessageCatalogPath: there is no such folder, or it may not be read"}));
    EXPECT_EQ(Told({{"VELMessageCatalogPath", folder_.PathOf("root")}}),
              Strings({"VELMessageCatalogPath: the folder holds no file "
                       "VELDyadCtxDlgSelection.LANGUAGE.mo"}));
    folder_.Write("texts/VELDyadCtxDlgSelection.de.mo", "");
    EXPECT_EQ(Told({{"VELMessageCatalogPath", folder_.PathOf("texts")}}), Strings());
}

TEST_F(IdleVariables, TracesThatStayOffAreTold) {
    for (const char* value : {"", "yes", "0x", "-"})
        EXPECT_EQ(Told({{"VELDyadCtxTracer", value}}),
                  Strings({"VELDyadCtxTracer: only a number other than 0 turns the console trace "
                           "on"}))
            << value;
    for (const char* value : {"0", "1", "-7x"})
        EXPECT_EQ(Told({{"VELDyadCtxTracer", value}}), Strings()) << value;
    EXPECT_EQ(Told({{"VELDyadCtxTracer", ""}, {"VELDyadContextTrace", "1"}}), Strings());
    EXPECT_EQ(Told({{"VELDyadContextTrace", folder_.PathOf("trace.log")}}), Strings());
    EXPECT_EQ(Told({{"VELDyadContextTrace", "/no/such/trace.log"}}),
              Strings({"VELDyadContextTrace: there is no folder /no/such for the trace"}));
    EXPECT_EQ(Told({{"VELDyadContextTrace", folder_.PathOf("root")}}),
              Strings({"VELDyadContextTrace: the trace cannot be written there"}));
}

TEST_F(IdleVariables, ExchangeChannelDoesNotChooseTheFile) {
    EXPECT_EQ(Told({{"VELDyadCtxInit", A()}, {"ExchangeChannel", "/b.xml"}}),
              Strings({"ExchangeChannel: only CreateExchangeChannelCollector reads it, "
                       "CreateCollector does not"}));
}

TEST_F(IdleVariables, CheckNotesThemUnderAnIdThatCanBeLeftOut) {
    const Environment environment{{"VELDyadCtxInit", A()},
                                  {"VELInstallPath", folder_.PathOf("root")},
                                  {"VELMessageLanguage", "es"}};
    const std::string language = "note: The variable VELMessageLanguage is set, but has no effect: "
                                 "there are no messages in this language; English is taken. "
                                 "[variable-without-effect]\n";
    const ChildResult result = Run({"check"}, environment);
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.standardOutput.find("note: The variable VELInstallPath is set, but has no "
                                         "effect: an earlier source decides which file is taken. "
                                         "[variable-without-effect]\n"),
              std::string::npos)
        << result.standardOutput;
    EXPECT_NE(result.standardOutput.find(language), std::string::npos) << result.standardOutput;
    EXPECT_EQ(Run({"check", "--fail-on", "note"}, environment).status, 1);
    EXPECT_EQ(Run({"check", "--fail-on", "warning"}, environment).status, 0);
    Expect({"left out",
            {"check", "-q", "--fail-on", "note", "--off", "variable-without-effect"},
            0,
            "",
            {},
            environment});
    // Which file is taken was the user's own choice.
    const std::string named = Run({"check", "a.xml"}, environment).standardOutput;
    EXPECT_EQ(named,
              "a.xml: " + language + "a.xml: valid, 1 context\n1 file checked, valid, 1 note\n");
}

} // namespace dyadctx::test
