// The contexts a command works on.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "tools/dyadctx/ExitStatus.h"
#include "tools/dyadctx/FindingRecorder.h"
#include "tools/dyadctx/Output.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace dyadctx::tool {

struct Source {
    // Null when the file could not be loaded.
    std::unique_ptr<VELDyadCtxCollector> collector;
    // The file as the user wrote it, or as the library chose it; empty when there is none.
    std::string file;
    // The same as the library was given it.
    std::string path;
    bool isDefault = false;
    // What the factory answered, word by word.
    std::string message;
    std::vector<Finding> findings;
    // Done, NoFile, NotLoadable or NotWritten.
    ExitStatus status = ExitStatus::Done;
};

// Loads that file; without one, the file CreateCollector chooses.
Source LoadSource(const std::optional<std::string>& file);

// The same for a command that has no answer without contexts: tells the findings on standard error
// and throws a Failure.
Source LoadSourceOrFail(const std::optional<std::string>& file, Output& output);

// What the latter does with a source that failed.
[[noreturn]] void FailWith(const Source& source, Output& output);

// The path that names the same file and has a folder, as the library wants it.
std::string WithFolder(const std::string& file);

// What to say about a failed source that left no message.
std::string ReasonOfSilentFailure(const Source& source);

bool IsDbContextEnvironmentOn();

} // namespace dyadctx::tool
