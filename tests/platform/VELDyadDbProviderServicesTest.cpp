// SPDX-License-Identifier: MIT
#include "platform/VELDyadDbProviderServices.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace {

using Services = VELDyadDbProviderServices;

VELIDyadDbProvider_var NewProvider(const char* name = "") {
    VELIDyadDbProvider_var provider;
    EXPECT_EQ(S_OK, Services::CreateDyadDbProvider(provider));
    EXPECT_EQ(S_OK, provider->SetConnectorName(name));
    return provider;
}

std::string NameOf(const VELIDyadDbProvider_var& provider) {
    VELUnicodeString name;
    EXPECT_EQ(S_OK, provider->GetName(name));
    return name.ConvertToChar();
}

bool AreSame(const VELIDyadDbProvider_var& one, const VELIDyadDbProvider_var& other) {
    bool same = false;
    EXPECT_EQ(S_OK, one->IsSame(other, same));
    return same;
}

// A host's provider whose results are set by the test.
class HostProvider final : public VELIDyadDbProvider {
public:
    VELResult nameResult = S_OK;
    VELResult detailsResult = S_OK;
    bool throws = false;
    int values = 1;

    VELResult GetName(VELUnicodeString& name) override {
        if (throws)
            throw std::runtime_error("no name");
        name = "Host";
        return nameResult;
    }
    VELResult IsSame(const VELIDyadDbProvider_var& other, bool& same) override {
        same = other.Get() == this;
        return S_OK;
    }
    VELResult SetConnectorName(const VELUnicodeString&) override { return S_OK; }
    VELResult SetServerDetails(const VELListValVELUnicodeString&,
                               const VELListValVELUnicodeString&) override {
        return S_OK;
    }
    VELResult GetServerDetails(VELListValVELUnicodeString& keys,
                               VELListValVELUnicodeString& details) override {
        keys.Append("Role");
        for (int i = 0; i < values; ++i)
            details.Append("admin");
        return detailsResult;
    }
};

// A host's factory that does what the test says; it is in place while it exists.
class HostFactory final : public VELDyadDbProviderFactory {
public:
    VELResult result = S_OK;
    VELIDyadDbProvider_var answer;
    bool throws = false;
    int calls = 0;

    HostFactory() { EXPECT_EQ(nullptr, Services::SetFactory(this)); }
    ~HostFactory() override { EXPECT_EQ(this, Services::SetFactory(nullptr)); }
    HostFactory(const HostFactory&) = delete;
    HostFactory& operator=(const HostFactory&) = delete;

    VELResult Create(VELIDyadDbProvider_var& provider) override { return Answer(provider); }
    VELResult CreateFrom(const VELIDyadDbProvider_var&, VELIDyadDbProvider_var& provider) override {
        return Answer(provider);
    }

private:
    VELResult Answer(VELIDyadDbProvider_var& provider) {
        ++calls;
        provider = answer;
        if (throws)
            throw 42;
        return result;
    }
};

} // namespace

TEST(VELDyadDbProviderServices, ANewProviderIsEmpty) {
    const VELIDyadDbProvider_var provider = NewProvider();
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    EXPECT_EQ("", NameOf(provider));
    EXPECT_EQ(S_OK, provider->GetServerDetails(keys, values));
    EXPECT_EQ(0, keys.Size());
    EXPECT_EQ(0, values.Size());
}

TEST(VELDyadDbProviderServices, ACloneIsEqualAndAnObjectOfItsOwn) {
    const VELIDyadDbProvider_var original = NewProvider("KRL");
    VELIDyadDbProvider_var clone;
    ASSERT_EQ(S_OK, Services::CreateDyadDbProviderFromDbProvider(original, clone));
    EXPECT_TRUE(original != clone);
    EXPECT_TRUE(AreSame(original, clone));
    EXPECT_EQ(S_OK, clone->SetConnectorName("HWB"));
    EXPECT_EQ("KRL", NameOf(original));
    EXPECT_EQ("HWB", NameOf(clone));
}

TEST(VELDyadDbProviderServices, ANullProviderIsNotCloned) {
    VELIDyadDbProvider_var out = NewProvider("former");
    const VELIDyadDbProvider_var null;
    EXPECT_EQ(E_FAIL, Services::CreateDyadDbProviderFromDbProvider(null, out));
    EXPECT_EQ("former", NameOf(out));
}

TEST(VELDyadDbProviderServices, TheOutputMayBeTheInput) {
    VELIDyadDbProvider_var provider = NewProvider("KRL");
    const VELIDyadDbProvider* before = provider.Get();
    EXPECT_EQ(S_OK, Services::CreateDyadDbProviderFromDbProvider(provider, provider));
    EXPECT_NE(before, provider.Get());
    EXPECT_EQ("KRL", NameOf(provider));
}

