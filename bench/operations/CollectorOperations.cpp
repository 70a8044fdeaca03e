// SPDX-License-Identifier: MIT
#include "bench/operations/LibraryOperations.h"
#include "bench/operations/LoadedFile.h"

#include <algorithm>
#include <stdexcept>

namespace dyadctx::bench {

namespace {

constexpr std::size_t Deletions = 16;
constexpr int CheckedContexts = 64;

std::size_t CountOf(const VELDyadCtxCollector& collector) {
    return static_cast<std::size_t>(collector.GetAllNbCtxs());
}

class CreateCollector : public Operation {
public:
    explicit CreateCollector(const Workplace& place) : file_(place.file) {}
    std::size_t Run() override {
        collector_ = Create(file_);
        return CountOf(*collector_);
    }
    void Finish() override { collector_.reset(); }

private:
    std::string file_;
    CollectorPtr collector_;
};

class RefuseFile : public Operation {
public:
    explicit RefuseFile(const Workplace& place) : file_(place.file) {}
    std::size_t Run() override {
        std::string message;
        if (TryCreate(file_, message) || message.empty())
            throw std::runtime_error(file_ + " was to be refused with a message");
        return static_cast<std::size_t>(std::count(message.begin(), message.end(), '\n'));
    }

private:
    std::string file_;
};

class DestroyCollector : public Operation {
public:
    explicit DestroyCollector(const Workplace& place) : file_(place.file) {}
    void Prepare() override { collector_ = Create(file_); }
    std::size_t Run() override {
        const std::size_t count = CountOf(*collector_);
        collector_.reset();
        return count;
    }

private:
    std::string file_;
    CollectorPtr collector_;
};

class StreamCollector : public Operation {
public:
    explicit StreamCollector(const Workplace& place)
        : target_(place.target.c_str()), collector_(SharedCollector(place.file)) {}
    void Prepare() override {
        if (target_.IsEmpty())
            throw std::runtime_error("stream needs a target");
        Switch(*collector_, View::All);
    }
    std::size_t Run() override {
        VELUnicodeString message;
        if (collector_->Stream(target_, message) < 0)
            throw std::runtime_error("cannot write the collector");
        return CountOf(*collector_);
    }

private:
    VELUnicodeString target_;
    std::shared_ptr<VELDyadCtxCollector> collector_;
};

// As many plain contexts as the file has, registered by a client. With `lookedUp`, the list begins
// with a repeated and a null entry, and each context is looked up once it is there.
template<bool lookedUp>
class AddContexts : public Operation {
public:
    explicit AddContexts(const Workplace& place) {
        for (const std::string& name : ShuffledNames(*SharedCollector(place.file)))
            names_.emplace_back(name.c_str());
    }
    std::size_t Run() override {
        collector_.reset(VELDyadCtxCollector::CreateCollectorFromScratch());
        const VELUnicodeString parameter("/data/common");
        const VELUnicodeString type("Path");
        for (const VELUnicodeString& name : names_) {
            auto context = std::make_unique<VELDyadContext>(name, parameter, type);
            if (collector_->AddContext(context.release(), nullptr, 0) < 0)
                throw std::runtime_error("cannot add a context");
            if constexpr (lookedUp)
                LookUp(name);
        }
        return names_.size();
    }
    void Finish() override { collector_.reset(); }

private:
    void LookUp(const VELUnicodeString& name) {
        VELDyadContext* context = nullptr;
        if (collector_->GetCtxFromName(name, context) < 0)
            throw std::runtime_error("cannot find a context that was added");
        if (collector_->GetAllNbCtxs() == 1) {
            collector_->AddContext(context, nullptr, 0);
            collector_->AddContext(nullptr, nullptr, 0);
        }
    }

    std::vector<VELUnicodeString> names_;
    CollectorPtr collector_;
};

class DeleteContexts : public Operation {
public:
    explicit DeleteContexts(const Workplace& place) : file_(place.file) {}
    void Prepare() override {
        collector_ = Create(file_);
        names_ = ShuffledNames(*collector_);
        names_.resize(std::min(names_.size(), Deletions));
    }
    std::size_t Run() override {
        for (const std::string& name : names_) {
            if (collector_->DeleteContext(name.c_str()) < 0)
                throw std::runtime_error("cannot delete a context");
        }
        return names_.size();
    }
    void Finish() override { collector_.reset(); }

private:
    std::string file_;
    std::vector<std::string> names_;
    CollectorPtr collector_;
};

class CheckSingleContexts : public Operation {
public:
    explicit CheckSingleContexts(const Workplace& place)
        : collector_(SharedCollector(place.file)) {}
    void Prepare() override { Switch(*collector_, View::All); }
    std::size_t Run() override {
        const int count = std::min(collector_->GetNbCtxs(), CheckedContexts);
        VELUnicodeString message;
        for (int position = 1; position <= count; ++position) {
            VELDyadContext* context = nullptr;
            collector_->GetCtxAtIndex(position, context);
            if (!collector_->CheckContext(context, message, position))
                throw std::runtime_error("a context of a valid file is not valid");
        }
        return static_cast<std::size_t>(count);
    }

private:
    std::shared_ptr<VELDyadCtxCollector> collector_;
};

} // namespace

void AddCollectorOperations(OperationList& list) {
    list.push_back({"create", "a collector from the file", Make<CreateCollector>});
    list.push_back({"refuse", "a collector from a file that is not valid", Make<RefuseFile>});
    list.push_back({"destroy", "deleting the collector", Make<DestroyCollector>});
    list.push_back({"stream", "writing the collector", Make<StreamCollector>});
    list.push_back({"add", "registering as many contexts by hand", Make<AddContexts<false>>});
    list.push_back({"add-lookup", "the same with a look-up after each, beside odd entries",
                    Make<AddContexts<true>>});
    list.push_back({"delete", "deleting 16 contexts", Make<DeleteContexts>});
    list.push_back({"check-context", "checking 64 contexts singly", Make<CheckSingleContexts>});
}

} // namespace dyadctx::bench
