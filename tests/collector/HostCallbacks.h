// SPDX-License-Identifier: MIT
// A host's services that call a test back in the middle of an operation.
#pragma once

#include "collector/DeclaredContexts.h"
#include "platform/VELDbContextEnvironment.h"
#include "platform/VELDyadDbProviderServices.h"
#include "platform/VELDyadTrace.h"
#include "platform/VELMsgCatalog.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace dyadctx::test {

using Names = std::vector<std::string>;

// A sink that calls back at lines that contain a text; not while a call is under way.
class CallbackTrace : private VELDyadTraceSink {
public:
    CallbackTrace(std::string part, std::function<void()> callback)
        : part_(std::move(part)), callback_(std::move(callback)),
          formerActivity_(DyadContextTrace.activity), formerSink_(SetDyadTraceSink(this)) {
        DyadContextTrace.activity = &active_;
    }
    ~CallbackTrace() override {
        DyadContextTrace.activity = formerActivity_;
        SetDyadTraceSink(formerSink_);
    }
    CallbackTrace(const CallbackTrace&) = delete;
    CallbackTrace& operator=(const CallbackTrace&) = delete;

    int Calls() const { return calls_; }
    const Names& Lines() const { return lines_; }

private:
    void Write(VELDyadTraceKind, const char* text) override {
        lines_.emplace_back(text);
        if (isCalling_ || lines_.back().find(part_) == std::string::npos)
            return;
        isCalling_ = true;
        ++calls_;
        callback_();
        isCalling_ = false;
    }

    std::string part_;
    std::function<void()> callback_;
    int active_ = 1;
    int calls_ = 0;
    bool isCalling_ = false;
    Names lines_;
    int* formerActivity_;
    VELDyadTraceSink* formerSink_;
};

// The same for a host's messages; each reads as its key.
class CallbackMessages : private VELMsgCatalogSource {
public:
    explicit CallbackMessages(std::function<void()> callback)
        : callback_(std::move(callback)), former_(VELMsgCatalog::SetSource(this)) {}
    ~CallbackMessages() override { VELMsgCatalog::SetSource(former_); }
    CallbackMessages(const CallbackMessages&) = delete;
    CallbackMessages& operator=(const CallbackMessages&) = delete;

private:
    VELResult Build(const VELString&, const VELString& key, const VELUnicodeString* parameters,
                    int count, VELUnicodeString& text) override {
        text = VELUnicodeString(key.AsView());
        for (int i = 0; i < count; ++i)
            text.Append(" ").Append(parameters[i]);
        callback_();
        return S_OK;
    }

    std::function<void()> callback_;
    VELMsgCatalogSource* former_;
};

// Providers that call back whenever they are asked for sameness, or for their name.
class CallbackProviders : private VELDyadDbProviderFactory {
public:
    CallbackProviders() : former_(VELDyadDbProviderServices::SetFactory(this)) {}
    ~CallbackProviders() override { VELDyadDbProviderServices::SetFactory(former_); }
    CallbackProviders(const CallbackProviders&) = delete;
    CallbackProviders& operator=(const CallbackProviders&) = delete;

    std::function<void()> onIsSame = [] {};
    std::function<void()> onGetName = [] {};
    std::function<void()> onCreateFrom = [] {};

private:
    class Provider : public VELIDyadDbProvider {
    public:
        explicit Provider(CallbackProviders& owner) : owner_(owner) {}
        VELResult GetName(VELUnicodeString& name) override {
            name = name_;
            owner_.onGetName();
            return S_OK;
        }
        VELResult IsSame(const VELIDyadDbProvider_var&, bool& same) override {
            same = true;
            owner_.onIsSame();
            return S_OK;
        }
        VELResult SetConnectorName(const VELUnicodeString& name) override {
            name_ = name;
            return S_OK;
        }
        VELResult SetServerDetails(const VELListValVELUnicodeString&,
                                   const VELListValVELUnicodeString&) override {
            return S_OK;
        }
        VELResult GetServerDetails(VELListValVELUnicodeString&,
                                   VELListValVELUnicodeString&) override {
            return S_OK;
        }

    private:
        CallbackProviders& owner_;
        VELUnicodeString name_;
    };

    VELResult Create(VELIDyadDbProvider_var& provider) override {
        provider = VELIDyadDbProvider_var(new Provider(*this));
        return S_OK;
    }
    VELResult CreateFrom(const VELIDyadDbProvider_var& from,
                         VELIDyadDbProvider_var& provider) override {
        const VELIDyadDbProvider_var made(new Provider(*this));
        VELUnicodeString name;
        std::exchange(onGetName, [] {}).swap(kept_);
        from->GetName(name);
        kept_.swap(onGetName);
        made->SetConnectorName(name);
        onCreateFrom();
        provider = made;
        return S_OK;
    }

    std::function<void()> kept_;
    VELDyadDbProviderFactory* former_;
};

// Answers as a sequence says, and calls back each time.
class ChangingEnvironment : private VELDbContextEnvironmentSource {
public:
    explicit ChangingEnvironment(std::function<bool()> answer)
        : answer_(std::move(answer)), former_(SetDbContextEnvironmentSource(this)) {}
    ~ChangingEnvironment() override { SetDbContextEnvironmentSource(former_); }
    ChangingEnvironment(const ChangingEnvironment&) = delete;
    ChangingEnvironment& operator=(const ChangingEnvironment&) = delete;

private:
    bool IsActive() noexcept override { return answer_(); }

    std::function<bool()> answer_;
    VELDbContextEnvironmentSource* former_;
};

// Long enough to be memory of its own.
inline const std::string LongName = "A name that does not fit into a short text";

class HostCallbacks : public testing::Test {
protected:
    VELDyadCtxCollector& Collector() { return contexts.Collector(); }
    VELDyadContext& Declare(const std::string& name) { return contexts.Declare(name); }
    void Delete(const std::string& name) {
        EXPECT_EQ(Collector().DeleteContext(name.c_str()), S_OK) << name;
    }
    static void AddFriends(VELDyadContext& owner, VELDyadContext& added, int count = 20) {
        for (int i = 0; i < count; ++i)
            owner.AddFriend(&added);
    }
    static void RemoveFriends(VELDyadContext& owner) {
        while (owner.RemoveFriend(1) == S_OK) {
        }
    }
    static void Rename(VELDyadContext& context, const std::string& name) {
        context = VELDyadContext((name + ", which is not its former name").c_str(), "", "Path");
    }

    DeclaredContexts contexts;
    VELDyadContext& owner = contexts.Declare(LongName + " of the owner");
    VELDyadContext& first = contexts.Declare("first");
    VELDyadContext& second = contexts.Declare("second");
};

} // namespace dyadctx::test
