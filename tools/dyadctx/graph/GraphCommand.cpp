// SPDX-License-Identifier: MIT
// `graph`: friends and associated contexts as a picture.
#include "check/VELDyadCtxFileCheck.h"
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/Target.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/graph/DotWriter.h"
#include "tools/dyadctx/graph/GraphFaults.h"
#include "tools/dyadctx/graph/GraphModel.h"
#include "tools/dyadctx/graph/Graphviz.h"
#include "tools/dyadctx/graph/MermaidWriter.h"
#include "tools/dyadctx/graph/SvgWriter.h"

#include <algorithm>
#include <array>

namespace dyadctx::tool {

namespace {

class GraphCommand final : public Command {
public:
    const char* Name() const override { return "graph"; }
    const char* Summary() const override { return "Draw which contexts name which"; }
    const char* Synopsis() const override {
        return "[FILE] [-o OUT] [--format svg|dot|mermaid] [--focus NAME [--depth N]] "
               "[--renderer own|dot] [--type all|path|database|file] [--provider PROVIDER]...";
    }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::string FormatToWrite() const;
    Graph GraphToDraw(VELDyadCtxCollector& collector, const VELDyadCtxFileCheck* check,
                      Output& output) const;
    void Draw(Graph graph, const std::string& file, Output& output) const;
    ExitStatus DrawFaulty(const Source& source, Output& output) const;
    void FocusOn(Graph& graph, const std::string& file) const;
    std::string Drawn(const Graph& graph, const std::string& title, Output& output) const;

    std::optional<std::string> file_;
    std::optional<std::string> target_;
    std::optional<std::string> format_;
    std::optional<std::string> focus_;
    int depth_ = 1;
    std::string renderer_ = "own";
    ViewChoice view_;
};

std::string NameAlone(const std::string& file) {
    return file.substr(file.find_last_of("/\\") + 1);
}

struct FileEnding {
    const char* ending;
    const char* format;
};

constexpr std::array<FileEnding, 5> FileEndings{{{".svg", "svg"},
                                                 {".dot", "dot"},
                                                 {".gv", "dot"},
                                                 {".mmd", "mermaid"},
                                                 {".mermaid", "mermaid"}}};

// With its dot, in small letters; empty for a name without ending, such as ".hidden".
std::string EndingOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0)
        return "";
    return InSmallLetters(name.substr(dot));
}

std::vector<Example> GraphCommand::Examples() const {
    return {{"dyadctx graph site.xml --db-context -o site.svg",
             "The whole file as a picture for a browser"},
            {"dyadctx graph site.xml --focus Design --depth 2 --format mermaid",
             "What is at most two links away from Design, for Markdown"}};
}

void GraphCommand::Declare(Arguments& arguments) {
    DeclareFile(arguments, file_,
                ". A file with errors is drawn as far as it can be read, with its errors marked; "
                "the exit status is then 4");
    arguments.Add("-o,--output", target_, "The file to write; - or nothing: standard output")
        .Takes("OUT");
    arguments
        .Add("--format", format_,
             "The language of the picture: svg is complete in itself, dot is for Graphviz, mermaid "
             "for Markdown. Default: by the ending of OUT (.svg, .dot, .gv, .mmd, .mermaid); svg "
             "without one")
        .OneOf({"svg", "dot", "mermaid"});
    Arguments::Option focus =
        arguments.Add("--focus", focus_, "Only the context NAME and those around it");
    focus.Takes("NAME");
    arguments
        .Add("--depth", depth_,
             "With --focus: how many links away from NAME, in both directions; 0 to 1000000")
        .Between(0, 1000000)
        .Takes("N")
        .Needs(focus)
        .ShowPreset();
    arguments
        .Add("--renderer", renderer_,
             "What draws the svg: own, the tool itself; dot, Graphviz where it is installed")
        .OneOf({"own", "dot"})
        .ShowPreset();
    DeclareView(arguments, view_);
}

