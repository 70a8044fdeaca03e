// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Command.h"

#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Words.h"

#include <array>

namespace dyadctx::tool {

namespace {

constexpr const char* Database = "database";
// In the order of the collector's type filter.
constexpr std::array<const char*, 4> Views{"all", "path", Database, "file"};

} // namespace

Command::~Command() = default;

void DeclareFile(Arguments& arguments, std::optional<std::string>& file, const char* addition) {
    arguments
        .Add("FILE", file,
             std::string("The context file, - for standard input; without it, the one that "
                         "`dyadctx which` tells") +
                 addition)
        .Takes("FILE");
}

Arguments::Option DeclareFormat(Arguments& arguments, std::string& format,
                                const std::vector<std::string>& formats) {
    return arguments
        .Add("--format", format, "How to write the answer: text for people, json for programs")
        .OneOf(formats)
        .ShowPreset();
}

void DeclareView(Arguments& arguments, ViewChoice& choice) {
    arguments
        .Add("--type", choice.type,
             "Only the contexts that a program offers for this kind of work: path, the folders; "
             "database, databases and folders; file, files and folders; each with the default "
             "context. Needs --db-context. Default: all, or database with --provider")
        .OneOf(std::vector<std::string>(Views.begin(), Views.end()));
    arguments
        .Add("--provider", choice.providers,
             "Only the database contexts of this provider (a ConnectorName), and the folders")
        .Takes("PROVIDER")
        .OneValueEach();
}

void SelectView(VELDyadCtxCollector& collector, const ViewChoice& choice, Output& output) {
    const std::string fallback = choice.providers.empty() ? Views[0] : Database;
    const std::string view = choice.type.value_or(fallback);
    if (!choice.providers.empty() && view != Database)
        throw Failure(ExitStatus::Usage, Words("view.provider", {view}));
    if (view == Views[1])
        collector.SetContextPathType();
    if (view == Views[2]) {
        VELListValVELUnicodeString providers;
        for (const std::string& provider : choice.providers)
            providers.Append(VELUnicodeString(provider));
        if (collector.SetContextDatabaseType(providers) < 0)
            throw Failure(ExitStatus::Internal, "a database provider did not answer");
    }
    if (view == Views[3])
        collector.SetContextFileType();
    if (view != NameOfView(collector))
        output.Note(Words("view.off", {view}));
}

const char* NameOfView(const VELDyadCtxCollector& collector) {
    int type = 0;
    collector.GetContextType(type);
    const bool known = type >= 0 && type < static_cast<int>(Views.size());
    return Views[known ? static_cast<std::size_t>(type) : 0];
}

} // namespace dyadctx::tool
