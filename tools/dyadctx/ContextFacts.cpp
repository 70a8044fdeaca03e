// SPDX-License-Identifier: MIT
#include "tools/dyadctx/ContextFacts.h"

#include "tools/dyadctx/DisplayText.h"

#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

std::optional<ProviderFacts> FactsOf(const VELIDyadDbProvider_var& provider) {
    VELUnicodeString name;
    if (provider.IsNull() || provider->GetName(name) < 0)
        return std::nullopt;
    ProviderFacts facts;
    facts.name = ToText(name);
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    if (provider->GetServerDetails(keys, values) < 0)
        return facts;
    for (int i = 1; i <= keys.Size() && i <= values.Size(); ++i)
        facts.serverDetails.emplace_back(ToText(keys[i]), ToText(values[i]));
    return facts;
}

std::optional<ProviderFacts> ProviderOf(const VELDyadContext& context) {
    VELIDyadDbProvider_var provider;
    if (context.GetDyadDbProvider(provider) < 0)
        return std::nullopt;
    return FactsOf(provider);
}

std::vector<SiteFacts> SitesOf(VELDyadContext& context) {
    VELListValVELUnicodeString keys;
    context.GetListOfSites(keys);
    std::vector<SiteFacts> sites;
    for (int i = 1; i <= keys.Size(); ++i) {
        VELIDyadDbProvider_var provider;
        context.LocateInMultisiteHash(keys[i], provider);
        sites.push_back({ToText(keys[i]), FactsOf(provider)});
    }
    return sites;
}

std::vector<std::string> FriendsOf(const VELDyadContext& context) {
    VELListPtrVELDyadContext friends;
    const int count = context.GetFriends(friends);
    std::vector<std::string> names;
    for (int i = 1; i <= count; ++i) {
        if (friends[i] != nullptr)
            names.push_back(ToText(friends[i]->GetName()));
    }
    return names;
}

ContextFacts FactsOf(VELDyadContext& context, int position) {
    ContextFacts facts;
    facts.position = position;
    facts.name = ToText(context.GetName());
    facts.parameter = ToText(context.GetParameter());
    facts.parameterType = ToText(context.GetParameterType());
    facts.label = ToText(context.GetNLSParameterType());
    facts.friends = FriendsOf(context);
    VELDyadContext* associated = nullptr;
    context.GetAssociatedContext(associated);
    if (associated != nullptr)
        facts.associated = ToText(associated->GetName());
    facts.provider = ProviderOf(context);
    facts.sites = SitesOf(context);
    return facts;
}

void SetPlaces(const VELDyadContext& context, const VELDyadCtxFileCheck& check,
               ContextFacts& facts) {
    check.GetPlace(&context, facts.place);
    VELListValVELUnicodeString names;
    VELListVal<VELPlace> places;
    check.GetAttributePlaces(&context, names, places);
    for (int i = 1; i <= names.Size(); ++i)
        facts.attributes.emplace_back(ToText(names[i]), places[i]);
}

} // namespace

std::vector<ContextFacts> FactsOfView(VELDyadCtxCollector& collector,
                                      const VELDyadCtxFileCheck* check) {
    std::vector<ContextFacts> facts;
    const int count = collector.GetNbCtxs();
    for (int i = 1; i <= count; ++i) {
        VELDyadContext* context = nullptr;
        if (collector.GetCtxAtIndex(i, context) < 0 || context == nullptr)
            continue;
        facts.push_back(FactsOf(*context, i));
        if (check != nullptr)
            SetPlaces(*context, *check, facts.back());
    }
    return facts;
}

std::vector<ScenarioFacts> FactsOfScenarios(const VELDyadCtxCollector& collector) {
    std::vector<ScenarioFacts> facts;
    const int count = collector.GetNbScenarios();
    for (int i = 1; i <= count; ++i) {
        VELUnicodeString channel, channelContext, profile, scenario, optionName, optionValue;
        if (collector.GetScenarioAtIndex(i, channel, channelContext, profile, scenario, optionName,
                                         optionValue) < 0)
            continue;
        facts.push_back({ToText(channel), ToText(channelContext), ToText(profile), ToText(scenario),
                         ToText(optionName), ToText(optionValue)});
    }
    return facts;
}

Json ToJson(const std::optional<ProviderFacts>& provider) {
    if (!provider)
        return nullptr;
    Json details = Json::object();
    for (const auto& [key, value] : provider->serverDetails)
        details[key] = value;
    return {{"name", provider->name}, {"serverDetails", details}};
}

Json NumberOrNull(int number) {
    return number > 0 ? Json(number) : Json(nullptr);
}

Json ToJson(const ContextFacts& context) {
    Json json;
    json["position"] = context.position;
    json["name"] = context.name;
    json["parameter"] = context.parameter;
    json["parameterType"] = context.parameterType;
    json["label"] = context.label;
    json["friends"] = context.friends;
    json["associated"] = context.associated ? Json(*context.associated) : Json(nullptr);
    json["provider"] = ToJson(context.provider);
    json["sites"] = Json::array();
    for (const SiteFacts& site : context.sites)
        json["sites"].push_back(site.site);
    json["line"] = NumberOrNull(context.place.line);
    json["column"] = NumberOrNull(context.place.column);
    json["attributes"] = Json::object();
    for (const auto& [name, place] : context.attributes)
        json["attributes"][name] = {{"line", place.line}, {"column", place.column}};
    return json;
}

Json ToJson(const ScenarioFacts& scenario) {
    return {{"channel", scenario.channel},       {"channelContext", scenario.channelContext},
            {"profile", scenario.profile},       {"scenario", scenario.scenario},
            {"optionName", scenario.optionName}, {"optionValue", scenario.optionValue}};
}

std::string Describe(const ProviderFacts& provider) {
    std::string details;
    for (const auto& [key, value] : provider.serverDetails) {
        if (!value.empty())
            details += (details.empty() ? "" : ", ") + Visible(key) + "=" + Visible(value);
    }
    return Visible(provider.name) + (details.empty() ? "" : " (" + details + ")");
}

std::string TypeLabel(const ContextFacts& context) {
    return Visible(context.label.empty() ? context.parameterType : context.label);
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + Visible(name);
    return text;
}

std::string ToText(const VELUnicodeString& text) {
    return std::string(text.AsView());
}

} // namespace dyadctx::tool
