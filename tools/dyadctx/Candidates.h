// Which context file CreateCollector takes, and why: the sources it asks, in its order.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dyadctx::tool {

enum class Verdict {
    Chosen,   // the library reads this file
    Rejected, // the library takes this file and then cannot read it
    Absent,   // asked, and there is nothing
    Ignored   // an earlier source decided
};

// The entry of the settings that names a file.
struct SettingsEntry {
    std::string file;
    // From 1; 0 when there is no such entry.
    int line = 0;
};

struct Candidate {
    // "VELDyadCtxInit", "settings" or "VELInstallPath".
    std::string origin;
    // The place in the list of installation folders, from 1; 0 for the other origins.
    int root = 0;
    std::optional<std::string> path;
    Verdict verdict = Verdict::Absent;
    std::string reason;
    // The environment variable it comes from; for the settings the one that leads to their folder.
    // Empty when none does.
    std::string variable;
    // Its value, of a list this entry; none while the variable is not set.
    std::optional<std::string> value;
    // Only of the settings, and only where the environment names a folder for them.
    std::optional<SettingsEntry> settings;
    // What would keep the library from reading the path; empty for nothing and without path.
    std::string fault;
};

struct FileChoice {
    std::vector<Candidate> candidates;
    // The file the library takes, readable or not.
    std::optional<std::string> file;
    bool isDefault = false;
    bool usable = false;
};

FileChoice ChooseFile();

const char* NameOf(Verdict verdict);

// Why the library would not open this file; empty when it would.
std::string ReasonAgainst(const std::string& file);

} // namespace dyadctx::tool
