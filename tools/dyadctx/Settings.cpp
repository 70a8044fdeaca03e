// SPDX-License-Identifier: MIT
// `settings`: the settings the library reads.
#include "platform/VELSysSettingRepository.h"
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/FileChoiceText.h"
#include "tools/dyadctx/FindingRecorder.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/Words.h"

#include <nlohmann/json.hpp>

#include <new>

namespace dyadctx::tool {

namespace {

using Kind = VELSettingRefusal::Kind;

class Settings final : public Command {
public:
    const char* Name() const override { return "settings"; }
    const char* Summary() const override { return "Show and change the settings"; }
    const char* Synopsis() const override {
        return "path|get|set|unset [ATTRIBUTE [VALUE]] [--format text|json]";
    }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    void WritePath(const std::string& file, Output& output) const;
    void WriteValue(const std::string& file, Output& output) const;
    void WriteAll(const std::string& file, Output& output) const;
    void Change(const std::string& file, Output& output) const;

    std::optional<Arguments> arguments_;
    std::optional<std::string> name_;
    std::string value_;
    std::string format_ = "text";
};

// The path of the settings file, whether or not it exists.
std::string SettingsFile() {
    VELUnicodeString file;
    if (VELSysSettingRepository::GetRepositoryFile(SettingsRepository, file) < 0)
        throw Failure(ExitStatus::NoFile, Words("settings.no-folder"));
    return std::string(file.AsView());
}

// Empty also where there is no file.
VELListVal<VELSetting> AllSettings(VELSettingRefusal& refusal) {
    VELListVal<VELSetting> settings;
    VELSysSettingRepository::ListAttrs(SettingsRepository, settings, &refusal);
    if (refusal.kind == Kind::NoFile)
        refusal = {};
    return settings;
}

Failure NoSuchAttribute(const std::string& name, const std::string& file) {
    VELSettingRefusal refusal;
    const VELListVal<VELSetting> settings = AllSettings(refusal);
    std::vector<std::string> names{FileAttribute};
    for (int i = 1; i <= settings.Size(); ++i)
        names.emplace_back(settings[i].name.AsView());
    return Failure(ExitStatus::NotFound,
                   Words("settings.no-attribute", {Visible(name), Visible(file)}) +
                       DidYouMean(name, names));
}

// Throws where the library refused to read or change `name`.
void Require(const VELSettingRefusal& refusal, const std::string& file, const std::string& name) {
    const std::string reason = Visible(refusal.reason.AsView());
    switch (refusal.kind) {
    case Kind::None:
        return;
    case Kind::NoFile:
    case Kind::NoAttribute:
        throw NoSuchAttribute(name, file);
    case Kind::NoFolder:
    case Kind::NotReadable:
        throw Failure(ExitStatus::NoFile, Words("failure.not-readable", {Visible(file), reason}));
    case Kind::NotToml:
    case Kind::NotText:
        throw Failure(ExitStatus::NotLoadable,
                      PlacePrefix(file, {refusal.line, refusal.column}) + reason);
    case Kind::BadValue:
        throw Failure(ExitStatus::Usage, Words("settings.bad-value", {Visible(name), reason}));
    case Kind::NoMemory:
        throw std::bad_alloc();
    default:
        throw Failure(ExitStatus::NotWritten,
                      Words("failure.not-written", {Visible(file), reason}));
    }
}

// What the library will say of the value; empty when it takes it.
std::string RemarkOn(const std::string& name, const std::string& value) {
    if (name != FileAttribute)
        return RemarkOnUnreadAttribute(name);
    if (value.empty())
        return Words("settings.empty-value");
    const std::string reason = ReasonAgainst(value);
    return reason.empty() ? "" : Words("settings.refused", {Visible(value), reason});
}

Json DocumentFor(const std::string& file) {
    Json document;
    document["schema"] = "dyadctx/settings/1";
    document["file"] = file;
    return document;
}

std::vector<Example> Settings::Examples() const {
    return {{"dyadctx settings set DYAD_Ctx_XmlFile /data/site.xml",
             "From now on /data/site.xml is the file in use"},
            {"dyadctx settings get", "All settings"}};
}

void Settings::Declare(Arguments& arguments) {
    DeclareFormat(arguments, format_, {"text", "json"});
    const std::string meaning = std::string("Its name; ") + FileAttribute +
                                " is the one that the library reads: the context file";
    arguments.AddCommand("path", "Print where the settings file is");
    arguments.AddCommand("get", "Print all settings, or one").Add("ATTRIBUTE", name_, meaning);
    Arguments set = arguments.AddCommand("set", "Give an attribute a value");
    set.Add("ATTRIBUTE", name_, meaning).Required();
    set.Add("VALUE", value_,
            "Its value: for DYAD_Ctx_XmlFile, the path of a context file with its folder, such as "
            "./site.xml")
        .Required();
    arguments.AddCommand("unset", "Remove an attribute")
        .Add("ATTRIBUTE", name_, meaning)
        .Required();
    arguments_ = arguments;
}

ExitStatus Settings::Run(Output& output) {
    const std::string file = SettingsFile();
    const std::string action = arguments_->ChosenCommand();
    if (action == "path")
        WritePath(file, output);
    else if (action == "get" && name_)
        WriteValue(file, output);
    else if (action == "get")
        WriteAll(file, output);
    else
        Change(file, output);
    return ExitStatus::Done;
}

void Settings::WritePath(const std::string& file, Output& output) const {
    if (format_ == "json")
        output.WriteJson(DocumentFor(file));
    else
        output.Write(Visible(file) + "\n");
}

void Settings::WriteValue(const std::string& file, Output& output) const {
    VELSettingRefusal refusal;
    VELUnicodeString value;
    VELSysSettingRepository::GetAttr(SettingsRepository, name_->c_str(), value, &refusal);
    Require(refusal, file, *name_);
    if (format_ != "json") {
        output.Write(Visible(value.AsView()) + "\n");
        return;
    }
    Json document = DocumentFor(file);
    document["name"] = *name_;
    document["value"] = value.AsView();
    output.WriteJson(document);
}

void Settings::WriteAll(const std::string& file, Output& output) const {
    VELSettingRefusal refusal;
    const VELListVal<VELSetting> settings = AllSettings(refusal);
    Require(refusal, file, "");
    Json document = DocumentFor(file);
    document["attributes"] = Json::object();
    Table table({Words("heading.name"), Words("heading.value")});
    for (int i = 1; i <= settings.Size(); ++i) {
        const std::string_view name = settings[i].name.AsView();
        const std::string_view value = settings[i].value.AsView();
        document["attributes"][std::string(name)] = value;
        table.AddRow({Visible(name), Visible(value)});
    }
    if (format_ == "json")
        output.WriteJson(document);
    else
        output.Write(table.Render(output));
    for (const std::string& remark : RemarksOnMisspeltAttributes())
        output.Note(remark);
}

void Settings::Change(const std::string& file, Output& output) const {
    VELSettingRefusal refusal;
    const char* name = name_->c_str();
    const bool sets = arguments_->ChosenCommand() == "set";
    if (sets)
        VELSysSettingRepository::SetAttr(SettingsRepository, name, VELUnicodeString(value_),
                                         &refusal);
    else
        VELSysSettingRepository::RemoveAttr(SettingsRepository, name, &refusal);
    Require(refusal, file, *name_);
    const std::string remark = sets ? RemarkOn(*name_, value_) : "";
    if (!remark.empty())
        output.Note(remark);
}

} // namespace

std::unique_ptr<Command> MakeSettings() {
    return std::make_unique<Settings>();
}

} // namespace dyadctx::tool
