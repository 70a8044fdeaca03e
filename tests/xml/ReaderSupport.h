// SPDX-License-Identifier: MIT
// Reading context files without linking and checking them, and the pieces such files are made of.
#pragma once

#include "collector/VELDyadCtxCollector.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::test {

// ---- Pieces of CtxData
// --------------------------------------------------------------------------- A context of type
// Path with the parameter "p".
std::string Path(const std::string& name, const std::string& inner = "");
// A context that has nothing but its name.
std::string Named(const std::string& name, const std::string& inner = "");
std::string Database(const std::string& name, const std::string& connector,
                     const std::string& server, const std::string& role,
                     const std::string& inner = "");
std::string Friends(const std::string& inner);
std::string Associated(const std::string& inner);
std::string Scenario(const std::string& inner);
std::string ScenarioId(const std::string& ident, const std::string& name,
                       const std::string& inner = "");
std::string Option(const std::string& name, const std::string& value);

// ---- Reading
// ------------------------------------------------------------------------------------- What the
// reader made of a file: the collector as it left it, its code and the message text.
struct Reading {
    std::unique_ptr<VELDyadCtxCollector> collector;
    VELResult result = 0;
    std::string message;
};

Reading ReadFile(const std::string& path, const std::string& message = "");
Reading ReadText(std::string_view document, const std::string& message = "");
// Reads a document with this content of CtxData.
Reading ReadContexts(std::string_view contexts, const std::string& message = "");

// The names of every context object, in the order in which they were entered.
std::vector<std::string> AllOf(const Reading& reading);
// The names of the declared contexts.
std::vector<std::string> DeclaredOf(const Reading& reading);
// A declared context; the position runs from 1.
VELDyadContext& DeclaredAt(const Reading& reading, int position);
// The names of a declared context's friends.
std::vector<std::string> FriendsAt(const Reading& reading, int position);
// The name of a declared context's associated context; "none" without one.
std::string AssociatedAt(const Reading& reading, int position);
// The rows of scenarios: channel, channel context, profile, id, option name, option value, with "|"
// between them.
std::vector<std::string> RowsOf(const Reading& reading);

// "name=value" of every server detail, the connector first.
std::vector<std::string> ProviderOf(const VELIDyadDbProvider_var& provider);
std::vector<std::string> SitesOf(VELDyadContext& context);

} // namespace dyadctx::test
