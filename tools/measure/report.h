// Measurements as text for people and as JSON for programs.
#pragma once

#include "measure/measure.h"

#include <nlohmann/json_fwd.hpp>

#include <iosfwd>
#include <string>

namespace zkit::tool {

/// One block of aligned lines with units.
void writeText(std::ostream& out, const std::string& name, const Measurement& measurement);

/// One object. Numbers that are not finite become null when it is written.
nlohmann::ordered_json toJson(const std::string& name, const Measurement& measurement);

}  // namespace zkit::tool
