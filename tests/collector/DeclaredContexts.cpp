// SPDX-License-Identifier: MIT
#include "collector/DeclaredContexts.h"
#include "collector/detail/CollectorInternals.h"

#include "context/detail/ContextAccess.h"
#include "platform/VELDyadDbProviderServices.h"
#include "support/ContextFile.h"

namespace dyadctx::test {

namespace {

VELUnicodeString Unicode(const std::string& text) {
    return VELUnicodeString(text.c_str(), text.size());
}

VELDyadContext* NewContext(const std::string& name, const std::string& parameter,
                           const std::string& type) {
    return new VELDyadContext(Unicode(name), Unicode(parameter), Unicode(type));
}

} // namespace

VELDyadContext& DeclaredContexts::Declare(const std::string& name, const std::string& parameter,
                                          const std::string& type) {
    VELDyadContext* context = NewContext(name, parameter, type);
    collector_->AddContext(context, nullptr, 0);
    return *context;
}

VELDyadContext& DeclaredContexts::DeclareDatabase(const std::string& name,
                                                  const std::string& connector,
                                                  const std::string& server) {
    VELDyadContext& context = Declare(name, "base", "Database");
    context.SetDyadDbProvider(MakeProvider(connector, server));
    return context;
}

void DeclaredContexts::DeclareNull() {
    collector_->AddContext(nullptr, nullptr, 0);
}

VELDyadContext& DeclaredContexts::NameFriend(VELDyadContext& owner, const std::string& name) {
    VELDyadContext* context = NewContext(name, "", "");
    collector_->AddContext(context, &owner, 0);
    return *context;
}

VELDyadContext& DeclaredContexts::NameAssociated(VELDyadContext& owner, const std::string& name) {
    VELDyadContext* context = NewContext(name, "", "");
    CollectorInternals::Contexts(*collector_).Append(context);
    owner.AddAssociatedContext(context);
    return *context;
}

void DeclaredContexts::AddNullFriend(VELDyadContext& owner) {
    ContextAccess::AppendFriend(owner, nullptr);
}

VELResult DeclaredContexts::Check() {
    return CollectorInternals::Check(*collector_, message_);
}

VELResult DeclaredContexts::Link() {
    return CollectorInternals::SetFriendsAndAssociated(*collector_, message_);
}

int DeclaredContexts::CheckOne(VELDyadContext& context, int index) {
    return collector_->CheckContext(&context, message_, index);
}

VELIDyadDbProvider_var MakeProvider(const std::string& connector, const std::string& server) {
    VELIDyadDbProvider_var provider;
    VELDyadDbProviderServices::CreateDyadDbProvider(provider);
    provider->SetConnectorName(Unicode(connector));
    provider->SetServerDetails(ListOf({"http", "Role", "ServerName"}), ListOf({"", "", server}));
    return provider;
}

} // namespace dyadctx::test
