// Everything that is wrong with one context file, each finding at its place.
//
// Where a factory of VELDyadCtxCollector stops at the first fault, this goes on: it reads, links
// and checks with the same code, through all contexts. The findings of severity Error and their
// consequences hold whatever a factory says of the file, and there is an error exactly when a
// factory refuses the file. Warnings and notes are help beyond that; the library itself does not
// mind them.
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
    // Whether to look also for the folders and files that contexts name. Off at first.
    void SetDeep(bool deep) noexcept;
    // Leaves out findings of that kind, consequences apart. E_FAIL for what is not the id of a
    // warning or note.
    VELResult Silence(const VELUnicodeString& id);
    // Every kind of finding beyond the library's own messages.
    static VELListVal<VELDyadCtxFindingKind> GetFindingKinds();

    // The name nearest to `word`, letter case and blanks aside, the first of equally near ones; no
    // more than a third of its letters differ. Empty when none is near. A name equal to `word` does
    // not count.
    static VELUnicodeString GetNearestName(const VELUnicodeString& word,
                                           const VELListValVELUnicodeString& names);

    // ---- The check -----------------------------------------------------------------------------
    // S_OK when a factory takes the file, S_FALSE when there are errors. E_FAIL without memory, and
    // when a host's provider throws; there are then no findings and no collector. A file that
    // cannot be opened or parsed for want of memory counts as one that cannot be read.
    VELResult Run(const VELUnicodeString& file);
    // The same for a text, the bytes of a file in any encoding that a file may have, as if a file
    // `name` held them. Whether the name is that of a context file is not looked at, and no file of
    // that name is opened.
    VELResult Run(const VELUnicodeString& name, const VELUnicodeString& text);

    // ---- What came of it, until the next Run ---------------------------------------------------
    int GetNbFindings() const noexcept;
    // In the order of the file, but consequences after their fault; positions from 1.
    const VELDyadCtxFinding& GetFindingAt(int index) const;
    // Without consequences, which do not count.
    int GetNbFindings(VELDyadCtxSeverity severity) const noexcept;

    // What could be made of the file, valid or not; it stays this object's. Contexts that lack an
    // attribute are in it; a friend or associated context whose name is not declared is still the
    // placeholder that was read, which is not among the declared contexts. Never null after a Run
    // that had memory: without contexts where the file cannot be read.
    VELDyadCtxCollector* GetCollector() const noexcept;
    // Where the element of a context of that collector is, declared or placeholder. E_FAIL, and
    // `place` as before, for any other context.
    VELResult GetPlace(const VELDyadContext* context, VELPlace& place) const;
    // The message of a factory for the same text, or for the file as it is now, which is read again
    // for it; empty where it takes the file. E_FAIL, and `message` as before, without memory, when
    // a host's provider throws, and before the first Run.
    VELResult GetFactoryMessage(VELUnicodeString& message) const;

private:
    // Null without memory.
    std::unique_ptr<dyadctx::FileCheckState> state_;
};
