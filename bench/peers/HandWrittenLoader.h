// SPDX-License-Identifier: MIT
// The loader a client could write instead of using the library: the tree of pugixml, std::string,
// std::unordered_map. It applies the same rules to the same files while the DB context environment
// is on, and stops at the first context that breaks one. It knows the plain forms of a file only:
// declared contexts with friends, an associated context and scenarios, sites as repeated contexts.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pugi {
class xml_node;
}

namespace dyadctx::bench {

struct LoadedSite {
    std::string connector;
    // Values of http, Role, ServerName, ServerPort, URI, SiteId.
    std::vector<std::string> details;
};

struct LoadedContext {
    std::string name;
    std::string parameter;
    std::string type;
    LoadedSite site;
    std::vector<LoadedContext*> friends;
    LoadedContext* associated = nullptr;
    // The further sites of its database.
    std::vector<LoadedSite> sites;
};

struct LoadedScenario {
    std::string channel;
    std::string identifier;
    std::string profile;
    std::string optionName;
    std::string optionValue;
};

class LoadedContexts {
public:
    // Null, with the reason in `message`, for a file that cannot be loaded.
    static std::unique_ptr<LoadedContexts> Load(const std::string& file, std::string& message);

    std::size_t Count() const { return contexts_.size(); }
    // Null when there is none.
    LoadedContext* Find(const std::string& name);
    const std::vector<LoadedContext*>& Paths() const { return paths_; }
    const std::vector<LoadedContext*>& Databases() const { return databases_; }
    const std::vector<LoadedContext*>& Files() const { return files_; }
    const std::vector<LoadedScenario>& Scenarios() const { return scenarios_; }

private:
    // Links by name, until every context is known.
    struct Pending {
        LoadedContext* context;
        std::vector<std::string> friends;
        std::string associated;
    };

    bool Read(const pugi::xml_node& data, std::string& message);
    bool ReadContext(const pugi::xml_node& node, std::string& message);
    void ReadLinks(const pugi::xml_node& node, LoadedContext* context);
    void ReadScenarios(const pugi::xml_node& node, const std::string& channel);
    bool Link(std::string& message);
    bool Check(std::string& message);
    bool CheckDatabase(const LoadedContext& context, std::string& message);
    void FillViews();

    std::vector<std::unique_ptr<LoadedContext>> contexts_;
    std::unordered_map<std::string, LoadedContext*> byName_;
    std::unordered_map<std::string, const LoadedContext*> byDatabase_;
    std::vector<Pending> pending_;
    std::vector<LoadedScenario> scenarios_;
    std::vector<LoadedContext*> paths_;
    std::vector<LoadedContext*> databases_;
    std::vector<LoadedContext*> files_;
};

} // namespace dyadctx::bench
