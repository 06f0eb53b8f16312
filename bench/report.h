// Collects the medians of all benchmarks and prints them as one table.
#pragma once

#include "operation.h"

#include <benchmark/benchmark.h>

#include <iosfwd>
#include <map>
#include <optional>
#include <string>

namespace bench {

/// The name operation/type/size/who.
std::string benchmarkName(const char* operation, const char* type, const Size& size, const char* who);

// Who did it.
inline constexpr const char* packed = "zkit";  ///< the packed workers
inline constexpr const char* plain = "plain";  ///< the plain workers
inline constexpr const char* peer = "opencv";
inline constexpr const char* limit = "limit";

class Report : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Whether an operation raised an error.
    bool failed() const { return failed_; }

    /// Prints the limits, then a line for every operation and size that were measured.
    void print(std::ostream& out, std::span<const Operation> operations) const;

private:
    void printOperation(std::ostream& out, const Operation& operation, const Size& size) const;
    std::optional<double> perPixel(const char* operation, const char* type, const Size& size, const char* who) const;

    std::map<std::string, double> nanoseconds_;  // of one call, by name
    bool failed_ = false;
};

}  // namespace bench
