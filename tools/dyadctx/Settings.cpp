// `settings`: the settings the library reads.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/SettingsText.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/SystemServices.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <exception>

namespace dyadctx::tool {

namespace {

class Settings final : public Command {
public:
    const char* Name() const override { return "settings"; }
    const char* Summary() const override { return "Show and change the settings"; }
    const char* Synopsis() const override {
        return "path|get|set|unset [ATTRIBUTE [VALUE]] [--format text|json]";
    }
    std::vector<Example> Examples() const override;
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    void WritePath(const std::string& file, Output& output) const;
    void WriteValue(const std::string& file, Output& output) const;
    void WriteAll(const std::string& file, Output& output) const;
    void Change(const std::string& file) const;

    const CLI::App* arguments_ = nullptr;
    std::optional<std::string> name_;
    std::string value_;
    std::string format_ = "text";
};

std::string ExistingFolderFile() {
    std::string file = SettingsFile();
    if (file.empty())
        throw Failure(ExitStatus::NoFile, "the environment names no folder for settings; "
                                          "set VELSettingPath");
    return file;
}

Failure NoSuchAttribute(const std::string& name, const std::string& file) {
    std::vector<std::string> names{FileAttribute};
    for (const auto& [known, value] : SettingsText::Read(file).All())
        names.push_back(known);
    return Failure(ExitStatus::NotFound, "there is no attribute '" + Visible(name) + "' in " +
                                             Visible(file) + DidYouMean(name, names));
}

void WriteFile(const std::string& file, const std::string& text) {
    try {
        ReplaceFile(file, text);
    } catch (const std::exception& error) {
        throw Failure(ExitStatus::NotWritten,
                      Visible(file) + " could not be written: " + error.what());
    }
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

void Settings::Declare(CLI::App& arguments) {
    arguments_ = &arguments;
    arguments.require_subcommand(1);
    DeclareFormat(arguments, format_, {"text", "json"});
    const std::string meaning = std::string("Its name; ") + FileAttribute +
                                " is the one that the library reads: the context file";
    const auto add = [&arguments](const char* name, const char* summary) {
        return arguments.add_subcommand(name, summary)->fallthrough();
    };
    add("path", "Print where the settings file is");
    add("get", "Print all settings, or one")->add_option("ATTRIBUTE", name_, meaning);
    CLI::App* set = add("set", "Give an attribute a value");
    set->add_option("ATTRIBUTE", name_, meaning)->required();
    set->add_option(
           "VALUE", value_,
           "Its value: for DYAD_Ctx_XmlFile, the path of a context file with its folder, such as "
           "./site.xml")
        ->required();
    add("unset", "Remove an attribute")->add_option("ATTRIBUTE", name_, meaning)->required();
}

ExitStatus Settings::Run(Output& output) {
    const std::string file = ExistingFolderFile();
    const std::string action = arguments_->get_subcommands().front()->get_name();
    if (action == "path")
        WritePath(file, output);
    else if (action == "get" && name_)
        WriteValue(file, output);
    else if (action == "get")
        WriteAll(file, output);
    else
        Change(file);
    return ExitStatus::Done;
}

void Settings::WritePath(const std::string& file, Output& output) const {
    if (format_ == "json")
        output.WriteJson(DocumentFor(file));
    else
        output.Write(Visible(file) + "\n");
}

void Settings::WriteValue(const std::string& file, Output& output) const {
    const std::optional<std::string> value = SettingsText::Read(file).Get(*name_);
    if (!value)
        throw NoSuchAttribute(*name_, file);
    if (format_ != "json") {
        output.Write(Visible(*value) + "\n");
        return;
    }
    Json document = DocumentFor(file);
    document["name"] = *name_;
    document["value"] = *value;
    output.WriteJson(document);
}

void Settings::WriteAll(const std::string& file, Output& output) const {
    const auto attributes = SettingsText::Read(file).All();
    Json document = DocumentFor(file);
    document["attributes"] = Json::object();
    Table table({"NAME", "VALUE"});
    for (const auto& [name, value] : attributes) {
        document["attributes"][name] = value;
        table.AddRow({Visible(name), Visible(value)});
    }
    if (format_ == "json")
        output.WriteJson(document);
    else
        output.Write(table.Render(output));
}

void Settings::Change(const std::string& file) const {
    SettingsText settings = SettingsText::Read(file);
    if (arguments_->got_subcommand("set"))
        settings.Set(*name_, value_);
    else if (!settings.Unset(*name_))
        throw NoSuchAttribute(*name_, file);
    WriteFile(file, settings.Text());
}

} // namespace

std::unique_ptr<Command> MakeSettings() {
    return std::make_unique<Settings>();
}

} // namespace dyadctx::tool
