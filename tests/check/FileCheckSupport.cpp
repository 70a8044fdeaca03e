// SPDX-License-Identifier: MIT
#include "check/FileCheckSupport.h"

#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <optional>

namespace dyadctx::test {

namespace {

std::string Where(const VELPlace& place) {
    return std::to_string(place.line) + ":" + std::to_string(place.column);
}

std::vector<std::string> PlacesOfSome(const VELDyadCtxFileCheck& check,
                                      std::optional<VELDyadCtxSeverity> severity) {
    std::vector<std::string> places;
    for (int pos = 1; pos <= check.GetNbFindings(); ++pos) {
        const VELDyadCtxFinding& finding = check.GetFindingAt(pos);
        if (!severity || finding.severity == *severity)
            places.push_back(Where(finding.place) + " " + Text(finding.id));
    }
    return places;
}

const VELDyadCtxFinding* First(const VELDyadCtxFileCheck& check, std::string_view id) {
    for (int pos = 1; pos <= check.GetNbFindings(); ++pos) {
        if (check.GetFindingAt(pos).id.AsView() == id)
            return &check.GetFindingAt(pos);
    }
    return nullptr;
}

} // namespace

std::unique_ptr<VELDyadCtxFileCheck> CheckText(std::string_view document) {
    const TemporaryFolder folder;
    folder.Write("file.xml", std::string(document));
    auto check = std::make_unique<VELDyadCtxFileCheck>();
    check->Run(VELUnicodeString((folder.Path() / "file.xml").string().c_str()));
    return check;
}

std::unique_ptr<VELDyadCtxFileCheck> CheckLines(std::string_view contexts) {
    return CheckText("<DyAdDescription>\n<CtxData>\n" + std::string(contexts) +
                     "\n</CtxData>\n</DyAdDescription>\n");
}

std::vector<std::string> PlacesOf(const VELDyadCtxFileCheck& check) {
    return PlacesOfSome(check, std::nullopt);
}

std::vector<std::string> PlacesOf(const VELDyadCtxFileCheck& check, VELDyadCtxSeverity severity) {
    return PlacesOfSome(check, severity);
}

std::vector<std::string> RelatedOf(const VELDyadCtxFileCheck& check, std::string_view id) {
    std::vector<std::string> places;
    const VELDyadCtxFinding* finding = First(check, id);
    for (int pos = 1; finding != nullptr && pos <= finding->related.Size(); ++pos) {
        const VELDyadCtxRelatedPlace& related = finding->related[pos];
        places.push_back(Where(related.place) + " " + Text(related.text));
    }
    return places;
}

std::string TextOf(const VELDyadCtxFileCheck& check, std::string_view id) {
    const VELDyadCtxFinding* finding = First(check, id);
    return finding != nullptr ? Text(finding->text) : "";
}

} // namespace dyadctx::test
