#include "check/VELDyadCtxFileCheck.h"

#include "check/detail/FileCheckRun.h"
#include "check/detail/NearestName.h"
#include "trace/detail/FindingIds.h"

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace {

template<class MakeRun>
VELResult RunCheck(MakeRun makeRun, std::unique_ptr<dyadctx::FileCheckRun>& run,
                   VELListVal<VELDyadCtxFinding>& findings) {
    findings.RemoveAll();
    run.reset();
    try {
        std::unique_ptr<dyadctx::FileCheckRun> finished = makeRun();
        const bool valid = !finished->HasErrors();
        findings = finished->TakeFindings();
        run = std::move(finished);
        return valid ? S_OK : S_FALSE;
    } catch (...) {
        findings.RemoveAll();
        return E_FAIL;
    }
}

} // namespace

VELDyadCtxFileCheck::VELDyadCtxFileCheck() noexcept = default;

VELDyadCtxFileCheck::~VELDyadCtxFileCheck() = default;

VELResult VELDyadCtxFileCheck::Silence(const VELUnicodeString& id) {
    const dyadctx::FindingKind* kind = dyadctx::FindOwnKind(id.AsView());
    if (kind == nullptr || kind->severity == VELDyadCtxSeverity::Error)
        return E_FAIL;
    try {
        silenced_.Append(id);
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

VELListVal<VELDyadCtxFindingKind> VELDyadCtxFileCheck::GetFindingKinds() {
    try {
        VELListVal<VELDyadCtxFindingKind> kinds;
        for (const dyadctx::FindingKind& kind : dyadctx::OwnFindingKinds())
            kinds.Append({kind.id, kind.severity, VELUnicodeString(kind.text)});
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
    const auto makeRun = [&] {
        return std::make_unique<dyadctx::FileCheckRun>(file, nullptr,
                                                       dyadctx::FileCheckOptions{deep_, silenced_});
    };
    return RunCheck(makeRun, run_, findings_);
}

VELResult VELDyadCtxFileCheck::Run(const VELUnicodeString& name, const VELUnicodeString& text) {
    const auto makeRun = [&] {
        return std::make_unique<dyadctx::FileCheckRun>(name, &text,
                                                       dyadctx::FileCheckOptions{deep_, silenced_});
    };
    return RunCheck(makeRun, run_, findings_);
}

int VELDyadCtxFileCheck::GetNbFindings(VELDyadCtxSeverity severity) const noexcept {
    int count = 0;
    for (int pos = 1; pos <= findings_.Size(); ++pos)
        count += findings_[pos].severity == severity ? 1 : 0;
    return count;
}

VELDyadCtxCollector* VELDyadCtxFileCheck::GetCollector() const noexcept {
    return run_ != nullptr ? run_->Collector() : nullptr;
}

VELResult VELDyadCtxFileCheck::GetPlace(const VELDyadContext* context, VELPlace& place) const {
    try {
        const std::optional<VELPlace> found =
            run_ != nullptr ? run_->FindPlace(context) : std::nullopt;
        if (!found)
            return E_FAIL;
        place = *found;
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELDyadCtxFileCheck::GetFactoryMessage(VELUnicodeString& message) const {
    if (run_ == nullptr)
        return E_FAIL;
    try {
        message = run_->FactoryMessage();
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}
