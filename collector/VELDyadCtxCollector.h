// SPDX-License-Identifier: MIT
// The contexts of one context file, and the exchange scenarios declared with them.
//
// A client gets a collector from one of the factories and owns it: `delete` frees it with every
// context in it. Contexts are found by name, position (from 1), kind and provider. A type filter
// selects the current view: 0 all declared contexts, 1 Path, 2 Database, 3 File; positions count
// within that view.
//
// A collector and its contexts are used from one thread at a time. Different collectors are
// independent. No operation throws, with two exceptions: copies and assignments throw
// std::bad_alloc, and GetContextNamesFromDbProvider lets the null-handle error through. Without
// memory every other operation returns E_FAIL, null or 0.
#pragma once

#include "context/VELDyadContext.h"
#include "context/VELListPtrVELDyadContext.h"
#include "platform/VELExport.h"
#include "platform/VELIDyadDbProvider.h"
#include "platform/VELListVal.h"
#include "platform/VELRawColl.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

#include <memory>

namespace dyadctx {
struct CollectorAccess;
struct CollectorInternals;
struct CollectorState;
} // namespace dyadctx

class VELDYADCTX_EXPORT VELDyadCtxCollector {
public:
    // ---- Factories -----------------------------------------------------------------------------
    // Each returns a new collector owned by the caller, or null. Messages for the user are added to
    // `message`, which is never cleared; each ends in "\n". A few failures add none.

    // Reads the context file chosen by VELDyadCtxInit as it was at load: any text but a single
    // character is the file; "0" means none; otherwise (also when unset) it is the attribute
    // DYAD_Ctx_XmlFile of the settings repository DyadSettingsRep, else the default file under the
    // first folder of VELInstallPath that holds it. When VELDyadCtxOut was set at load, the
    // collector is also written there.
    static VELDyadCtxCollector* CreateCollector(VELUnicodeString& message);
    // Reads the context file named by the environment variable ExchangeChannel now.
    static VELDyadCtxCollector* CreateExchangeChannelCollector(VELUnicodeString& message);
    // An empty collector; null only without memory.
    static VELDyadCtxCollector* CreateCollectorFromScratch();

    // Copies share the contexts: of a collector and its copies only one may be deleted while
    // another is in use, and never two. Assignment leaves the contexts held so far to whoever else
    // holds them. Both throw std::bad_alloc; an assignment has then changed nothing.
    VELDyadCtxCollector(const VELDyadCtxCollector& src);
    VELDyadCtxCollector& operator=(const VELDyadCtxCollector& src);
    ~VELDyadCtxCollector();

    // ---- Registry ------------------------------------------------------------------------------
    // Takes ownership of `ctx`. Without `parent` it becomes a declared context. With `parent` it
    // becomes the associated context of `parent` when `associated` is not 0 and the DB context
    // environment is on, else a friend of `parent`; the result is then that of the link, and
    // ownership passes even if the link fails. Without memory to register it, `ctx` still belongs
    // to the caller.
    VELResult AddContext(VELDyadContext* ctx, VELDyadContext* parent, int associated);
    // Unlinks and deletes the first context of the current view with that name. E_FAIL when there
    // is none. Filtered views keep their old positions.
    VELResult DeleteContext(const VELUnicodeString& name);

    // The number of declared contexts; the reference is valid and up to date while the collector
    // lives.
    const int& GetAllNbCtxs() const noexcept { return _NbCtxs; }
    int GetNbPathCtxs() const noexcept { return _PathCtxIndexes.Size(); }
    // The number of contexts of the current view.
    int GetNbCtxs();
    // E_FAIL, and `ctx` unchanged, outside the view. `ctx` may become null if a client added a null
    // context.
    VELResult GetCtxAtIndex(int index, VELDyadContext*& ctx);
    // The first context of that name in the current view, and its position there when `index` is
    // not null. E_FAIL, and both unchanged, when there is none.
    VELResult GetCtxFromName(const VELUnicodeString& name, VELDyadContext*& ctx,
                             int* index = nullptr);
    // The file this collector was made from, empty for one from scratch; `isDefault` becomes 1 when
    // it is the installation's default file, else 0.
    const VELUnicodeString& GetXMLFile(unsigned char& isDefault) const noexcept;

