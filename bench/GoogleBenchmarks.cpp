// SPDX-License-Identifier: MIT
// Every operation as a Google Benchmark, named OPERATION/SHAPE/COUNT, for work on one of them:
//   benchmarks --benchmark_filter='^check/'
// Each file is generated when it is first needed and goes at the end.
#include "bench/OperationTable.h"
#include "bench/ProcessServices.h"
#include "bench/generator/GenerateContexts.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <exception>
#include <filesystem>
#include <map>
#include <random>
#include <span>
#include <stdexcept>

namespace {

using namespace dyadctx::bench;
using Clock = std::chrono::steady_clock;

// Preparing is not timed and may cost more than running, so the number of runs is fixed.
constexpr int Runs = 5;
constexpr std::uint64_t ShapeCount = 100'000;

class Files {
public:
    Files() : folder_(std::filesystem::temp_directory_path() / Name()) {
        std::filesystem::create_directory(folder_);
    }
    ~Files() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    Workplace PlaceFor(Shape shape, std::uint64_t count) {
        const std::string name = std::string(NameOf(shape)) + "-" + std::to_string(count);
        const std::string path = (folder_ / (name + ".xml")).string();
        if (!std::filesystem::exists(path) && !WriteContextFile({shape, count}, path))
            throw std::runtime_error("cannot write " + path);
        return {path, (folder_ / "target.xml").string()};
    }

private:
    static std::string Name() {
        return "dyadctx-benchmarks-" + std::to_string(std::random_device{}());
    }
    std::filesystem::path folder_;
};

struct Case {
    const OperationEntry* entry;
    Shape shape;
    std::uint64_t count;
};

void Repeat(benchmark::State& state, Operation& operation) {
    std::size_t done = 0;
    for (auto _ : state) {
        operation.Prepare();
        const auto start = Clock::now();
        done += operation.Run();
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        operation.Finish();
        state.SetIterationTime(elapsed.count());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(done));
}

void RunCase(benchmark::State& state, const Case& what, Files& files) {
    if (NeedsMultisites(what.shape) && !IsVariableSet("TE_MULTISITE_DBCONTEXT"))
        return state.SkipWithError("set TE_MULTISITE_DBCONTEXT for this shape");
    try {
        Repeat(state, *what.entry->make(files.PlaceFor(what.shape, what.count)));
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

void Register(const Case& what, Files& files) {
    const std::string name = std::string(what.entry->name) + "/" + std::string(NameOf(what.shape)) +
                             "/" + std::to_string(what.count);
    benchmark::RegisterBenchmark(
        name.c_str(), [what, &files](benchmark::State& state) { RunCase(state, what, files); })
        ->UseManualTime()
        ->Iterations(Runs)
        ->Unit(benchmark::kMillisecond);
}

// Which shapes show more of an operation than mixed contexts do.
std::span<const Shape> ShapesFor(std::string_view operation) {
    static constexpr Shape Created[] = {Shape::Star,      Shape::FanIn,      Shape::FanOut,
                                        Shape::Chain,     Shape::Associated, Shape::Scenarios,
                                        Shape::Profiles,  Shape::Sites,      Shape::GroupedSites,
                                        Shape::Databases, Shape::Connectors};
    static constexpr Shape Refused[] = {Shape::Namesakes, Shape::LateNamesake,
                                        Shape::UnknownFriends, Shape::Cycles};
    static constexpr Shape Rows[] = {Shape::Scenarios, Shape::Profiles};
    static constexpr Shape Providers[] = {Shape::Databases, Shape::Connectors};
    static const std::map<std::string_view, std::span<const Shape>> shapes{
        {"create", Created},       {"read", Created},    {"link", Created},   {"check", Created},
        {"stream", Created},       {"destroy", Created}, {"delete", Created}, {"refuse", Refused},
        {"channels", Rows},        {"profiles", Rows},   {"options", Rows},   {"narrow", Providers},
        {"by-provider", Providers}};
    const auto found = shapes.find(operation);
    return found == shapes.end() ? std::span<const Shape>{} : found->second;
}

void RegisterAll(Files& files) {
    for (const OperationEntry& entry : AllOperations()) {
        if (std::string_view(entry.name) != "refuse") {
            for (const std::uint64_t count : {10'000U, 100'000U, 1'000'000U})
                Register({&entry, Shape::Mixed, count}, files);
        }
        for (const Shape shape : ShapesFor(entry.name))
            Register({&entry, shape, ShapeCount}, files);
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Files files;
    RegisterAll(files);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
