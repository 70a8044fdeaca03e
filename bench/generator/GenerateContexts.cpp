// SPDX-License-Identifier: MIT
#include "bench/generator/GenerateContexts.h"

#include "bench/generator/ContextText.h"
#include "bench/generator/MixedContexts.h"
#include "bench/generator/Names.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace dyadctx::bench {

namespace {

constexpr std::uint64_t RowsPerContext = 8;
constexpr std::uint64_t SitesPerContext = 4;

using Writer = void (*)(const ContextFilePlan& plan, ContextText& text);

void OpenPath(ContextText& text, std::string_view name) {
    text.Open("Context")
        .Attribute("Name", name)
        .Attribute("Parameter", "/data/projects/common")
        .Attribute("ParameterType", "Path");
}

void WritePath(ContextText& text, std::string_view name) {
    OpenPath(text, name);
    text.EndEmpty();
}

void WriteLinked(ContextText& text, std::string_view name, std::string_view holder,
                 std::string_view target) {
    OpenPath(text, name);
    text.EndOpen();
    text.Open(holder).EndOpen();
    text.Open("Context").Attribute("Name", target).EndEmpty();
    text.Close(holder);
    text.Close("Context");
}

void WriteHub(const ContextFilePlan& plan, ContextText& text, std::uint64_t first,
              std::uint64_t last) {
    OpenPath(text, NameAt(plan.seed, 1));
    text.EndOpen();
    text.Open("CtxFriends").EndOpen();
    for (std::uint64_t i = first; i <= last; ++i)
        text.Open("Context").Attribute("Name", NameAt(plan.seed, i)).EndEmpty();
    text.Close("CtxFriends");
    text.Close("Context");
}

void WriteStar(const ContextFilePlan& plan, ContextText& text) {
    const std::uint64_t half = 1 + plan.count / 2;
    WriteHub(plan, text, half + 1, plan.count);
    for (std::uint64_t i = 2; i <= half; ++i)
        WriteLinked(text, NameAt(plan.seed, i), "CtxFriends", NameAt(plan.seed, 1));
    for (std::uint64_t i = half + 1; i <= plan.count; ++i)
        WritePath(text, NameAt(plan.seed, i));
}

void WriteFanIn(const ContextFilePlan& plan, ContextText& text) {
    WritePath(text, NameAt(plan.seed, 1));
    for (std::uint64_t i = 2; i <= plan.count; ++i)
        WriteLinked(text, NameAt(plan.seed, i), "CtxFriends", NameAt(plan.seed, 1));
}

void WriteFanOut(const ContextFilePlan& plan, ContextText& text) {
    WriteHub(plan, text, 2, plan.count);
    for (std::uint64_t i = 2; i <= plan.count; ++i)
        WritePath(text, NameAt(plan.seed, i));
}

void WriteCycles(const ContextFilePlan& plan, ContextText& text) {
    WriteHub(plan, text, 2, plan.count);
    for (std::uint64_t i = 2; i <= plan.count; ++i)
        WriteLinked(text, NameAt(plan.seed, i), "CtxFriends", NameAt(plan.seed, 1));
}

void WriteChain(const ContextFilePlan& plan, ContextText& text) {
    for (std::uint64_t i = 1; i < plan.count; ++i)
        WriteLinked(text, NameAt(plan.seed, i), "CtxFriends", NameAt(plan.seed, i + 1));
    WritePath(text, NameAt(plan.seed, plan.count));
}

void WriteAssociated(const ContextFilePlan& plan, ContextText& text) {
    WritePath(text, NameAt(plan.seed, 1));
    for (std::uint64_t i = 2; i <= plan.count; ++i)
        WriteLinked(text, NameAt(plan.seed, i), "CtxAssociated", NameAt(plan.seed, i - 1));
}

void WriteRow(ContextText& text, std::uint64_t row) {
    text.Open("ScenarioID")
        .Attribute("Ident", Numbered("EX", row))
        .Attribute("name", Numbered("Profile", row))
        .EndOpen();
    text.Open("Option").Attribute("name", "Format").Attribute("value", "exchange").EndEmpty();
    text.Close("ScenarioID");
}

void WriteRows(const ContextFilePlan& plan, ContextText& text, std::uint64_t perContext) {
    for (std::uint64_t row = 0; row < plan.count; row += perContext) {
        OpenPath(text, NameAt(plan.seed, 1 + row / perContext));
        text.EndOpen();
        text.Open("Scenario").EndOpen();
        const std::uint64_t end = std::min(plan.count, row + perContext);
        for (std::uint64_t i = row; i < end; ++i)
            WriteRow(text, i);
        text.Close("Scenario");
        text.Close("Context");
    }
}

void WriteScenarios(const ContextFilePlan& plan, ContextText& text) {
    WriteRows(plan, text, RowsPerContext);
}

void WriteProfiles(const ContextFilePlan& plan, ContextText& text) {
    WriteRows(plan, text, std::max<std::uint64_t>(plan.count, 1));
}

void WriteDatabase(ContextText& text, std::string_view name, std::string_view connector,
                   std::uint64_t server) {
    text.Open("Context")
        .Attribute("Name", name)
        .Attribute("Parameter", "Main")
        .Attribute("ParameterType", "Database")
        .Attribute("ConnectorName", connector)
        .Attribute("Role", "Main")
        .Attribute("ServerName", Numbered("server", server))
        .EndEmpty();
}

void WriteSiteGroups(const ContextFilePlan& plan, ContextText& text, std::uint64_t perContext) {
    for (std::uint64_t site = 0; site < plan.count; ++site)
        WriteDatabase(text, NameAt(plan.seed, 1 + site / perContext), "KRL", site);
}

void WriteSites(const ContextFilePlan& plan, ContextText& text) {
    WriteSiteGroups(plan, text, std::max<std::uint64_t>(plan.count, 1));
}

void WriteGroupedSites(const ContextFilePlan& plan, ContextText& text) {
    WriteSiteGroups(plan, text, SitesPerContext);
}

void WriteDatabases(const ContextFilePlan& plan, ContextText& text) {
    for (std::uint64_t i = 1; i <= plan.count; ++i)
        WriteDatabase(text, NameAt(plan.seed, i), ConnectorAt(plan.seed, i), i);
}

void WriteConnectors(const ContextFilePlan& plan, ContextText& text) {
    for (std::uint64_t i = 1; i <= plan.count; ++i)
        WriteDatabase(text, NameAt(plan.seed, i), Numbered("Connector", i), i);
}

void WriteNamesakes(const ContextFilePlan& plan, ContextText& text) {
    for (std::uint64_t i = 1; i <= plan.count; ++i)
        WritePath(text, "Namesake");
}

void WriteLateNamesake(const ContextFilePlan& plan, ContextText& text) {
    for (std::uint64_t i = 1; i <= plan.count; ++i)
        WritePath(text, NameAt(plan.seed, i == plan.count && i > 1 ? i - 1 : i));
}

void WriteUnknownFriends(const ContextFilePlan& plan, ContextText& text) {
    for (std::uint64_t i = 1; i <= plan.count; ++i)
        WriteLinked(text, NameAt(plan.seed, i), "CtxFriends", Numbered("Unknown", i));
}

void WriteMixed(const ContextFilePlan& plan, ContextText& text) {
    WriteMixedContexts(plan, text);
}

struct ShapeRow {
    Shape shape;
    std::string_view name;
    Writer write;
    bool valid = true;
    bool multisites = false;
};

constexpr std::array ShapeRows{
    ShapeRow{Shape::Mixed, "mixed", WriteMixed},
    ShapeRow{Shape::Star, "star", WriteStar},
    ShapeRow{Shape::FanIn, "fan-in", WriteFanIn},
    ShapeRow{Shape::FanOut, "fan-out", WriteFanOut},
    ShapeRow{Shape::Chain, "chain", WriteChain},
    ShapeRow{Shape::Associated, "associated", WriteAssociated},
    ShapeRow{Shape::Scenarios, "scenarios", WriteScenarios},
    ShapeRow{Shape::Profiles, "profiles", WriteProfiles},
    ShapeRow{Shape::Sites, "sites", WriteSites, true, true},
    ShapeRow{Shape::GroupedSites, "grouped-sites", WriteGroupedSites, true, true},
    ShapeRow{Shape::Databases, "databases", WriteDatabases},
    ShapeRow{Shape::Connectors, "connectors", WriteConnectors},
    ShapeRow{Shape::Namesakes, "namesakes", WriteNamesakes, false},
    ShapeRow{Shape::LateNamesake, "late-namesake", WriteLateNamesake, false},
    ShapeRow{Shape::UnknownFriends, "unknown-friends", WriteUnknownFriends, false},
    ShapeRow{Shape::Cycles, "cycles", WriteCycles, false},
};

constexpr auto ShapeList = [] {
    std::array<Shape, ShapeRows.size()> shapes{};
    for (std::size_t i = 0; i < shapes.size(); ++i)
        shapes[i] = ShapeRows[i].shape;
    return shapes;
}();

const ShapeRow& RowOf(Shape shape) noexcept {
    return *std::find_if(ShapeRows.begin(), ShapeRows.end(),
                         [shape](const ShapeRow& row) { return row.shape == shape; });
}

} // namespace

