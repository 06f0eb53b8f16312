#include "report.h"

#include <array>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace bench {

namespace {

using Figure = std::optional<double>;

// Not known when one of the two is not, or there is nothing to compare with.
Figure ratio(Figure numerator, Figure denominator)
{
    if (!numerator || !denominator || *denominator == 0)
        return {};
    return *numerator / *denominator;
}

std::string text(Figure figure, int decimals)
{
    if (!figure)
        return "-";
    std::ostringstream out;
    out << std::fixed << std::setprecision(decimals) << *figure;
    return out.str();
}

constexpr std::size_t columns = 8;

void printLine(std::ostream& out, const std::string& name, const std::string& type, const std::string& size,
               const std::array<std::string, columns>& figures)
{
    out << std::left << std::setw(20) << name << std::setw(28) << type << std::setw(4) << size << std::right;
    for (const std::string& figure : figures)
        out << std::setw(10) << figure;
    out << '\n';
}

}  // namespace

std::string benchmarkName(const char* operation, const char* type, const Size& size, const char* who)
{
    return std::string(operation) + '/' + type + '/' + size.name + '/' + who;
}

bool Report::ReportContext(const Context& context)
{
    PrintBasicContext(&std::cerr, context);
    return true;
}

void Report::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        const std::string& name = run.run_name.function_name;
        if (run.error_occurred) {
            failed_ = true;
            std::cerr << name << ": " << run.error_message << '\n';
        } else if (run.aggregate_name == "median")
            nanoseconds_[name] = run.GetAdjustedCPUTime();
        else if (run.run_type == Run::RT_Iteration)
            nanoseconds_.try_emplace(name, run.GetAdjustedCPUTime());
    }
}

std::optional<double> Report::perPixel(const char* operation, const char* type, const Size& size, const char* who) const
{
    const auto found = nanoseconds_.find(benchmarkName(operation, type, size, who));
    if (found == nanoseconds_.end())
        return {};
    return found->second / size.pixels();
}

void Report::printOperation(std::ostream& out, const Operation& operation, const Size& size) const
{
    const Figure ours = perPixel(operation.name, operation.type, size, packed);
    const Figure plainly = perPixel(operation.name, operation.type, size, plain);
    const Figure theirs = perPixel(operation.name, operation.type, size, peer);
    if (!ours && !plainly && !theirs)
        return;
    const Figure copied = perPixel("memcpy", "BW8", size, limit);
    Figure read = perPixel("read", "BW8", size, limit);
    if (read)
        *read *= operation.bytesRead;
    printLine(out, operation.name, operation.type, size.name,
              {text(ours, 3), text(plainly, 3), text(ratio(plainly, ours), 1), text(ratio(ours, copied), 2),
               text(ratio(ours, read), 2), text(theirs, 3), text(ratio(theirs, copied), 2),
               text(ratio(ours, theirs), 2)});
}

void Report::print(std::ostream& out, std::span<const Operation> operations) const
{
    if (nanoseconds_.empty())
        return;
    out << "Medians in nanoseconds a pixel. x memcpy: over a copy of one byte a pixel; x read: over a pass that only\n"
           "reads as many bytes.\n\n";
    for (const Operation& operation : limits())
        for (const Size& size : sizes)
            if (const Figure figure = perPixel(operation.name, operation.type, size, limit))
                out << std::left << std::setw(11) << operation.name << std::setw(4) << size.name << text(figure, 3)
                    << '\n';
    out << '\n';
    printLine(out, "operation", "type", "size",
              {packed, plain, "speed-up", "x memcpy", "x read", peer, "x memcpy", "ours/peer"});
    for (const Operation& operation : operations)
        for (const Size& size : sizes)
            printOperation(out, operation, size);
}

}  // namespace bench
