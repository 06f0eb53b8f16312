// Inspections as a table for people, and as JSON and CSV for programs.
#pragma once

#include "inspect/inspect.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace zkit::tool {

/// Writes inspections one after another; a file's objects count from 1.
class InspectionWriter {
public:
    virtual ~InspectionWriter() = default;
    virtual void begin(std::ostream&) {}
    virtual void write(std::ostream& out, const std::string& name, const Inspection& inspection) = 0;
    virtual void writeFailure(std::ostream&, const std::string&, const std::string&) {}
    virtual void end(std::ostream&) {}
};

/// A block for each picture: a line about it, then a line for each object.
std::unique_ptr<InspectionWriter> tableWriter();

/// One array with an object for each picture, also for those that failed.
std::unique_ptr<InspectionWriter> jsonWriter();

/// A line of names, then a line for each object.
std::unique_ptr<InspectionWriter> csvWriter();

}  // namespace zkit::tool
