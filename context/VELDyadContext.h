// SPDX-License-Identifier: MIT
// The record of one context: where a piece of work takes its data from.
//
// Its name identifies it in a collector. Its parameter type says which kind of source it is:
// "Default", "Path", "File" or "Database", compared exactly; its parameter is the source's value.
// Friends and the associated context are links to other contexts of the same collector, never
// owned. A "Database" context may hold a database provider and, while the process has multisite
// support, a table of server sites.
//
// A context added to a collector belongs to the collector, which deletes it. Any other context is
// deleted with `delete` by its holder, wherever it came from. A context is used from one thread at
// a time. No operation throws, except that constructors and assignment throw std::bad_alloc.
#pragma once

#include "context/VELListPtrVELDyadContext.h"
#include "platform/VELExport.h"
#include "platform/VELIDyadDbProvider.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

#include <memory>

namespace dyadctx {
struct ContextAccess;
struct ContextTexts;
class FriendList;
struct SiteTables;
} // namespace dyadctx

class VELDYADCTX_EXPORT VELDyadContext {
public:
    // Copies the three texts. A "Database" context gets an empty table of sites when the
    // environment variable TE_MULTISITE_DBCONTEXT was set at load; no other context ever has one.
    VELDyadContext(const VELUnicodeString& name, const VELUnicodeString& parameter,
                   const VELUnicodeString& parameterType);
    // The copy shares the source's provider and table of sites; the table lives until the last of
    // the contexts that share it goes. A table the target had before goes with the target.
    VELDyadContext(const VELDyadContext& src);
    VELDyadContext& operator=(const VELDyadContext& src);
    ~VELDyadContext();

    // Valid, and up to date, while the context lives.
    const VELUnicodeString& GetName() const noexcept { return name_; }
    const VELUnicodeString& GetParameter() const noexcept { return parameter_; }
    const VELUnicodeString& GetParameterType() const noexcept { return parameterType_; }
    // The parameter type in the user's language; empty for one that is none of the four.
    VELUnicodeString GetNLSParameterType() const;

    // Friends, at positions from 1. A context may be a friend twice. The three changes return
    // E_FAIL, and change nothing, for a null context or a position outside the list.
    VELResult AddFriend(VELDyadContext* ctx);
    VELResult SetFriend(int index, VELDyadContext* ctx);
    VELResult RemoveFriend(int index);
    // Returns the number of friends. If there are any, `out` is replaced by them; if not, `out` is
    // unchanged.
    int GetFriends(VELListPtrVELDyadContext& out) const;

    // Sets the associated context whether or not there was one; E_FAIL for null.
    VELResult AddAssociatedContext(VELDyadContext* ctx);
    // Replaces the associated context; E_FAIL for null and when there is none to replace.
    VELResult SetAssociated(VELDyadContext* ctx);
    // S_OK and the context, or S_FALSE and null when there is none.
    VELResult GetAssociatedContext(VELDyadContext*& out);
    // E_FAIL when there is none.
    VELResult RemoveAssociatedContext();

    // Keeps a provider made from `provider` by the provider services and returns their code. E_FAIL
    // when this is not a "Database" context or the handle is null.
    VELResult SetDyadDbProvider(const VELIDyadDbProvider_var& provider);
    // Returns a provider made from the kept one, never that one itself; S_OK and the null handle
    // when there is none.
    VELResult GetDyadDbProvider(VELIDyadDbProvider_var& out) const;

    // The table of sites. Without a table the operations with a code return E_FAIL and the others
    // do nothing. A site is identified by its server details, compared exactly. Adding a site that
    // is present changes nothing and returns S_OK.
    VELResult AddRecordInMultiSiteHash(const VELUnicodeString& serverDetails,
                                       const VELIDyadDbProvider_var& provider);
    // E_FAIL when there is no such site.
    VELResult RemoveRecordFromMultiSiteHash(const VELUnicodeString& serverDetails);
    // The provider of a site; without such a site `provider` is unchanged. E_FAIL when `provider`
    // is null in the end: reset it before the call.
    VELResult LocateInMultisiteHash(const VELUnicodeString& serverDetails,
                                    VELIDyadDbProvider_var& provider);
    // Both add to their list without emptying it, in the table's order. The second leaves out sites
    // without provider.
    void GetListOfSites(VELListValVELUnicodeString& sites);
    VELResult GetListOfMultisiteDbProvider(VELListValVELIDyadDbProvider_var& providers);
    // 1 when there are two sites or more, else 0.
    unsigned char isContainsMultisites();

private:
    friend struct dyadctx::ContextAccess;
    // Moves the texts in.
    VELDYADCTX_LOCAL explicit VELDyadContext(dyadctx::ContextTexts&& texts);

    VELUnicodeString name_;
    VELUnicodeString parameter_;
    VELUnicodeString parameterType_;
    VELIDyadDbProvider_var provider_;
    VELDyadContext* associated_ = nullptr;
    // A file may hold a million contexts, most of them without friends and nearly all without
    // tables of sites: both are null until needed.
    std::unique_ptr<dyadctx::FriendList> friends_;
    std::unique_ptr<dyadctx::SiteTables> sites_;
    bool wasRegistered_ = false;
};
