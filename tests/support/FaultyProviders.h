// SPDX-License-Identifier: MIT
// A host's provider factory for tests: it records every call of its providers and of itself, and
// fails where it is told to.
#pragma once

#include "platform/VELDyadDbProviderServices.h"

#include <memory>
#include <string>
#include <vector>

namespace dyadctx::test {

enum class ProviderCall {
    Create,
    CreateFrom,
    GetName,
    IsSame,
    SetConnectorName,
    SetServerDetails,
    GetServerDetails
};

// What a call does instead of its work.
struct Fault {
    // What the call returns; may be a success other than S_OK.
    VELResult code = E_FAIL;
    // The work is done all the same.
    bool acts = false;
    // An exception instead of a result.
    bool throws = false;
};

// From construction to destruction the library's providers come from here. The providers may
// outlive this object.
class FaultyProviders : private VELDyadDbProviderFactory {
public:
    static constexpr int EveryCall = 0;

    FaultyProviders();
    ~FaultyProviders() override;
    FaultyProviders(const FaultyProviders&) = delete;
    FaultyProviders& operator=(const FaultyProviders&) = delete;

    // The call with that number, from 1 and counted per kind of call, goes wrong.
    void FailAt(ProviderCall call, int number, const Fault& fault = {});
    // Success without a provider.
    void GiveNullAt(ProviderCall call, int number) { FailAt(call, number, {S_OK, false, false}); }
    // What a provider with the connector name `asked` returns when asked about `other`, in this
    // direction only. Otherwise two providers are the same when their connector names are equal.
    void AnswerSameness(const std::string& asked, const std::string& other, bool same);
    void ForgetFaults();

    // A provider that nobody asked for: neither recorded nor subject to faults at creation.
    VELIDyadDbProvider_var Make(const std::string& connectorName);

    // The calls in order. Providers have numbers from 1 in the order in which they were made:
    // "Create -> #1", "CreateFrom #1 -> #2", "#2 GetName", "#2 IsSame #1" ("null" for the null
    // handle), "#2 SetConnectorName ORB1", "#2 SetServerDetails 6/6", "#2 GetServerDetails". A call
    // that goes wrong is recorded with " !" at its end.
    std::vector<std::string> TakeCalls();
    int CountOf(ProviderCall call) const;
    // How many providers made here are alive now.
    int Alive() const;

    struct State;

private:
    VELResult Create(VELIDyadDbProvider_var& provider) override;
    VELResult CreateFrom(const VELIDyadDbProvider_var& from,
                         VELIDyadDbProvider_var& provider) override;

    std::shared_ptr<State> state_;
    VELDyadDbProviderFactory* former_;
};

} // namespace dyadctx::test