    // ---- Validation ----------------------------------------------------------------------------
    // Applies every rule to one context; `index` is its position among the declared contexts, 0 if
    // it is not registered. 1 when all hold, otherwise 0 with a message for each that does not; 0
    // without message for a null context or an index out of range.
    unsigned char CheckContext(VELDyadContext* context, VELUnicodeString& message, int index);
    // 1 when a declared context after position `index` has the name of `context`; `match`, unless
    // null, receives it.
    unsigned char FindMatchingCtx(int index, VELDyadContext* context, VELDyadContext** match);

    // ---- Views and provider queries ------------------------------------------------------------
    // Adds every declared context to the views of its kind. Run at creation; running it again adds
    // them once more.
    VELResult SetCtxTypeList();
    // Switch the view, only while the DB context environment is on. Always S_OK.
    VELResult SetContextAllType();
    VELResult SetContextPathType();
    VELResult SetContextFileType();
    // Switches to the Database view. The first call with a list that is not empty narrows the view
    // for good to the contexts of these providers and the Path contexts. If a provider call fails,
    // its code is returned and the view is unchanged.
    VELResult SetContextDatabaseType(const VELListValVELUnicodeString& providerNames);
    VELResult GetContextType(int& type) const noexcept;
    // Adds the parameter types a context may have now, without emptying the list.
    void GetListOfParamTypes(VELListValVELUnicodeString& types);
    // The names of all declared contexts on the same database. Throws VELNullHandleError at the
    // first context without provider; the names found so far are in the list.
    VELResult GetContextNamesFromDbProvider(const VELIDyadDbProvider_var& provider,
                                            VELListValVELUnicodeString& names);
    // The contexts of the Database view whose provider has that name. If a provider call fails, its
    // code is returned; what was found so far stays in the list.
    VELResult GetContextsFromDbProviderName(const VELUnicodeString& providerName,
                                            VELListPtrVELDyadContext& contexts);
    // Adds their names, without emptying the list.
    VELResult GetContextNamesFromDbProviderName(const VELUnicodeString& providerName,
                                                VELListValVELUnicodeString& names);

    // ---- Exchange scenarios --------------------------------------------------------------------
    // Adds one row. Always S_OK: without memory there is no new row, as GetNbScenarios shows.
    VELResult AddScenario(const VELUnicodeString& channel, const VELUnicodeString& channelContext,
                          const VELUnicodeString& profile, const VELUnicodeString& scenarioId,
                          const VELUnicodeString& optionName, const VELUnicodeString& optionValue);
    // Queries empty their lists, fill them in row order and return S_OK; E_FAIL without memory. The
    // channels that offer one of the scenarios, each once, with their contexts.
    VELResult GetExchangeChannelfromScenario(const VELListValVELUnicodeString& ids,
                                             VELListValVELUnicodeString& channels,
                                             VELListValVELUnicodeString& channelContexts);
    // The profiles of a channel for these scenarios, each once, with the first scenario it is for.
    VELResult GetProfilefromExchangeChannel(const VELUnicodeString& channel,
                                            const VELListValVELUnicodeString& ids,
                                            VELListValVELUnicodeString& matchedIds,
                                            VELListValVELUnicodeString& profiles);
    // The options of a channel and profile, repeated ones included.
    VELResult GetOptionsfromExchangeProfile(const VELUnicodeString& channel,
                                            const VELUnicodeString& profile,
                                            VELListValVELUnicodeString& optionNames,
                                            VELListValVELUnicodeString& optionValues);

    // The number of rows kept.
    int GetNbScenarios() const noexcept { return _ScenarioIds.Size(); }
    // One row; positions from 1 in the order they were added. E_FAIL, and the outputs unchanged,
    // for a position outside.
    VELResult GetScenarioAtIndex(int index, VELUnicodeString& channel,
                                 VELUnicodeString& channelContext, VELUnicodeString& profile,
                                 VELUnicodeString& scenarioId, VELUnicodeString& optionName,
                                 VELUnicodeString& optionValue) const;

