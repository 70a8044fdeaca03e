// SPDX-License-Identifier: MIT
#include "bench/operations/LibraryOperations.h"
#include "bench/operations/LoadedFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string_view>

namespace dyadctx::bench {

namespace {

constexpr int Calls = 16;

std::string ContentOf(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::string content(std::filesystem::file_size(file), '\0');
    in.read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
}

// The scenario identifiers of a generated file, in its order, repeated ones included. A client
// would know them; the collector does not list them.
VELListValVELUnicodeString IdentifiersIn(const std::string& file) {
    constexpr std::string_view Attribute = "Ident=\"";
    const std::string content = ContentOf(file);
    VELListValVELUnicodeString ids;
    for (std::size_t at = content.find(Attribute); at != std::string::npos;
         at = content.find(Attribute, at)) {
        at += Attribute.size();
        ids.Append(VELUnicodeString(content.data() + at, content.find('"', at) - at));
    }
    return ids;
}

std::size_t SizeOf(const VELListValVELUnicodeString& list) {
    return static_cast<std::size_t>(list.Size());
}

class ScenarioQuery : public Operation {
public:
    explicit ScenarioQuery(const Workplace& place)
        : collector_(SharedCollector(place.file)), ids_(IdentifiersIn(place.file)) {
        collector_->GetExchangeChannelfromScenario(ids_, channels_, contexts_);
        if (channels_.Size() == 0)
            throw std::runtime_error(place.file + " has no scenarios");
        collector_->GetProfilefromExchangeChannel(channels_[1], ids_, matched_, profiles_);
    }

protected:
    std::shared_ptr<VELDyadCtxCollector> collector_;
    VELListValVELUnicodeString ids_;
    VELListValVELUnicodeString channels_;
    VELListValVELUnicodeString contexts_;
    VELListValVELUnicodeString matched_;
    VELListValVELUnicodeString profiles_;
};

class FindChannels : public ScenarioQuery {
public:
    using ScenarioQuery::ScenarioQuery;
    std::size_t Run() override {
        collector_->GetExchangeChannelfromScenario(ids_, channels_, contexts_);
        return SizeOf(channels_);
    }
};

class FindProfiles : public ScenarioQuery {
public:
    using ScenarioQuery::ScenarioQuery;
    std::size_t Run() override {
        const VELUnicodeString channel = channels_[1];
        collector_->GetProfilefromExchangeChannel(channel, ids_, matched_, profiles_);
        return SizeOf(profiles_);
    }
};

class FindOptions : public ScenarioQuery {
public:
    using ScenarioQuery::ScenarioQuery;
    std::size_t Run() override {
        std::size_t found = 0;
        for (int call = 1; call <= std::min(Calls, profiles_.Size()); ++call) {
            collector_->GetOptionsfromExchangeProfile(channels_[1], profiles_[call], names_,
                                                      values_);
            found += SizeOf(names_);
        }
        return found;
    }

private:
    VELListValVELUnicodeString names_;
    VELListValVELUnicodeString values_;
};

VELListValVELUnicodeString ProviderNames(VELDyadCtxCollector& collector) {
    std::set<std::string> names;
    for (int position = 1; position <= collector.GetNbCtxs(); ++position) {
        VELDyadContext* context = nullptr;
        VELIDyadDbProvider_var provider;
        VELUnicodeString name;
        collector.GetCtxAtIndex(position, context);
        if (context && context->GetDyadDbProvider(provider) == S_OK && !provider.IsNull() &&
            provider->GetName(name) >= 0)
            names.emplace(name.AsView());
    }
    VELListValVELUnicodeString list;
    for (const std::string& name : names)
        list.Append(VELUnicodeString(std::string_view(name)));
    return list;
}

// A collector narrows its Database view once, so each repetition needs a new one.
class NarrowView : public Operation {
public:
    explicit NarrowView(const Workplace& place) : file_(place.file) {}
    void Prepare() override {
        collector_ = Create(file_);
        if (names_.Size() == 0)
            names_ = ProviderNames(*collector_);
    }
    std::size_t Run() override {
        if (collector_->SetContextDatabaseType(names_) < 0)
            throw std::runtime_error("cannot narrow the Database view");
        return static_cast<std::size_t>(collector_->GetNbCtxs());
    }
    void Finish() override { collector_.reset(); }

private:
    std::string file_;
    VELListValVELUnicodeString names_;
    CollectorPtr collector_;
};

class FindByProvider : public Operation {
public:
    explicit FindByProvider(const Workplace& place) : collector_(SharedCollector(place.file)) {
        Switch(*collector_, View::All);
        names_ = ProviderNames(*collector_);
    }
    std::size_t Run() override {
        VELListPtrVELDyadContext contexts;
        if (collector_->GetContextsFromDbProviderName(names_[1], contexts) < 0)
            throw std::runtime_error("cannot find the contexts of a provider");
        return static_cast<std::size_t>(contexts.Size());
    }

private:
    std::shared_ptr<VELDyadCtxCollector> collector_;
    VELListValVELUnicodeString names_;
};

} // namespace

void AddQueryOperations(OperationList& list) {
    list.push_back({"channels", "the channels of all scenarios", Make<FindChannels>});
    list.push_back({"profiles", "the profiles of a channel for all scenarios", Make<FindProfiles>});
    list.push_back({"options", "the options of 16 profiles", Make<FindOptions>});
    list.push_back({"narrow", "the Database view for all providers", Make<NarrowView>});
    list.push_back({"by-provider", "the contexts of one provider", Make<FindByProvider>});
}

} // namespace dyadctx::bench