std::span<const Shape> AllShapes() noexcept {
    return ShapeList;
}

std::string_view NameOf(Shape shape) noexcept {
    return RowOf(shape).name;
}

std::optional<Shape> ShapeNamed(std::string_view name) noexcept {
    for (const ShapeRow& row : ShapeRows) {
        if (row.name == name)
            return row.shape;
    }
    return std::nullopt;
}

bool IsValid(Shape shape) noexcept {
    return RowOf(shape).valid;
}

bool NeedsMultisites(Shape shape) noexcept {
    return RowOf(shape).multisites;
}

void WriteContextFile(const ContextFilePlan& plan, std::ostream& out) {
    ContextText text(out);
    text.Open("DyAdDescription").EndOpen();
    text.Open("CtxData").EndOpen();
    text.Open("Context")
        .Attribute("Name", "DYADIC")
        .Attribute("Parameter", "")
        .Attribute("ParameterType", "Default")
        .EndEmpty();
    if (plan.count > 0)
        RowOf(plan.shape).write(plan, text);
    text.Close("CtxData");
    text.Close("DyAdDescription");
}

bool WriteContextFile(const ContextFilePlan& plan, const std::string& path) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    WriteContextFile(plan, file);
    file.close();
    return file.good();
}

} // namespace dyadctx::bench
