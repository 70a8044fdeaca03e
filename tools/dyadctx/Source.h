// SPDX-License-Identifier: MIT
// The contexts a command works on.
#pragma once

#include "check/VELDyadCtxFileCheck.h"
#include "collector/VELDyadCtxCollector.h"
#include "tools/dyadctx/ExitStatus.h"
#include "tools/dyadctx/FindingRecorder.h"
#include "tools/dyadctx/Output.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace dyadctx::tool {

// As FILE on the command line: what comes on standard input.
inline constexpr const char* StandardInput = "-";

enum class Reading {
    Contexts,  // what a factory of the library makes of the file
    WithPlaces // the same by a check of the file, which knows where everything is
};

struct Source {
    // Null when the file could not be loaded; owned by `made` or `check`.
    VELDyadCtxCollector* collector = nullptr;
    std::unique_ptr<VELDyadCtxCollector> made;
    // The check that gave the collector; null when a factory did.
    std::unique_ptr<VELDyadCtxFileCheck> check;
    // The file as the user wrote it, or as the library chose it; empty when there is none.
    std::string file;
    // The same as the library was given it.
    std::string path;
    // What came on standard input, instead of a file.
    std::optional<VELUnicodeString> text;
    bool isDefault = false;
    // Whether the user named the file.
    bool isNamed = false;
    // What the factory answered, word by word.
    std::string message;
    std::vector<Finding> findings;
    // Done, NoFile, NotLoadable or NotWritten.
    ExitStatus status = ExitStatus::Done;
    // Why the system gave up reading the file; empty otherwise.
    std::string whyNotRead;
    // The reason that the system had against the file VELDyadCtxOut names; with NotWritten only.
    std::string whyNotWritten;
};

// The name of standard input in findings; "-" until set.
void SetStandardInputName(const std::string& name);

// Loads that file; without one, the file CreateCollector chooses. Standard input is read once in a
// run, and always with places. Of a file that cannot be loaded there are no places.
Source LoadSource(const std::optional<std::string>& file, Reading reading = Reading::Contexts);

// The same for a command that needs the contexts: otherwise writes the findings to standard error
// and throws a Failure.
Source LoadSourceOrFail(const std::optional<std::string>& file, Output& output,
                        Reading reading = Reading::Contexts);

// What the latter does with a source that failed.
[[noreturn]] void FailWith(const Source& source, Output& output);

// Checks what the source was loaded from. Throws std::bad_alloc.
void RunCheck(VELDyadCtxFileCheck& check, const Source& source);

// The path that names the same file and has a folder, as the library wants it.
std::string WithFolder(const std::string& file);

// What to say about a failed source that left no message.
std::string ReasonOfSilentFailure(const Source& source);

bool IsDbContextEnvironmentOn();

} // namespace dyadctx::tool
