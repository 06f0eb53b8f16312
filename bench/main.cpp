// Measures the operations beside a peer and beside the limits of the machine, and prints one table.
//
// Takes the flags of Google Benchmark: --benchmark_filter=ImgLut measures one operation (and the limits, to compare
// with), --benchmark_out=FILE keeps every figure as JSON.
#include "report.h"

#include <iostream>
#include <string_view>

namespace bench {

namespace {

void measure(benchmark::State& state, const Operation& operation, Scene& scene, bool packedWorkers)
{
    ZSetMMX(packedWorkers);
    operation.body(scene);  // draws the images, and warms the caches for the small sizes
    if (const short code = ZGetError()) {
        state.SkipWithError(ZErrorText(code));
        ZClearError();
        return;
    }
    for ([[maybe_unused]] auto once : state) {
        scene.next();
        operation.body(scene);
        benchmark::ClobberMemory();
    }
    ZClearError();  // also the trail, which some operations lengthen on success
    const double pixels = scene.size().pixels() * double(state.iterations());
    state.SetItemsProcessed(std::int64_t(pixels));
    state.SetBytesProcessed(std::int64_t(pixels * (operation.bytesRead + operation.bytesWritten)));
}

void add(const Operation& operation, Scene& scene, const char* who)
{
    const std::string name = benchmarkName(operation.name, operation.type, scene.size(), who);
    benchmark::RegisterBenchmark(name.c_str(), [operation, &scene, packedWorkers = who != plain](auto& state) {
        measure(state, operation, scene, packedWorkers);
    });
}

void addWithPeer(const Operation& operation, Scene& scene)
{
    add(operation, scene, packed);
    add(operation, scene, plain);
    for (const Peer& equivalent : peers())
        if (std::string_view(equivalent.name) == operation.name &&
            std::string_view(equivalent.type) == operation.type) {
            Operation theirs = operation;
            theirs.body = equivalent.body;
            add(theirs, scene, peer);
        }
}

std::vector<Operation> allOperations()
{
    std::vector<Operation> all;
    for (const auto family : {analysisOperations(), contourOperations(), pointOperations(), arithmeticOperations(),
                              filterOperations(), geometryOperations(), morphoOperations(), temporalOperations()})
        all.insert(all.end(), family.begin(), family.end());
    return all;
}

// The given flags after the defaults, so that they win.
std::vector<char*> withDefaults(int count, char** arguments)
{
    static std::string defaults[] = {
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_repetitions=15",
        "--benchmark_min_time=0.03",
    };
    std::vector<char*> all{arguments[0]};
    for (std::string& flag : defaults)
        all.push_back(flag.data());
    all.insert(all.end(), arguments + 1, arguments + count);
    all.push_back(nullptr);
    return all;
}

// Whatever is measured, the limits are measured with it.
std::string filterWithLimits()
{
    const std::string filter = benchmark::GetBenchmarkFilter();
    if (filter.empty() || filter[0] == '-')
        return filter;
    return "(" + filter + ")|/limit$";
}

int run(int count, char** arguments)
{
    std::vector<char*> flags = withDefaults(count, arguments);
    int flagCount = int(flags.size()) - 1;
    benchmark::Initialize(&flagCount, flags.data());
    if (benchmark::ReportUnrecognizedArguments(flagCount, flags.data()))
        return 1;

    const std::vector<Operation> operations = allOperations();
    std::vector<Scene> scenes(std::begin(sizes), std::end(sizes));
    for (Scene& scene : scenes) {
        for (const Operation& operation : limits())
            add(operation, scene, limit);
        for (const Operation& operation : operations)
            addWithPeer(operation, scene);
    }
    Report report;
    benchmark::RunSpecifiedBenchmarks(&report, filterWithLimits());
    report.print(std::cout, operations);
    benchmark::Shutdown();
    return report.failed() ? 1 : 0;
}

}  // namespace

}  // namespace bench

int main(int count, char** arguments) { return bench::run(count, arguments); }
