// SPDX-License-Identifier: MIT
#include "bench/operations/LibraryOperations.h"
#include "bench/operations/LoadedFile.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <unordered_map>

namespace dyadctx::bench {

namespace {

using Clock = std::chrono::steady_clock;

// A linear look-up gets through as many names as it manages in this time, a fast one through all.
constexpr std::chrono::seconds TimeLimit{1};
constexpr std::size_t Batch = 64;

template<class Text, class Find>
std::size_t CountFound(const std::vector<Text>& texts, std::size_t from, std::size_t to,
                       Find find) {
    std::size_t found = 0;
    for (std::size_t i = from; i < to; ++i)
        found += find(texts[i]) ? 1U : 0U;
    return found;
}

// How many of the texts a repetition looks up; decided once, outside the timed runs.
template<class Text, class Find>
std::size_t FeasibleCount(const std::vector<Text>& texts, Find find) {
    const auto end = Clock::now() + TimeLimit;
    std::size_t done = 0;
    while (done < texts.size() && Clock::now() < end) {
        const std::size_t stop = std::min(texts.size(), done + Batch);
        CountFound(texts, done, stop, find);
        done = stop;
    }
    return done;
}

void DemandFound(std::size_t found, std::size_t expected) {
    if (found != expected)
        throw std::runtime_error("a look-up gave the wrong answer");
}

// No context of a valid file has such a name.
void MakeUnknown(std::vector<std::string>& names) {
    for (std::string& name : names)
        name += '!';
}

template<View view, bool known>
class FindContext : public Operation {
public:
    explicit FindContext(const Workplace& place) : collector_(SharedCollector(place.file)) {
        Switch(*collector_, view);
        std::vector<std::string> names = ShuffledNames(*collector_);
        if (!known)
            MakeUnknown(names);
        for (const std::string& name : names)
            names_.emplace_back(name.c_str());
    }
    // The first look-up may build what later ones use; it has an operation of its own.
    void Prepare() override {
        Switch(*collector_, view);
        if (count_ == 0)
            count_ = FeasibleCount(names_, Finder());
    }
    std::size_t Run() override {
        DemandFound(CountFound(names_, 0, count_, Finder()), known ? count_ : 0);
        return count_;
    }

private:
    auto Finder() {
        return [this](const VELUnicodeString& name) {
            VELDyadContext* context = nullptr;
            return collector_->GetCtxFromName(name, context) == S_OK;
        };
    }

    std::shared_ptr<VELDyadCtxCollector> collector_;
    std::vector<VELUnicodeString> names_;
    std::size_t count_ = 0;
};

class FindFirst : public Operation {
public:
    explicit FindFirst(const Workplace& place) : file_(place.file) {}
    void Prepare() override { collector_ = Create(file_); }
    std::size_t Run() override {
        VELDyadContext* context = nullptr;
        collector_->GetCtxFromName("no such context!", context);
        return 1;
    }
    void Finish() override { collector_.reset(); }

private:
    std::string file_;
    CollectorPtr collector_;
};

template<bool known>
class FindInMap : public Operation {
public:
    explicit FindInMap(const Workplace& place) {
        const auto collector = SharedCollector(place.file);
        Switch(*collector, View::All);
        names_ = ShuffledNames(*collector);
        for (int position = 1; position <= collector->GetNbCtxs(); ++position) {
            VELDyadContext* context = nullptr;
            collector->GetCtxAtIndex(position, context);
            map_.emplace(context->GetName().AsView(), context);
        }
        if (!known)
            MakeUnknown(names_);
    }
    void Prepare() override {
        if (count_ == 0)
            count_ = FeasibleCount(names_, Finder());
    }
    std::size_t Run() override {
        DemandFound(CountFound(names_, 0, count_, Finder()), known ? count_ : 0);
        return count_;
    }

private:
    auto Finder() const {
        return [this](const std::string& name) { return map_.find(name) != map_.end(); };
    }

    std::unordered_map<std::string, VELDyadContext*> map_;
    std::vector<std::string> names_;
    std::size_t count_ = 0;
};

} // namespace

void AddLookupOperations(OperationList& list) {
    list.push_back({"lookup", "known names", Make<FindContext<View::All, true>>});
    list.push_back({"lookup-path", "in the Path view", Make<FindContext<View::Path, true>>});
    list.push_back(
        {"lookup-database", "in the Database view", Make<FindContext<View::Database, true>>});
    list.push_back({"lookup-file", "in the File view", Make<FindContext<View::File, true>>});
    list.push_back({"miss", "unknown names", Make<FindContext<View::All, false>>});
    list.push_back({"miss-path", "in the Path view", Make<FindContext<View::Path, false>>});
    list.push_back(
        {"miss-database", "in the Database view", Make<FindContext<View::Database, false>>});
    list.push_back({"miss-file", "in the File view", Make<FindContext<View::File, false>>});
    list.push_back({"lookup-first", "the first look-up of a collector", Make<FindFirst>});
    list.push_back({"map", "known names in std::unordered_map", Make<FindInMap<true>>});
    list.push_back({"map-miss", "unknown names in std::unordered_map", Make<FindInMap<false>>});
}

} // namespace dyadctx::bench
