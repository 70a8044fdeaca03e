// SPDX-License-Identifier: MIT
// Contexts and scenarios as plain values, ready to be shown, compared and turned into JSON.
#pragma once

#include "check/VELDyadCtxFileCheck.h"
#include "collector/VELDyadCtxCollector.h"
#include "tools/dyadctx/FindingRecorder.h"
#include "tools/dyadctx/Output.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace dyadctx::tool {

struct ProviderFacts {
    std::string name;
    std::vector<std::pair<std::string, std::string>> serverDetails;
    bool operator==(const ProviderFacts&) const = default;
};

struct SiteFacts {
    // The text that identifies the site.
    std::string site;
    std::optional<ProviderFacts> provider;
    bool operator==(const SiteFacts&) const = default;
};

struct ContextFacts {
    int position = 0;
    std::string name;
    std::string parameter;
    std::string parameterType;
    std::string label;
    std::vector<std::string> friends;
    std::optional<std::string> associated;
    std::optional<ProviderFacts> provider;
    std::vector<SiteFacts> sites;
    VELPlace place;
    // Where each attribute that is written in its element begins.
    std::vector<std::pair<std::string, VELPlace>> attributes;
};

struct ScenarioFacts {
    std::string channel;
    std::string channelContext;
    std::string profile;
    std::string scenario;
    std::string optionName;
    std::string optionValue;
    auto operator<=>(const ScenarioFacts&) const = default; // NOLINT(modernize-use-nullptr)
};

// The contexts of the current view, in its order; with their places where the check that made the
// collector is given.
std::vector<ContextFacts> FactsOfView(VELDyadCtxCollector& collector,
                                      const VELDyadCtxFileCheck* check = nullptr);
// Every row, in the order of the file.
std::vector<ScenarioFacts> FactsOfScenarios(const VELDyadCtxCollector& collector);

// A line or column, null where there is none.
Json NumberOrNull(int number);
Json ToJson(const ContextFacts& context);
Json ToJson(const std::optional<ProviderFacts>& provider);
Json ToJson(const ScenarioFacts& scenario);

// "KRL (ServerName=srv1, Role=main)"; details without a value are left out.
std::string Describe(const ProviderFacts& provider);
// The type in the user's language, or as the file has it where it is none of the four.
std::string TypeLabel(const ContextFacts& context);
// Names one after the other, made visible.
std::string Joined(const std::vector<std::string>& names);

std::string ToText(const VELUnicodeString& text);

} // namespace dyadctx::tool
