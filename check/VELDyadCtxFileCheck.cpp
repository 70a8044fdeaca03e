// SPDX-License-Identifier: MIT
#include "check/VELDyadCtxFileCheck.h"

#include "check/detail/FileCheckRun.h"
#include "check/detail/NearestName.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/UserMessage.h"

#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace {

// A count without parameters leaves the places of a text as they are.
constexpr int AnyNumber = 9;

} // namespace

struct dyadctx::FileCheckState {
    // Checks the file itself where `text` is null.
    VELResult Run(const VELUnicodeString& name, const VELUnicodeString* text) noexcept;

    FileCheckOptions options;
    std::unique_ptr<FileCheckRun> run;
    VELListVal<VELDyadCtxFinding> findings;
};

VELResult dyadctx::FileCheckState::Run(const VELUnicodeString& name,
                                       const VELUnicodeString* text) noexcept {
    findings.RemoveAll();
    run.reset();
    try {
        auto finished = std::make_unique<FileCheckRun>(name, text, options);
        const bool valid = !finished->HasErrors();
        findings = finished->TakeFindings();
        run = std::move(finished);
        return valid ? S_OK : S_FALSE;
    } catch (...) {
        return E_FAIL;
    }
}

VELDyadCtxFileCheck::VELDyadCtxFileCheck() noexcept
    : state_(new (std::nothrow) dyadctx::FileCheckState) {}

VELDyadCtxFileCheck::~VELDyadCtxFileCheck() = default;

void VELDyadCtxFileCheck::SetDeep(bool deep) noexcept {
    if (state_ != nullptr)
        state_->options.deep = deep;
}

VELResult VELDyadCtxFileCheck::Silence(const VELUnicodeString& id) {
    const dyadctx::FindingKind* kind = dyadctx::FindOwnKind(id.AsView());
    if (state_ == nullptr || kind == nullptr || kind->severity == VELDyadCtxSeverity::Error)
        return E_FAIL;
    try {
        state_->options.silenced.Append(id);
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

VELListVal<VELDyadCtxFindingKind> VELDyadCtxFileCheck::GetFindingKinds() {
    try {
        VELListVal<VELDyadCtxFindingKind> kinds;
        for (const dyadctx::FindingKind& kind : dyadctx::OwnFindingKinds())
            kinds.Append({kind.id, kind.severity, dyadctx::OwnText(kind.id, nullptr, AnyNumber)});
        return kinds;
    } catch (...) {
        return {};
    }
}

VELUnicodeString VELDyadCtxFileCheck::GetNearestName(const VELUnicodeString& word,
                                                     const VELListValVELUnicodeString& names) {
    try {
        std::vector<std::string_view> views;
        for (int pos = 1; pos <= names.Size(); ++pos)
            views.push_back(names[pos].AsView());
        return VELUnicodeString(dyadctx::NearestName(views).Find(word.AsView()));
    } catch (...) {
        return {};
    }
}

VELResult VELDyadCtxFileCheck::Run(const VELUnicodeString& file) {
    return state_ != nullptr ? state_->Run(file, nullptr) : E_FAIL;
}

VELResult VELDyadCtxFileCheck::Run(const VELUnicodeString& name, const VELUnicodeString& text) {
    return state_ != nullptr ? state_->Run(name, &text) : E_FAIL;
}

int VELDyadCtxFileCheck::GetNbFindings() const noexcept {
    return state_ != nullptr ? state_->findings.Size() : 0;
}

const VELDyadCtxFinding& VELDyadCtxFileCheck::GetFindingAt(int index) const {
    static const VELListVal<VELDyadCtxFinding> None;
    return state_ != nullptr ? std::as_const(state_->findings)[index] : None[index];
}

int VELDyadCtxFileCheck::GetNbFindings(VELDyadCtxSeverity severity) const noexcept {
    int count = 0;
    for (int pos = 1; pos <= GetNbFindings(); ++pos) {
        const VELDyadCtxFinding& finding = GetFindingAt(pos);
        count += finding.severity == severity && finding.cause == 0 ? 1 : 0;
    }
    return count;
}

VELDyadCtxCollector* VELDyadCtxFileCheck::GetCollector() const noexcept {
    const dyadctx::FileCheckRun* run = state_ != nullptr ? state_->run.get() : nullptr;
    return run != nullptr ? run->Collector() : nullptr;
}

VELResult VELDyadCtxFileCheck::GetPlace(const VELDyadContext* context, VELPlace& place) const {
    dyadctx::FileCheckRun* run = state_ != nullptr ? state_->run.get() : nullptr;
    if (run == nullptr)
        return E_FAIL;
    try {
        const std::optional<VELPlace> found = run->FindPlace(context);
        if (!found)
            return E_FAIL;
        place = *found;
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELDyadCtxFileCheck::GetAttributePlaces(const VELDyadContext* context,
                                                  VELListValVELUnicodeString& names,
                                                  VELListVal<VELPlace>& places) const {
    dyadctx::FileCheckRun* run = state_ != nullptr ? state_->run.get() : nullptr;
    if (run == nullptr)
        return E_FAIL;
    try {
        if (!run->FindPlace(context))
            return E_FAIL;
        const dyadctx::AttributePlaces& attributes = run->FindAttributes();
        VELListValVELUnicodeString foundNames;
        VELListVal<VELPlace> foundPlaces;
        for (const dyadctx::AttributePlaces::Entry& entry : attributes.Find(context)) {
            foundNames.Append(VELUnicodeString(attributes.NameOf(entry)));
            foundPlaces.Append(entry.place);
        }
        names = std::move(foundNames);
        places = std::move(foundPlaces);
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELDyadCtxFileCheck::GetFactoryMessage(VELUnicodeString& message) const {
    const dyadctx::FileCheckRun* run = state_ != nullptr ? state_->run.get() : nullptr;
    if (run == nullptr)
        return E_FAIL;
    try {
        message = run->FactoryMessage();
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}
