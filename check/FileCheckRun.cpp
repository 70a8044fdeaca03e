// SPDX-License-Identifier: MIT
#include "check/detail/FileCheckRun.h"

#include "check/detail/FileHints.h"
#include "check/detail/NearestName.h"
#include "collector/detail/CheckRun.h"
#include "collector/detail/CollectorAccess.h"
#include "collector/detail/ContextFileSource.h"
#include "context/detail/ParameterTypes.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/UserMessage.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadState.h"
#include "xml/detail/VELDyadCtxXml.h"

#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <utility>

namespace dyadctx {

namespace {

bool Is(const char* key, const char* other) {
    return std::string_view(key) == other;
}

std::span<const VELUnicodeString> ParametersOf(const Fault& fault) {
    return {fault.parameters.data(), static_cast<std::size_t>(fault.parameterCount)};
}

unsigned char IsDefaultFile(const VELUnicodeString& file) {
    return ContainsDefaultContextFile(file) ? 1 : 0;
}

// The first elements named like the data element, at most two.
VELIDOMNodeList DataElements(const VELIDOMElement& root) {
    VELIDOMNodeList found;
    if (root.GetElementsByTagName(Names().data, found, 2) < 0)
        throw std::bad_alloc();
    return found;
}

VELIDOMNode NodeAt(const VELIDOMNodeList& nodes, int index) {
    VELIDOMNode node;
    nodes.Item(index, node);
    return node;
}

} // namespace

FileCheckRun::FileCheckRun(const VELUnicodeString& file, const VELUnicodeString* text,
                           const FileCheckOptions& options)
    : file_(file), options_(options), collector_(CollectorAccess::New(file, IsDefaultFile(file))) {
    if (text != nullptr)
        contents_ = *text;
    Run();
}

VELUnicodeString FileCheckRun::FactoryMessage() const {
    VELUnicodeString message;
    const unsigned char isDefault = IsDefaultFile(file_);
    const std::unique_ptr<VELDyadCtxCollector> made(
        contents_
            ? CollectorAccess::CreateCollectorFromContents(file_, isDefault, &*contents_, message)
            : CollectorAccess::CreateCollectorFromXMLFile(file_, isDefault, message));
    return message;
}

VELListVal<VELDyadCtxFinding> FileCheckRun::TakeFindings() {
    if (findings_.IsEmpty())
        return {};
    SourceReader text = ReadText();
    return findings_.Finish(text, options_.silenced);
}

std::optional<VELPlace> FileCheckRun::FindPlace(const VELDyadContext* context) {
    if (!areElementsPlaced_)
        PlaceElements();
    const VELPlace* element = ElementOf(context);
    return element != nullptr ? std::optional<VELPlace>(*element) : std::nullopt;
}

// All in one pass through the text; the findings have their places already.
void FileCheckRun::PlaceElements() {
    std::vector<Spot> spots;
    for (const ContextPlaces::Entry& entry : places_)
        spots.push_back({entry.second});
    SourceReader text = ReadText();
    const std::vector<SourceRange> ranges = FindRanges(spots, text);
    auto range = ranges.begin();
    for (ContextPlaces::Entry& entry : places_)
        entry.second = (range++)->begin;
    areElementsPlaced_ = true;
}

const AttributePlaces& FileCheckRun::FindAttributes() {
    if (!areElementsPlaced_)
        PlaceElements();
    if (!attributes_) {
        SourceReader text = ReadText();
        attributes_.emplace(std::vector(places_.begin(), places_.end()), text);
    }
    return *attributes_;
}

SourceReader FileCheckRun::ReadText() const {
    return contents_ ? SourceReader(contents_->AsView()) : SourceReader(file_);
}

const VELPlace* FileCheckRun::ElementOf(const VELDyadContext* context) const noexcept {
    return places_.Find(context);
}

void FileCheckRun::Run() {
    if (!contents_ && JudgeContextFile(file_) != VELDyadCtxPathVerdict::Usable) {
        findings_.Add(key::XMLFileNotValid, {&file_, 1}, {});
        return;
    }
    ReadFile();
    // What is missing would be at fault for names that the rest of the file declares.
    if (!hasTooManyContexts_)
        LinkAndCheck();
    if (collector_->SetCtxTypeList() < 0)
        throw std::bad_alloc();
    if (!root_.IsNull() && !hasTooManyContexts_)
        GiveHints();
    // The document is no longer needed, and large.
    root_ = VELIDOMElement();
}

void FileCheckRun::ReadFile() {
    VELUnicodeString unused;
    VELDyadCtxXml xml(collector_.get(), this);
    const VELResult result = contents_ ? xml.Unstream(*contents_, unused) : xml.Unstream(unused);
    if (result < 0 && !hasReadingEnded_)
        throw std::bad_alloc();
}

void FileCheckRun::LinkAndCheck() {
    const int count = collector_->GetNbCtxs();
    references_.emplace(CollectorAccess::Declared(*collector_));
    if (count > 0) {
        LinkFriendsAndAssociated(*collector_, count, LinkExtent::Everything, *this);
        CheckDeclared(count);
    } else if (!findings_.HasErrors()) {
        findings_.Add(key::NoCtxDefined, {}, {PlaceOf(NodeAt(DataElements(root_), 0))});
    }
}

void FileCheckRun::CheckDeclared(int count) {
    const VELListPtrVELDyadContext& declared = CollectorAccess::Declared(*collector_);
    CheckRun run(*collector_, CheckExtent::AllContexts, *this);
    for (checked_ = 1; checked_ <= count; ++checked_)
        run.CheckContext(declared[checked_], checked_);
    checked_ = 0;
}

void FileCheckRun::GiveHints() {
    SuggestNames();
    NoteLeftOut();
    NoteNoDefaultContext();
    SuggestParameterTypes();
    HintAtWhatIsNotRead(root_, findings_);
    const VELIDOMNodeList data = DataElements(root_);
    if (data.GetLength() == 1)
        HintAtRepetitions(VELIDOMElement(NodeAt(data, 0)), *ids_, findings_);
    HintAtFriendRings(*collector_, *references_, places_, findings_);
    if (options_.deep)
        HintAtMissingTargets(*collector_, places_, findings_);
}

// ---- Reading -----------------------------------------------------------------------------------

void FileCheckRun::OnSyntaxError(const VELPlace& place, const char* reason) {
    syntaxErrorPlace_ = place;
    syntaxError_ = reason;
}

void FileCheckRun::OnDocument(const VELIDOMElement& root) {
    root_ = root;
    ids_.emplace(root);
}

void FileCheckRun::OnContext(const VELDyadContext& context, const VELIDOMElement& element,
                             unsigned int missing) {
    places_.Add(&context, PlaceOf(element));
    if (missing != 0)
        missing_.emplace(&context, missing);
}

void FileCheckRun::OnFault(const Fault& fault, const VELIDOMNode& where) {
    if (Is(fault.key, key::XMLSyntaxError))
        return AddSyntaxError(fault);
    if (Is(fault.key, key::TagNotFound))
        return AddDataFault(fault);
    if (Is(fault.key, key::InternalError))
        return hasTooManyContexts_ ? AddTooManyContexts(fault, where)
                                   : AddInternalError(fault, where);
    const Spot spot{PlaceOf(where)};
    if (Is(fault.key, key::NotAValidTag)) {
        hasReadingEnded_ = true;
        findings_.Add(fault.key, ParametersOf(fault), spot);
        return;
    }
    VELUnicodeString context;
    if (fault.parameterCount > 0)
        context = fault.parameters[0];
    else if (where.IsNull() || !ReadAttribute(VELIDOMElement(where), Names().name, context)) {
        findings_.Add(fault.key, ParametersOf(fault), spot);
        return;
    }
    findings_.AddAbout(context, fault.key, ParametersOf(fault), spot);
}

void FileCheckRun::AddSyntaxError(const Fault& fault) {
    hasReadingEnded_ = true;
    const Spot spot{syntaxErrorPlace_};
    FindingList::Entry& entry = findings_.Add(fault.key, ParametersOf(fault), spot);
    if (!syntaxError_.IsEmpty())
        entry.related.push_back({spot, syntaxError_});
}

// There must be one such element and something in it.
void FileCheckRun::AddDataFault(const Fault& fault) {
    hasReadingEnded_ = true;
    const VELIDOMNodeList found = DataElements(root_);
    const int count = found.GetLength();
    const VELIDOMNode where = count > 0 ? NodeAt(found, count - 1) : root_;
    FindingList::Entry& entry = findings_.Add(fault.key, ParametersOf(fault), {PlaceOf(where)});
    if (count > 1)
        entry.related.push_back({{PlaceOf(NodeAt(found, 0))}, OwnText("related.first")});
    else if (count == 1)
        entry.related.push_back({{PlaceOf(where)}, OwnText("related.nothing-inside")});
}

// Only nested contexts can be that many.
void FileCheckRun::AddTooManyContexts(const Fault& fault, const VELIDOMNode& where) {
    hasReadingEnded_ = true;
    FindingList::Entry& entry = findings_.Add(fault.key, ParametersOf(fault), {PlaceOf(where)});
    const NestedContexts nested = FindDeepestNesting(root_, *ids_);
    const VELUnicodeString depth(std::to_string(nested.depth));
    entry.related.push_back(
        {{PlaceOf(nested.outermost)}, OwnText("related.nested-contexts", &depth, 1)});
}

// A friend that has no context before it, unless memory has run out; those that follow are not
// reported again.
void FileCheckRun::AddInternalError(const Fault& fault, const VELIDOMNode& where) {
    const bool isOwnerless = !leftOut_.empty() && collector_->GetNbCtxs() == 0;
    if (!isOwnerless)
        throw std::bad_alloc();
    if (isOwnerlessReported_)
        return;
    FindingList::Entry& entry = findings_.Add(fault.key, ParametersOf(fault), {PlaceOf(where)});
    isOwnerlessReported_ = true;
    const LeftOut& owner = leftOut_.back();
    entry.related.push_back({{owner.place}, OwnText("related.owner-left-out", &owner.name, 1)});
}

void FileCheckRun::OnLeftOut(const VELDyadContext& context, const VELIDOMElement& element,
                             bool isDeclared) {
    leftOut_.push_back({context.GetName(), PlaceOf(element)});
    isOwnerlessReported_ = false;
    if (isDeclared)
        WarnOfMovedFriends(id::FriendsOfLeftOut, context.GetName(), element);
}

void FileCheckRun::OnRepeated(const VELDyadContext& first, const VELIDOMElement& element) {
    VELDyadContext* last = nullptr;
    collector_->GetCtxAtIndex(collector_->GetNbCtxs(), last);
    if (last != &first)
        WarnOfMovedFriends(id::FriendsOfRepeated, first.GetName(), element);
}

// Friends go to the context declared last.
void FileCheckRun::WarnOfMovedFriends(const char* id, const VELUnicodeString& name,
                                      const VELIDOMElement& element) {
    VELDyadContext* owner = nullptr;
    if (!FindWalksBelow(element, *ids_).friends ||
        collector_->GetCtxAtIndex(collector_->GetNbCtxs(), owner) < 0 || owner == nullptr)
        return;
    const std::array parameters{name, owner->GetName()};
    FindingList::Entry& entry = findings_.AddAbout(name, id, parameters, {PlaceOf(element)});
    entry.related.push_back(
        {SpotOfContext(owner, format::NameAttribute), OwnText("related.goes-to")});
}

// ---- Hints -------------------------------------------------------------------------------------

void FileCheckRun::SuggestNames() {
    if (unknown_.empty())
        return;
    const VELListPtrVELDyadContext& declared = CollectorAccess::Declared(*collector_);
    std::vector<std::string_view> names;
    for (int pos = 1; pos <= declared.Size(); ++pos)
        names.push_back(declared[pos]->GetName().AsView());
    NearestName nearest(names);
    for (const Unknown& unknown : unknown_)
        SuggestName(unknown, nearest);
}

void FileCheckRun::SuggestName(const Unknown& unknown, NearestName& nearest) {
    const VELUnicodeString& name = unknown.placeholder->GetName();
    const VELUnicodeString found(nearest.Find(name.AsView()));
    if (found.IsEmpty() || found == unknown.context->GetName())
        return;
    const std::array parameters{name, found};
    FindingList::Entry& entry =
        findings_.AddAbout(unknown.context->GetName(), id::NearestName, parameters,
                           SpotOfContext(unknown.placeholder, format::NameAttribute));
    const VELDyadContext* declared = CollectorAccess::Declared(*collector_)[PositionOfName(found)];
    entry.related.push_back(
        {SpotOfContext(declared, format::NameAttribute), OwnText("related.declared", &found, 1)});
}

// Includes those known only while the DB context environment is on.
void FileCheckRun::SuggestParameterTypes() {
    constexpr std::array<std::string_view, 4> Known{DefaultType, PathType, FileType, DatabaseType};
    const VELListPtrVELDyadContext& declared = CollectorAccess::Declared(*collector_);
    for (int pos = 1; pos <= declared.Size(); ++pos) {
        const VELUnicodeString& type = declared[pos]->GetParameterType();
        if (std::find(Known.begin(), Known.end(), type.AsView()) != Known.end())
            continue;
        const VELUnicodeString found(NearestName({Known.begin(), Known.end()}).Find(type.AsView()));
        const std::array parameters{type, found};
        if (!found.IsEmpty())
            findings_.AddAbout(declared[pos]->GetName(), id::NearestName, parameters,
                               SpotOfContext(declared[pos], format::ParameterTypeAttribute));
    }
}

void FileCheckRun::NoteLeftOut() {
    if (leftOut_.empty())
        return;
    const LeftOut& first = *std::min_element(
        leftOut_.begin(), leftOut_.end(),
        [](const LeftOut& left, const LeftOut& right) { return left.place < right.place; });
    const std::array parameters{VELUnicodeString(std::to_string(leftOut_.size())), first.name};
    findings_.AddAbout(first.name, id::DatabaseLeftOut, parameters,
                       {first.place, format::ParameterTypeAttribute});
}

// Only of interest once the file has no errors.
void FileCheckRun::NoteNoDefaultContext() {
    if (!findings_.HasErrors() && collector_->GetNbCtxs() > 0 &&
        PositionOfName(DefaultContextName) == 0)
        findings_.Add(id::NoDefaultContext, {}, {PlaceOf(NodeAt(DataElements(root_), 0))});
}

} // namespace dyadctx
