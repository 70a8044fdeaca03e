// SPDX-License-Identifier: MIT
#include "support/FaultyProviders.h"

#include <array>
#include <map>
#include <stdexcept>
#include <utility>

namespace dyadctx::test {

struct FaultyProviders::State {
    std::map<std::pair<ProviderCall, int>, Fault> faults;
    std::map<std::pair<std::string, std::string>, bool> sameness;
    std::map<ProviderCall, int> counts;
    std::vector<std::string> calls;
    int made = 0;
    int alive = 0;

    // Counts and records a call; its fault, or null.
    const Fault* Begin(ProviderCall call, const std::string& text);
};

const Fault* FaultyProviders::State::Begin(ProviderCall call, const std::string& text) {
    const int number = ++counts[call];
    auto fault = faults.find({call, number});
    if (fault == faults.end())
        fault = faults.find({call, FaultyProviders::EveryCall});
    calls.push_back(fault == faults.end() ? text : text + " !");
    if (fault == faults.end())
        return nullptr;
    if (fault->second.throws)
        throw std::runtime_error("a provider that throws");
    return &fault->second;
}

namespace {

using State = FaultyProviders::State;

// Does `work` unless a fault forbids it, and returns the code of the call.
template<class Work>
VELResult Perform(const Fault* fault, Work&& work) {
    if (fault == nullptr || fault->acts)
        work();
    return fault == nullptr ? S_OK : fault->code;
}

class FaultyProvider : public VELIDyadDbProvider {
public:
    FaultyProvider(std::shared_ptr<State> state, std::string connector)
        : state_(std::move(state)), connector_(std::move(connector)), number_(++state_->made) {
        ++state_->alive;
    }

    VELResult GetName(VELUnicodeString& name) override {
        const Fault* fault = state_->Begin(ProviderCall::GetName, Label() + " GetName");
        return Perform(fault, [&] { name = VELUnicodeString(connector_.c_str()); });
    }

    VELResult IsSame(const VELIDyadDbProvider_var& other, bool& same) override {
        const auto* provider = dynamic_cast<const FaultyProvider*>(other.Get());
        const Fault* fault = state_->Begin(ProviderCall::IsSame,
                                           Label() + " IsSame " +
                                               (provider == nullptr ? "null" : provider->Label()));
        return Perform(fault,
                       [&] { same = provider != nullptr && IsSameAs(provider->connector_); });
    }

    VELResult SetConnectorName(const VELUnicodeString& name) override {
        const std::string text(name.AsView());
        const Fault* fault =
            state_->Begin(ProviderCall::SetConnectorName, Label() + " SetConnectorName " + text);
        return Perform(fault, [&] { connector_ = text; });
    }

    VELResult SetServerDetails(const VELListValVELUnicodeString& keys,
                               const VELListValVELUnicodeString& values) override {
        const Fault* fault =
            state_->Begin(ProviderCall::SetServerDetails, Label() + " SetServerDetails " +
                                                              std::to_string(keys.Size()) + "/" +
                                                              std::to_string(values.Size()));
        return Perform(fault, [&] {
            keys_ = keys;
            values_ = values;
        });
    }

    VELResult GetServerDetails(VELListValVELUnicodeString& keys,
                               VELListValVELUnicodeString& values) override {
        const Fault* fault =
            state_->Begin(ProviderCall::GetServerDetails, Label() + " GetServerDetails");
        return Perform(fault, [&] {
            keys = keys_;
            values = values_;
        });
    }

    std::string Label() const { return "#" + std::to_string(number_); }

    VELIDyadDbProvider_var Clone() const {
        auto* clone = new FaultyProvider(state_, connector_);
        clone->keys_ = keys_;
        clone->values_ = values_;
        return VELIDyadDbProvider_var(clone);
    }

protected:
    ~FaultyProvider() override { --state_->alive; }

private:
    bool IsSameAs(const std::string& otherConnector) const {
        const auto answer = state_->sameness.find({connector_, otherConnector});
        return answer != state_->sameness.end() ? answer->second : connector_ == otherConnector;
    }

    std::shared_ptr<State> state_;
    std::string connector_;
    VELListValVELUnicodeString keys_;
    VELListValVELUnicodeString values_;
    int number_;
};

} // namespace

FaultyProviders::FaultyProviders()
    : state_(std::make_shared<State>()), former_(VELDyadDbProviderServices::SetFactory(this)) {}

FaultyProviders::~FaultyProviders() {
    VELDyadDbProviderServices::SetFactory(former_);
}

void FaultyProviders::FailAt(ProviderCall call, int number, const Fault& fault) {
    state_->faults[{call, number}] = fault;
}

void FaultyProviders::AnswerSameness(const std::string& asked, const std::string& other,
                                     bool same) {
    state_->sameness[{asked, other}] = same;
}

void FaultyProviders::ForgetFaults() {
    state_->faults.clear();
}

VELIDyadDbProvider_var FaultyProviders::Make(const std::string& connectorName) {
    return VELIDyadDbProvider_var(new FaultyProvider(state_, connectorName));
}

std::vector<std::string> FaultyProviders::TakeCalls() {
    return std::exchange(state_->calls, {});
}

int FaultyProviders::CountOf(ProviderCall call) const {
    const auto count = state_->counts.find(call);
    return count == state_->counts.end() ? 0 : count->second;
}

int FaultyProviders::Alive() const {
    return state_->alive;
}

VELResult FaultyProviders::Create(VELIDyadDbProvider_var& provider) {
    const Fault* fault =
        state_->Begin(ProviderCall::Create, "Create -> #" + std::to_string(state_->made + 1));
    return Perform(fault, [&] { provider = Make(""); });
}

VELResult FaultyProviders::CreateFrom(const VELIDyadDbProvider_var& from,
                                      VELIDyadDbProvider_var& provider) {
    const auto* source = dynamic_cast<const FaultyProvider*>(from.Get());
    if (source == nullptr)
        return E_FAIL;
    const Fault* fault =
        state_->Begin(ProviderCall::CreateFrom,
                      "CreateFrom " + source->Label() + " -> #" + std::to_string(state_->made + 1));
    return Perform(fault, [&] { provider = source->Clone(); });
}

} // namespace dyadctx::test
