// SPDX-License-Identifier: MIT
// All that is to be said about a context file: what the library's check of the file finds, and what
// the tool adds.
#pragma once

#include "check/VELDyadCtxFileCheck.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/FindingRecorder.h"
#include "tools/dyadctx/IdleVariables.h"
#include "tools/dyadctx/Source.h"

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

struct DiagnosisOptions {
    // Whether to look for the paths and files that contexts name.
    bool deep = false;
    // Kinds of findings to leave out.
    std::vector<std::string> silenced;
};

// The kinds of findings that are not messages of the library: those of its check and those of the
// tool.
std::vector<VELDyadCtxFindingKind> FindingKinds();

// The findings of a source, in the order of its file; when there is no file, what the library said
// while it was loaded. Throws std::bad_alloc.
std::vector<Finding> Diagnose(const Source& source, const DiagnosisOptions& options);

// How many findings of a loaded source, consequences apart, the DB context environment would make
// vanish; 0 while it is on. Throws std::bad_alloc.
std::size_t CountVanishing(const Source& source, const std::vector<Finding>& findings,
                           const DiagnosisOptions& options);

// The findings of a check that has run, and the errors among them.
std::vector<Finding> FindingsOf(const VELDyadCtxFileCheck& check);
std::vector<Finding> ErrorsOf(const VELDyadCtxFileCheck& check);
// Whether it ended at text that is no XML.
bool FoundSyntaxError(const VELDyadCtxFileCheck& check);
// The number that the finding of this kind has as its first parameter; 0 without one.
int CountInFinding(const VELDyadCtxFileCheck& check, std::string_view id);

// Environment variables that are set and change nothing. `fileIsNamed`: whether the user named the
// file.
std::vector<Finding> VariablesWithoutEffect(bool fileIsNamed);

Finding ToFinding(const IdleVariable& variable);

} // namespace dyadctx::tool