TEST(VELDyadDbProviderServices, AHostsProviderIsClonedByItsValues) {
    const VELIDyadDbProvider_var host(new HostProvider);
    VELIDyadDbProvider_var clone;
    ASSERT_EQ(S_OK, Services::CreateDyadDbProviderFromDbProvider(host, clone));
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    EXPECT_EQ("Host", NameOf(clone));
    ASSERT_EQ(S_OK, clone->GetServerDetails(keys, values));
    ASSERT_EQ(1, keys.Size());
    EXPECT_STREQ("Role", keys[1].ConvertToChar());
    EXPECT_STREQ("admin", values[1].ConvertToChar());
    EXPECT_FALSE(AreSame(clone, host));
    EXPECT_FALSE(AreSame(host, clone));
}

TEST(VELDyadDbProviderServices, AFaultyHostsProviderIsNotCloned) {
    VELIDyadDbProvider_var out = NewProvider("former");
    const auto cloningGives = [&out](auto setFault) {
        auto* host = new HostProvider;
        const VELIDyadDbProvider_var handle(host);
        setFault(*host);
        return Services::CreateDyadDbProviderFromDbProvider(handle, out);
    };
    EXPECT_EQ(-7, cloningGives([](HostProvider& host) { host.nameResult = -7; }));
    EXPECT_EQ(-8, cloningGives([](HostProvider& host) { host.detailsResult = -8; }));
    EXPECT_EQ(E_FAIL, cloningGives([](HostProvider& host) { host.throws = true; }));
    EXPECT_EQ(E_FAIL, cloningGives([](HostProvider& host) { host.values = 2; }));
    EXPECT_EQ("former", NameOf(out));
}

TEST(VELDyadDbProviderServices, AHostsFactoryMakesAllProviders) {
    HostFactory factory;
    factory.answer = VELIDyadDbProvider_var(new HostProvider);
    VELIDyadDbProvider_var made;
    VELIDyadDbProvider_var clone;
    EXPECT_EQ(S_OK, Services::CreateDyadDbProvider(made));
    EXPECT_EQ(S_OK, Services::CreateDyadDbProviderFromDbProvider(made, clone));
    EXPECT_TRUE(made == factory.answer);
    EXPECT_TRUE(clone == factory.answer);
    EXPECT_EQ(2, factory.calls);
}

TEST(VELDyadDbProviderServices, AHostsCodesPassUnchanged) {
    HostFactory factory;
    factory.answer = VELIDyadDbProvider_var(new HostProvider);
    VELIDyadDbProvider_var out;
    factory.result = 17;
    EXPECT_EQ(17, Services::CreateDyadDbProvider(out));
    EXPECT_TRUE(out == factory.answer);

    const VELIDyadDbProvider_var former(new HostProvider);
    out = former;
    factory.result = -17;
    EXPECT_EQ(-17, Services::CreateDyadDbProvider(out));
    EXPECT_EQ(-17, Services::CreateDyadDbProviderFromDbProvider(former, out));
    EXPECT_TRUE(out == former);
}

TEST(VELDyadDbProviderServices, SuccessWithANullHandlePasses) {
    HostFactory factory;
    const VELIDyadDbProvider_var former(new HostProvider);
    VELIDyadDbProvider_var out = former;
    EXPECT_EQ(S_OK, Services::CreateDyadDbProvider(out));
    EXPECT_TRUE(out.IsNull());
    out = former;
    EXPECT_EQ(S_OK, Services::CreateDyadDbProviderFromDbProvider(former, out));
    EXPECT_TRUE(out.IsNull());
}

TEST(VELDyadDbProviderServices, WhatAHostThrowsCountsAsFailure) {
    HostFactory factory;
    factory.throws = true;
    const VELIDyadDbProvider_var former(new HostProvider);
    VELIDyadDbProvider_var out = former;
    EXPECT_EQ(E_FAIL, Services::CreateDyadDbProvider(out));
    EXPECT_EQ(E_FAIL, Services::CreateDyadDbProviderFromDbProvider(former, out));
    EXPECT_TRUE(out == former);
}

TEST(VELDyadDbProviderServices, AHostsFactoryIsNotAskedToCloneNull) {
    HostFactory factory;
    VELIDyadDbProvider_var out;
    EXPECT_EQ(E_FAIL, Services::CreateDyadDbProviderFromDbProvider(VELIDyadDbProvider_var(), out));
    EXPECT_EQ(0, factory.calls);
}
