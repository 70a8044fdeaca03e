// SPDX-License-Identifier: MIT
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/report/Report.h"

#include <algorithm>

namespace dyadctx::tool {

namespace {

Paint PaintOf(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return Paint::Bad;
    case Severity::Warning:
        return Paint::Changed;
    case Severity::Note:
        break;
    }
    return Paint::Heading;
}

std::string Painted(Severity severity, const Output& output) {
    return output.Painted(PaintOf(severity), NameOf(severity));
}

void WriteFinding(const std::string& file, const Finding& finding, Output& output) {
    output.Write(FindingLine(file, Painted(finding.severity, output), finding) + "\n");
    for (int i = 1; i <= finding.related.Size(); ++i) {
        const VELDyadCtxRelatedPlace& related = finding.related[i];
        output.Write(PlacePrefix(file, related.place) + Painted(Severity::Note, output) + ": " +
                     Visible(related.text.AsView()) + "\n");
    }
}

void WriteFindings(const CheckedFile& file, Severity failOn, Output& output) {
    const Source& source = file.source;
    // Whoever wants quiet wants to know all the same what the status is about.
    const bool withNotes = !output.IsQuiet() || failOn == Severity::Note;
    for (const Finding& finding : file.findings) {
        if (finding.severity != Severity::Note || withNotes)
            WriteFinding(source.file, finding, output);
    }
    if (FailedSilently(file))
        output.Write(PlacePrefix(source.file, {}) + Painted(Severity::Error, output) + ": " +
                     ReasonOfSilentFailure(source) + "\n");
}

// "2 errors, 1 warning", without what there is none of.
std::string CountedFindings(const std::vector<CheckedFile>& files) {
    std::string text;
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        std::ptrdiff_t count = 0;
        for (const CheckedFile& file : files)
            count += static_cast<std::ptrdiff_t>(CountOf(file, severity));
        if (count > 0)
            text += ", " + CountedWords(count, std::string("count.") + NameOf(severity));
    }
    return text;
}

void WriteSummary(const std::vector<CheckedFile>& files, Output& output) {
    std::ptrdiff_t invalid = 0;
    for (const CheckedFile& file : files) {
        const Source& source = file.source;
        invalid += source.collector ? 0 : 1;
        if (source.collector)
            output.Write(Visible(source.file) + ": " +
                         output.Painted(Paint::Good, Words("check.valid.one")) + ", " +
                         CountedWords(source.collector->GetAllNbCtxs(), "count.context") + "\n");
    }
    const std::ptrdiff_t count = std::ssize(files);
    output.Write(CountedWords(count, "check.files") + ", " +
                 (invalid > 0 ? CountedWords(invalid, "check.not-valid")
                              : CountedWords(count, "check.valid")) +
                 CountedFindings(files) + "\n");
}

} // namespace

std::size_t CountOf(const CheckedFile& file, Severity severity) {
    return static_cast<std::size_t>(
        std::count_if(file.findings.begin(), file.findings.end(), [severity](const Finding& one) {
            return one.severity == severity && one.cause == 0;
        }));
}

bool FailedSilently(const CheckedFile& file) {
    return file.source.collector == nullptr && CountOf(file, Severity::Error) == 0;
}

void WriteTextReport(const std::vector<CheckedFile>& files, Severity failOn, Output& output) {
    for (const CheckedFile& file : files)
        WriteFindings(file, failOn, output);
    if (output.IsQuiet())
        return;
    WriteSummary(files, output);
    std::ptrdiff_t vanishing = 0;
    for (const CheckedFile& file : files)
        vanishing += static_cast<std::ptrdiff_t>(file.vanishing);
    if (vanishing > 0)
        output.Write(CountedWords(vanishing, "check.vanishing") + "\n");
}

} // namespace dyadctx::tool
