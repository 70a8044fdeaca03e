// SPDX-License-Identifier: MIT
#include "xml/detail/VELDyadCtxXml.h"

#include "trace/detail/TraceLine.h"
#include "xml/detail/ContextFileFormat.h"

#include <array>
#include <string_view>

namespace {

// What distinguishes the sites of a connector's databases; the second detail may be absent.
struct SiteRule {
    std::string_view connector;
    const char* detail;
    const char* secondDetail;
};

using namespace dyadctx;

constexpr std::array SiteRules{
    SiteRule{"KRL", format::ServerNameDetail, format::RoleDetail},
    SiteRule{"BRUNXML", format::SiteIdDetail, nullptr},
    SiteRule{"QZ1", format::ServerNameDetail, format::RoleDetail},
    SiteRule{"TN5", format::ServerNameDetail, format::RoleDetail},
    SiteRule{"TNR1", format::ServerNameDetail, format::RoleDetail},
    SiteRule{"HWB", format::ServerNameDetail, nullptr},
    SiteRule{"JOC", format::ServerNameDetail, nullptr},
    SiteRule{"Gyre", format::ServerNameDetail, nullptr},
};

// Empty for a missing name or value.
VELUnicodeString DetailValue(const char* name, const VELListValVELUnicodeString& names,
                             const VELListValVELUnicodeString& values) {
    return values[names.Locate(VELUnicodeString(name))];
}

} // namespace

VELUnicodeString VELDyadCtxXml::GetServerdetailsForHashTable(
    VELUnicodeString& key, const VELUnicodeString& connector,
    const VELListValVELUnicodeString& names, const VELListValVELUnicodeString& values) {
    TRACE_LOG("VELDyadCtxXml:GetServerdetailsForHashTable");
    VELUnicodeString site;
    for (const SiteRule& rule : SiteRules) {
        if (connector.AsView() != rule.connector)
            continue;
        site = DetailValue(rule.detail, names, values);
        if (rule.secondDetail != nullptr)
            site.Append(":").Append(DetailValue(rule.secondDetail, names, values));
        break;
    }
    key = site;
    return site;
}
