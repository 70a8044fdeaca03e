// SPDX-License-Identifier: MIT
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/report/Report.h"

#include <string_view>

namespace dyadctx::tool {

namespace {

// A command ends with its line, and "%" begins an escape; in a property "," and ":" mean something.
std::string Escaped(std::string_view text, bool isProperty) {
    const std::string_view special = isProperty ? "%\r\n:," : "%\r\n";
    std::string escaped;
    for (const char letter : text) {
        const bool isSpecial = special.find(letter) != std::string_view::npos;
        escaped += isSpecial ? PercentEscape(letter) : std::string(1, letter);
    }
    return escaped;
}

const char* CommandOf(Severity severity) {
    return severity == Severity::Note ? "notice" : NameOf(severity);
}

std::string TextOf(const Finding& finding) {
    std::string text = Visible(MarkedText(finding));
    for (int i = 1; i <= finding.related.Size(); ++i) {
        const VELDyadCtxRelatedPlace& related = finding.related[i];
        const std::string line =
            related.place.line > 0 ? "line " + std::to_string(related.place.line) + ": " : "";
        text += "\n" + line + Visible(related.text.AsView());
    }
    return text;
}

std::string CommandFor(const std::string& file, const Finding& finding) {
    std::string properties;
    if (!file.empty())
        properties += ",file=" + Escaped(Visible(file), true);
    if (!file.empty() && finding.place.line > 0)
        properties += ",line=" + std::to_string(finding.place.line) +
                      ",col=" + std::to_string(finding.place.column);
    properties += ",title=" + Escaped(finding.id.AsView(), true);
    return std::string("::") + CommandOf(finding.severity) + " " + properties.substr(1) +
           "::" + Escaped(TextOf(finding), false) + "\n";
}

} // namespace

std::string PercentEscape(char letter) {
    constexpr std::string_view Hexadecimal = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(letter);
    return {'%', Hexadecimal[code / 16U], Hexadecimal[code % 16U]};
}

std::string GithubReport(const std::vector<CheckedFile>& files) {
    std::string report;
    for (const CheckedFile& file : files) {
        for (const Finding& finding : file.findings)
            report += CommandFor(file.source.file, finding);
        if (FailedSilently(file))
            report += "::error::" +
                      Escaped(Visible(file.source.file) + ": " + ReasonOfSilentFailure(file.source),
                              false) +
                      "\n";
    }
    return report;
}

} // namespace dyadctx::tool