    // ---- Transition contexts -------------------------------------------------------------------
    // Adds the three contexts that a conversion into the platform database works with, and runs
    // SetCtxTypeList. Adds nothing while the DB context environment is off. `collector` must not be
    // null; `message` is not used. S_OK even when a context could not be made.
    static VELResult AddCADTransitionContext(VELDyadCtxCollector*& collector,
                                             VELUnicodeString& message);

    // ---- Files ---------------------------------------------------------------------------------
    // Writes the current view to a context file; scenarios are not written. A negative code, and
    // the file unchanged, on failure.
    VELResult Stream(const VELUnicodeString& file, VELUnicodeString& message);
    // The current view as the text that Stream writes, byte for byte. E_FAIL, and `text` unchanged,
    // on failure.
    VELResult StreamText(VELUnicodeString& text);
    // The path of the default context file below an installation folder.
    static void GetRelativeResourcesPath(VELUnicodeString& path);
    // 1 when the path contains that of the default context file, else 0.
    static unsigned char IsADefaultContextXML(const VELUnicodeString& file);

private:
    friend struct dyadctx::CollectorAccess;
    friend struct dyadctx::CollectorInternals;

    VELDYADCTX_LOCAL VELDyadCtxCollector(const VELUnicodeString& file,
                                         const unsigned char& isDefault);

    VELDYADCTX_LOCAL VELResult Check(VELUnicodeString& message);
    VELDYADCTX_LOCAL unsigned char CheckDefaultContext(const VELUnicodeString& name,
                                                       const VELUnicodeString& parameter,
                                                       const VELUnicodeString& parameterType,
                                                       VELUnicodeString& message);
    VELDYADCTX_LOCAL unsigned char IsAValidParamType(const VELUnicodeString& parameterType);
    VELDYADCTX_LOCAL unsigned char FindMatchingDatabase(int index, VELDyadContext* context,
                                                        VELDyadContext** match);

    VELDYADCTX_LOCAL VELResult SetFriendsAndAssociated(VELUnicodeString& message);

    VELDYADCTX_LOCAL static VELDyadCtxCollector*
    CreateCollectorFromXMLFile(const VELUnicodeString& file, const unsigned char& isDefault,
                               VELUnicodeString& message);
    VELDYADCTX_LOCAL static VELResult CheckXMLFile(const VELUnicodeString& file);
    VELDYADCTX_LOCAL static void DeleteCollectorAtCreate(VELDyadCtxCollector*& collector,
                                                         const char* step,
                                                         VELUnicodeString& message);
    VELDYADCTX_LOCAL static void GetDefaultContextXML(VELUnicodeString& file);
    VELDYADCTX_LOCAL static unsigned char LogError(const char* method, const char* key,
                                                   VELUnicodeString& message,
                                                   const VELUnicodeString* parameters, int count,
                                                   int newLine);

    // All contexts this collector owns, each once.
    VELListPtrVELDyadContext _Contexts;
    // The declared ones in file order; may hold null and repeated contexts.
    VELListPtrVELDyadContext _MainContexts;
    // Positions in _MainContexts.
    VELRawCollint _PathCtxIndexes;
    VELRawCollint _DatabaseCtxIndexes;
    VELUnicodeString _XMLFile;
    int _NbCtxs = 0;
    int _CtxType = 0;
    bool _IsDefault = false;
    bool _DatabaseFilterDone = false;
    VELRawCollint _FileCtxIndexes;
    // One row per option of a scenario; the seven lists are always of equal length.
    VELListValVELUnicodeString _ScenarioChannels;
    VELListValVELUnicodeString _ScenarioChannelContexts;
    VELListValVELUnicodeString _ScenarioProfiles;
    VELListValVELUnicodeString _ScenarioIds;
    VELListValVELUnicodeString _ScenarioOptionNames;
    VELListValVELUnicodeString _ScenarioOptionValues;
    VELListValVELUnicodeString _ScenarioKeys;

    // Helpers for the lists above, which are not copied; never null.
    std::unique_ptr<dyadctx::CollectorState> state_;
};
