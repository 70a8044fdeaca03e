// SPDX-License-Identifier: MIT
// The findings about one file while they are collected.
#pragma once

#include "check/VELDyadCtxFileCheck.h"
#include "check/detail/SourcePlaces.h"
#include "check/detail/SourceReader.h"
#include "context/VELDyadContext.h"
#include "platform/VELListVal.h"
#include "platform/VELUnicodeString.h"

#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx {

class FindingList {
public:
    struct Related {
        Spot spot;
        VELUnicodeString text;
    };
    struct Entry {
        VELDyadCtxFinding finding;
        Spot spot;
        std::vector<Related> related;
    };

    FindingList() = default;
    FindingList(const FindingList&) = delete;
    FindingList& operator=(const FindingList&) = delete;

    // Adds a finding with its severity and text. The reference is valid until the next Add.
    Entry& Add(const char* id, std::span<const VELUnicodeString> parameters, const Spot& spot);
    Entry& AddAbout(const VELUnicodeString& context, const char* id,
                    std::span<const VELUnicodeString> parameters, const Spot& spot);

    // The last parameter is a suggestion, added to the text unless it is empty.
    Entry& AddWithSuggestion(const char* id, std::span<const VELUnicodeString> parameters,
                             const Spot& spot);
    // A copy of the text that lives as long as the list; for the attribute of a spot.
    const char* Keep(std::string_view text) { return kept_.emplace(text).first->c_str(); }

    bool HasErrors() const noexcept { return hasErrors_; }

    bool IsEmpty() const noexcept { return entries_.empty(); }
    // The findings in file order, each once, consequences after their faults, silenced ones left
    // out. Empties the list.
    VELListVal<VELDyadCtxFinding> Finish(SourceReader& text,
                                         const VELListValVELUnicodeString& silenced);

private:
    void SetPlaces(SourceReader& text);
    void DropRepeated();

    std::vector<Entry> entries_;
    std::set<std::string, std::less<>> kept_;
    bool hasErrors_ = false;
};

} // namespace dyadctx
