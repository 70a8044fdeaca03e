// SPDX-License-Identifier: MIT
// Everything that is wrong with one context file, each finding at its place.
//
// A factory of VELDyadCtxCollector stops at the first fault; this reads, links and checks all
// contexts with the same code. Findings of severity Error and their consequences include everything
// a factory reports, and there is an error exactly when a factory refuses the file. Warnings and
// notes are further help; the library accepts what they are about.
//
// The DB context environment counts as it is when Run is called. An object is used from one thread
// at a time. No operation throws.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELExport.h"
#include "platform/VELListVal.h"
#include "platform/VELPlace.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "trace/VELDyadCtxFinding.h"

#include <memory>

namespace dyadctx {
struct FileCheckState;
}

class VELDYADCTX_EXPORT VELDyadCtxFileCheck {
public:
    VELDyadCtxFileCheck() noexcept;
    ~VELDyadCtxFileCheck();
    VELDyadCtxFileCheck(const VELDyadCtxFileCheck&) = delete;
    VELDyadCtxFileCheck& operator=(const VELDyadCtxFileCheck&) = delete;

    // ---- What to look for ----------------------------------------------------------------------
    // Whether to check also that the folders and files named by contexts exist. Off by default.
    void SetDeep(bool deep) noexcept;
    // Leaves out findings of that kind, except consequences. E_FAIL unless `id` is that of a
    // warning or note.
    VELResult Silence(const VELUnicodeString& id);
    // All kinds of findings other than the library's own messages.
    static VELListVal<VELDyadCtxFindingKind> GetFindingKinds();

    // The name nearest to `word`, letter case and blanks aside, the first of equally near ones; no
    // more than a third of its letters differ. Empty when none is near. A name equal to `word` does
    // not count.
    static VELUnicodeString GetNearestName(const VELUnicodeString& word,
                                           const VELListValVELUnicodeString& names);

    // ---- The check -----------------------------------------------------------------------------
    // S_OK when a factory accepts the file, S_FALSE when there are errors. E_FAIL without memory
    // and when a host's provider throws; there are then no findings and no collector. A file that
    // cannot be opened or parsed for lack of memory counts as unreadable.
    VELResult Run(const VELUnicodeString& file);
    // The same for `text`, the bytes of a file in any supported encoding, as if the file `name`
    // held them. The name is not checked, and no file of that name is opened.
    VELResult Run(const VELUnicodeString& name, const VELUnicodeString& text);

    // ---- What came of it, until the next Run ---------------------------------------------------
    int GetNbFindings() const noexcept;
    // In file order, except that consequences follow their fault; positions from 1.
    const VELDyadCtxFinding& GetFindingAt(int index) const;
    // Consequences do not count.
    int GetNbFindings(VELDyadCtxSeverity severity) const noexcept;

    // What was read of the file, valid or not; owned by this object. Contexts that lack an
    // attribute are in it; a friend or associated context whose name is not declared is still the
    // placeholder that was read, which is not among the declared contexts. Empty for an unreadable
    // file; null only before a Run and after one that returned E_FAIL.
    VELDyadCtxCollector* GetCollector() const noexcept;
    // The place of the element of one of that collector's contexts, declared or placeholder.
    // E_FAIL, and `place` unchanged, for any other context.
    VELResult GetPlace(const VELDyadContext* context, VELPlace& place) const;
    // The names of the attributes written in that element, and where each begins, in the order of
    // the text. E_FAIL, and the lists as before, for any other context.
    VELResult GetAttributePlaces(const VELDyadContext* context, VELListValVELUnicodeString& names,
                                 VELListVal<VELPlace>& places) const;
    // A factory's message for the same text, or for the file, which is read again; empty when the
    // factory accepts it. E_FAIL, and `message` unchanged, without memory, when a host's provider
    // throws, and before the first Run.
    VELResult GetFactoryMessage(VELUnicodeString& message) const;

private:
    // Null without memory.
    std::unique_ptr<dyadctx::FileCheckState> state_;
};
