// SPDX-License-Identifier: MIT
#include "bench/peers/HandWrittenLoader.h"

#include "bench/peers/PeerOperations.h"

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace dyadctx::bench {

namespace {

constexpr std::array<const char*, 6> DetailNames{"http",       "Role", "ServerName",
                                                 "ServerPort", "URI",  "SiteId"};
constexpr std::ptrdiff_t MaxNameLength = 125;

std::ptrdiff_t CharactersIn(const std::string& text) {
    return std::count_if(text.begin(), text.end(),
                         [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
}

LoadedSite SiteOf(const pugi::xml_node& node) {
    LoadedSite site;
    site.connector = node.attribute("ConnectorName").value();
    site.details.reserve(DetailNames.size());
    for (const char* name : DetailNames)
        site.details.emplace_back(node.attribute(name).value());
    return site;
}

std::string IdentityOf(const LoadedSite& site) {
    std::string identity = site.connector;
    for (const std::string& detail : site.details) {
        identity += '\n';
        identity += detail;
    }
    return identity;
}

bool HasFriendNamed(const LoadedContext& context, const std::string& name) {
    return std::any_of(context.friends.begin(), context.friends.end(),
                       [&name](const LoadedContext* other) { return other->name == name; });
}

bool IsNameValid(const std::string& name) {
    return !name.empty() && CharactersIn(name) <= MaxNameLength &&
           name.find('!') == std::string::npos;
}

bool IsTypeValid(const LoadedContext& context) {
    const std::string& type = context.type;
    if (type != "Path" && type != "File" && type != "Database" && type != "Default")
        return false;
    if ((context.name == "DYADIC") != (type == "Default"))
        return false;
    return context.parameter.empty() == (type == "Default");
}

bool AreLinksValid(const LoadedContext& context) {
    for (const LoadedContext* other : context.friends) {
        if (other == &context || HasFriendNamed(*other, context.name))
            return false;
    }
    const LoadedContext* associated = context.associated;
    return !associated || (associated != &context && associated->associated != &context);
}

bool Refuse(std::string& message, const std::string& text, const std::string& name) {
    message += text + " " + name + "\n";
    return false;
}

} // namespace

std::unique_ptr<LoadedContexts> LoadedContexts::Load(const std::string& file,
                                                     std::string& message) {
    pugi::xml_document document;
    auto loaded = std::make_unique<LoadedContexts>();
    if (!document.load_file(file.c_str())) {
        Refuse(message, "Not a valid XML file:", file);
        return nullptr;
    }
    const pugi::xml_node data = document.child("DyAdDescription").child("CtxData");
    if (!loaded->Read(data, message) || !loaded->Link(message) || !loaded->Check(message))
        return nullptr;
    loaded->FillViews();
    return loaded;
}

LoadedContext* LoadedContexts::Find(const std::string& name) {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

bool LoadedContexts::Read(const pugi::xml_node& data, std::string& message) {
    if (!data)
        return Refuse(message, "Missing tag", "CtxData");
    for (const pugi::xml_node& node : data.children("Context")) {
        if (!ReadContext(node, message))
            return false;
    }
    return true;
}

bool LoadedContexts::ReadContext(const pugi::xml_node& node, std::string& message) {
    auto context = std::make_unique<LoadedContext>();
    context->name = node.attribute("Name").value();
    if (!node.attribute("Name") || !node.attribute("Parameter") || !node.attribute("ParameterType"))
        return Refuse(message, "Missing attribute of", context->name);
    context->parameter = node.attribute("Parameter").value();
    context->type = node.attribute("ParameterType").value();
    if (context->type == "Database") {
        context->site = SiteOf(node);
        if (!node.attribute("ConnectorName"))
            return Refuse(message, "Missing connector of", context->name);
        if (LoadedContext* known = Find(context->name)) {
            known->sites.push_back(std::move(context->site));
            return true;
        }
    }
    if (!byName_.emplace(context->name, context.get()).second)
        return Refuse(message, "Defined twice:", context->name);
    ReadLinks(node, context.get());
    ReadScenarios(node, context->name);
    contexts_.push_back(std::move(context));
    return true;
}

void LoadedContexts::ReadLinks(const pugi::xml_node& node, LoadedContext* context) {
    Pending links{
        context, {}, node.child("CtxAssociated").child("Context").attribute("Name").value()};
    for (const pugi::xml_node& other : node.child("CtxFriends").children("Context"))
        links.friends.emplace_back(other.attribute("Name").value());
    if (!links.friends.empty() || !links.associated.empty())
        pending_.push_back(std::move(links));
}

void LoadedContexts::ReadScenarios(const pugi::xml_node& node, const std::string& channel) {
    for (const pugi::xml_node& scenario : node.children("Scenario")) {
        for (const pugi::xml_node& row : scenario.children("ScenarioID")) {
            const std::string identifier = row.attribute("Ident").value();
            const std::string profile = row.attribute("name").value();
            if (!row.child("Option"))
                scenarios_.push_back({channel, identifier, profile, "", ""});
            for (const pugi::xml_node& option : row.children("Option")) {
                scenarios_.push_back({channel, identifier, profile,
                                      option.attribute("name").value(),
                                      option.attribute("value").value()});
            }
        }
    }
}

bool LoadedContexts::Link(std::string& message) {
    for (const Pending& links : pending_) {
        links.context->friends.reserve(links.friends.size());
        for (const std::string& name : links.friends) {
            LoadedContext* other = Find(name);
            if (!other)
                return Refuse(message, "Unknown friend", name);
            links.context->friends.push_back(other);
        }
        if (links.associated.empty())
            continue;
        links.context->associated = Find(links.associated);
        if (!links.context->associated)
            return Refuse(message, "Unknown associated context", links.associated);
    }
    pending_.clear();
    return true;
}

bool LoadedContexts::CheckDatabase(const LoadedContext& context, std::string& message) {
    if (context.type != "Database" || context.site.connector == "STEP")
        return true;
    if (!byDatabase_.emplace(IdentityOf(context.site), &context).second)
        return Refuse(message, "Database used twice:", context.name);
    return true;
}

bool LoadedContexts::Check(std::string& message) {
    if (contexts_.empty())
        return Refuse(message, "No context", "");
    for (const auto& context : contexts_) {
        if (!IsNameValid(context->name))
            return Refuse(message, "Wrong name", context->name);
        if (!IsTypeValid(*context))
            return Refuse(message, "Wrong type or parameter of", context->name);
        if (!AreLinksValid(*context))
            return Refuse(message, "Wrong friends of", context->name);
        if (!CheckDatabase(*context, message))
            return false;
    }
    return true;
}

void LoadedContexts::FillViews() {
    for (const auto& context : contexts_) {
        const std::string& type = context->type;
        if (type != "File")
            databases_.push_back(context.get());
        if (type == "Path" || type == "Default")
            paths_.push_back(context.get());
        if (type != "Database")
            files_.push_back(context.get());
    }
}

namespace {

class HandWrittenLoad : public Operation {
public:
    explicit HandWrittenLoad(const Workplace& place) : file_(place.file) {}

    std::size_t Run() override {
        std::string message;
        loaded_ = LoadedContexts::Load(file_, message);
        if (!loaded_)
            throw std::runtime_error("handwritten: " + message);
        return loaded_->Count();
    }
    void Finish() override { loaded_.reset(); }

protected:
    std::string file_;
    std::unique_ptr<LoadedContexts> loaded_;
};

class HandWrittenDestroy : public HandWrittenLoad {
public:
    using HandWrittenLoad::HandWrittenLoad;

    void Prepare() override { HandWrittenLoad::Run(); }
    std::size_t Run() override {
        const std::size_t count = loaded_->Count();
        loaded_.reset();
        return count;
    }
};

} // namespace

void AddHandWrittenOperations(OperationList& list) {
    list.push_back({"handwritten", "a loader written by hand on pugixml", Make<HandWrittenLoad>});
    list.push_back(
        {"handwritten-destroy", "freeing what that loader gave", Make<HandWrittenDestroy>});
}

} // namespace dyadctx::bench
