// SPDX-License-Identifier: MIT
// Times operations on one context file, in turn within each repetition, and prints the peak memory
// of the process. With one operation the memory is what that operation needs.
//
//   measure OPERATION[,OPERATION]... FILE [REPETITIONS [TARGET]]
//   measure --list
//
// Writes a line for each operation: name, repetitions, shortest and median time in seconds, how
// many things the operation did. A last line gives the peak memory and the length of the file in
// bytes.
#include "bench/OperationTable.h"
#include "bench/ProcessServices.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace {

using namespace dyadctx::bench;
using Clock = std::chrono::steady_clock;

constexpr int MaxRepetitions = 1000;

struct Measured {
    const OperationEntry* entry;
    std::unique_ptr<Operation> operation;
    std::vector<double> processor;
    std::vector<double> wall;
    std::size_t count = 0;
};

int Usage() {
    std::fputs("usage: measure OPERATION[,OPERATION]... FILE [REPETITIONS [TARGET]]\n"
               "       measure --list\n",
               stderr);
    return 2;
}

int List() {
    for (const OperationEntry& entry : AllOperations())
        std::printf("%-20s %s\n", entry.name, entry.meaning);
    return 0;
}

// Empty when one of the names is unknown.
std::vector<Measured> OperationsIn(std::string_view names) {
    std::vector<Measured> operations;
    while (!names.empty()) {
        const std::size_t end = std::min(names.find(','), names.size());
        const OperationEntry* entry = OperationNamed(names.substr(0, end));
        if (!entry) {
            std::fprintf(stderr, "measure: unknown operation %s\n",
                         std::string(names.substr(0, end)).c_str());
            return {};
        }
        operations.push_back({entry, nullptr, {}, {}, 0});
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return operations;
}

std::optional<int> RepetitionsIn(std::string_view text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number < 1 || number > MaxRepetitions)
        return std::nullopt;
    return number;
}

// The operations have one thread, so the processor time of the process is theirs.
double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void RunOnce(Measured& measured) {
    measured.operation->Prepare();
    const auto start = Clock::now();
    const double processorStart = ProcessorSeconds();
    measured.count = measured.operation->Run();
    measured.processor.push_back(ProcessorSeconds() - processorStart);
    const std::chrono::duration<double> elapsed = Clock::now() - start;
    measured.wall.push_back(elapsed.count());
    measured.operation->Finish();
}

double MedianOfSorted(const std::vector<double>& seconds) {
    const std::size_t middle = seconds.size() / 2;
    return seconds.size() % 2 ? seconds[middle] : (seconds[middle - 1] + seconds[middle]) / 2;
}

void Print(Measured& measured) {
    std::printf("%-20s %4zu", measured.entry->name, measured.wall.size());
    for (std::vector<double>* seconds : {&measured.processor, &measured.wall}) {
        std::sort(seconds->begin(), seconds->end());
        std::printf(" %.9f %.9f", seconds->front(), MedianOfSorted(*seconds));
    }
    std::printf(" %zu\n", measured.count);
}

int Measure(std::vector<Measured>& operations, const Workplace& place, int repetitions) {
    for (Measured& measured : operations)
        measured.operation = measured.entry->make(place);
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        for (Measured& measured : operations)
            RunOnce(measured);
    }
    for (Measured& measured : operations)
        Print(measured);
    std::printf("%-20s %llu %llu\n", "peak-memory", static_cast<unsigned long long>(PeakMemory()),
                static_cast<unsigned long long>(std::filesystem::file_size(place.file)));
    return 0;
}

int Main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--list")
        return List();
    if (argc < 3 || argc > 5)
        return Usage();
    std::vector<Measured> operations = OperationsIn(argv[1]);
    const auto repetitions = RepetitionsIn(argc > 3 ? argv[3] : "1");
    if (operations.empty() || !repetitions)
        return Usage();
    const Workplace place{std::filesystem::absolute(argv[2]).string(), argc > 4 ? argv[4] : ""};
    return Measure(operations, place, *repetitions);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Main(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "measure: %s\n", error.what());
        return 1;
    }
}
