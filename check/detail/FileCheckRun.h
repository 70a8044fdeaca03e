// SPDX-License-Identifier: MIT
// One check of one file: the implementation of VELDyadCtxFileCheck.
#pragma once

#include "check/detail/ContextPlaces.h"
#include "check/detail/FindingList.h"
#include "check/detail/SourcePlaces.h"
#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/Fault.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadObserver.h"

#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dyadctx {

class NearestName;

struct FileCheckOptions {
    bool deep = false;
    VELListValVELUnicodeString silenced;
};

class FileCheckRun final : private ReadObserver, private FaultReporter {
public:
    // Runs the check, of the file where `text` is null. Throws std::bad_alloc.
    FileCheckRun(const VELUnicodeString& file, const VELUnicodeString* text,
                 const FileCheckOptions& options);
    FileCheckRun(const FileCheckRun&) = delete;
    FileCheckRun& operator=(const FileCheckRun&) = delete;

    bool HasErrors() const noexcept { return findings_.HasErrors(); }
    // To be called once.
    VELListVal<VELDyadCtxFinding> TakeFindings();
    VELDyadCtxCollector* Collector() const noexcept { return collector_.get(); }
    // The place of a context's element, in characters; nothing for a context that is not of the
    // file. Throws std::bad_alloc.
    std::optional<VELPlace> FindPlace(const VELDyadContext* context);
    // The attributes of such contexts; it stays this object's. Throws std::bad_alloc.
    const AttributePlaces& FindAttributes();
    // The message of a factory. Throws std::bad_alloc.
    VELUnicodeString FactoryMessage() const;

private:
    struct LeftOut {
        VELUnicodeString name;
        VELPlace place;
    };
    // A friend or associated context whose name is not declared.
    struct Unknown {
        const VELDyadContext* context;
        const VELDyadContext* placeholder;
    };

    const VELPlace* ElementOf(const VELDyadContext* context) const noexcept;
    SourceReader ReadText() const;
    void PlaceElements();

    void Run();
    void ReadFile();
    void LinkAndCheck();
    void GiveHints();
    void CheckDeclared(int count);

    void OnSyntaxError(const VELPlace& place, const char* reason) override;
    void OnDocument(const VELIDOMElement& root) override;
    void OnFault(const Fault& fault, const VELIDOMNode& where) override;
    void OnTooManyContexts() override { hasTooManyContexts_ = true; }
    void OnContext(const VELDyadContext& context, const VELIDOMElement& element,
                   unsigned int missing) override;
    void OnLeftOut(const VELDyadContext& context, const VELIDOMElement& element,
                   bool isDeclared) override;
    void OnRepeated(const VELDyadContext& first, const VELIDOMElement& element) override;
    void Report(const Fault& fault) override;

    void AddSyntaxError(const Fault& fault);
    void AddDataFault(const Fault& fault);
    void AddTooManyContexts(const Fault& fault, const VELIDOMNode& where);
    void AddInternalError(const Fault& fault, const VELIDOMNode& where);
    void WarnOfMovedFriends(const char* id, const VELUnicodeString& name,
                            const VELIDOMElement& element);
    void SuggestNames();
    void SuggestName(const Unknown& unknown, NearestName& nearest);
    void SuggestParameterTypes();
    void NoteLeftOut();
    void NoteNoDefaultContext();

    bool IsFollowUp(const Fault& fault) const;
    Spot SpotOf(const Fault& fault) const;
    Spot SpotOfContext(const VELDyadContext* context, const char* attribute) const;
    void Relate(const Fault& fault, FindingList::Entry& entry);
    void RelateUnknown(const Fault& fault, FindingList::Entry& entry);
    void RelateReturn(const Fault& fault, FindingList::Entry& entry);
    // The first position among the declared contexts; 0 without one.
    int PositionOfName(const VELUnicodeString& name) const;

    VELUnicodeString file_;
    // Once it is asked for.
    std::optional<AttributePlaces> attributes_;
    // Used instead of the file.
    std::optional<VELUnicodeString> contents_;
    FileCheckOptions options_;
    std::unique_ptr<VELDyadCtxCollector> collector_;
    FindingList findings_;
    ContextPlaces places_;
    VELPlace syntaxErrorPlace_;
    VELUnicodeString syntaxError_;
    // Whether the places of elements are in characters already.
    bool areElementsPlaced_ = false;
    VELIDOMElement root_;
    std::optional<FormatIds> ids_;
    std::unordered_map<const VELDyadContext*, unsigned int> missing_;
    std::optional<ReferencePlaces> references_;
    // The position of the context being checked.
    int checked_ = 0;
    std::vector<LeftOut> leftOut_;
    // Positions in leftOut_, once it is needed.
    std::unordered_map<std::string_view, std::size_t> leftOutByName_;
    // More contexts than a file may have; what was read is not linked then.
    bool hasTooManyContexts_ = false;
    bool isOwnerlessReported_ = false;
    // Nothing could be read after the fault.
    bool hasReadingEnded_ = false;
    std::vector<Unknown> unknown_;
};

} // namespace dyadctx