std::string GraphCommand::FormatToWrite() const {
    if (format_)
        return *format_;
    const std::string ending = EndingOf(NameAlone(target_.value_or("")));
    if (ending.empty())
        return "svg";
    for (const FileEnding& known : FileEndings) {
        if (ending == known.ending)
            return known.format;
    }
    throw Failure(ExitStatus::Usage, Words("graph.ending", {Visible(ending), Visible(*target_)}));
}

// The part of the view, cut out of the whole: what a context is called and whether it is on a cycle
// does not depend on what else is shown.
Graph GraphCommand::GraphToDraw(VELDyadCtxCollector& collector, const VELDyadCtxFileCheck* check,
                                Output& output) const {
    const std::vector<VELDyadContext*> declared = ContextsOfView(collector);
    Graph whole = GraphOf(declared);
    if (check != nullptr)
        MarkFaults(whole, declared, *check);
    SelectView(collector, view_, output);
    return PartOf(whole, NodesFor(whole, declared, ContextsOfView(collector)));
}

void GraphCommand::FocusOn(Graph& graph, const std::string& file) const {
    const std::vector<bool> near = Neighbourhood(graph, *focus_, depth_);
    if (std::find(near.begin(), near.end(), true) == near.end()) {
        std::vector<std::string> names;
        for (const GraphNode& node : graph.nodes)
            names.push_back(node.name);
        throw NoSuchContext(*focus_, file, names);
    }
    graph = PartOf(graph, near);
    MarkFocus(graph, *focus_);
}

std::string GraphCommand::Drawn(const Graph& graph, const std::string& title,
                                Output& output) const {
    const std::string format = FormatToWrite();
    if (format == "mermaid") {
        if (MermaidLinkCount(graph) > MermaidLinkLimit)
            output.Note(Words("graph.too-many-links", {std::to_string(MermaidLinkLimit)}));
        return WriteMermaid(graph, title);
    }
    if (format == "dot")
        return WriteDot(graph, title);
    if (renderer_ == "own")
        return WriteSvg(graph, title);
    const GraphvizAnswer answer = DrawWithGraphviz(WriteDot(graph, title));
    if (!answer.fault.empty())
        throw Failure(ExitStatus::NotWritten, answer.fault);
    return answer.svg;
}

ExitStatus GraphCommand::Run(Output& output) {
    if (renderer_ == "dot" && FormatToWrite() != "svg")
        throw Failure(ExitStatus::Usage, Words("graph.renderer", {FormatToWrite()}));
    const Source source = LoadSource(file_);
    if (!source.collector)
        return DrawFaulty(source, output);
    Draw(GraphToDraw(*source.collector, nullptr, output), source.file, output);
    return ExitStatus::Done;
}

void GraphCommand::Draw(Graph graph, const std::string& file, Output& output) const {
    if (focus_)
        FocusOn(graph, file);
    const std::string picture = Drawn(graph, NameAlone(file), output);
    const std::string target = target_.value_or("-");
    WriteTarget(target, picture, output);
    if (!IsStandardOutput(target))
        output.Note(Words("graph.done", {Visible(target)}));
}

// A picture may show best what is wrong, so a file with errors is drawn as far as it can be read.
ExitStatus GraphCommand::DrawFaulty(const Source& source, Output& output) const {
    VELDyadCtxFileCheck check;
    if (source.status != ExitStatus::NotLoadable)
        FailWith(source, output);
    RunCheck(check, source);
    if (FoundSyntaxError(check))
        FailWith(source, output);
    for (const Finding& error : ErrorsOf(check))
        output.Remark(FindingLine(source.file, "error", error));
    Draw(GraphToDraw(*check.GetCollector(), &check, output), source.file, output);
    output.Error(Words("graph.partial", {Visible(source.file)}));
    return ExitStatus::NotLoadable;
}

} // namespace

std::unique_ptr<Command> MakeGraph() {
    return std::make_unique<GraphCommand>();
}

} // namespace dyadctx::tool
