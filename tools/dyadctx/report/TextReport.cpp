#include "tools/dyadctx/DisplayText.h"
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
    if (source.collector == nullptr && CountOf(file, Severity::Error) == 0)
        output.Write(PlacePrefix(source.file, {}) + Painted(Severity::Error, output) + ": " +
                     ReasonOfSilentFailure(source) + "\n");
}

std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// "2 errors, 1 warning", without what there is none of.
std::string CountedFindings(const std::vector<CheckedFile>& files) {
    std::string text;
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        std::size_t count = 0;
        for (const CheckedFile& file : files)
            count += CountOf(file, severity);
        if (count > 0)
            text += ", " + Counted(count, NameOf(severity));
    }
    return text;
}

void WriteSummary(const std::vector<CheckedFile>& files, Output& output) {
    std::size_t invalid = 0;
    for (const CheckedFile& file : files) {
        const Source& source = file.source;
        invalid += source.collector ? 0U : 1U;
        if (source.collector)
            output.Write(
                Visible(source.file) + ": " + output.Painted(Paint::Good, "valid") + ", " +
                Counted(static_cast<std::size_t>(source.collector->GetAllNbCtxs()), "context") +
                "\n");
    }
    output.Write(Counted(files.size(), "file") + " checked, " +
                 (invalid > 0 ? std::to_string(invalid) + " not valid" : "valid") +
                 CountedFindings(files) + "\n");
}

} // namespace

std::size_t CountOf(const CheckedFile& file, Severity severity) {
    return static_cast<std::size_t>(
        std::count_if(file.findings.begin(), file.findings.end(), [severity](const Finding& one) {
            return one.severity == severity && one.cause == 0;
        }));
}

void WriteTextReport(const std::vector<CheckedFile>& files, Severity failOn, Output& output) {
    for (const CheckedFile& file : files)
        WriteFindings(file, failOn, output);
    if (output.IsQuiet())
        return;
    WriteSummary(files, output);
    std::size_t vanishing = 0;
    for (const CheckedFile& file : files)
        vanishing += file.vanishing;
    if (vanishing > 0)
        output.Write(std::to_string(vanishing) + " of these vanish with --db-context\n");
}

} // namespace dyadctx::tool
