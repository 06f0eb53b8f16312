// Inspecting many pictures.
#pragma once

#include "inspect/inputs.h"
#include "inspect/report.h"
#include "inspect/request.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zkit::tool {

struct BatchRequest {
    InspectRequest inspect = {};
    std::filesystem::path overlays = {}, plots = {};  // folders to draw into, none where empty
    std::vector<std::string> endings = {".png"};      // of the drawings
    std::size_t jobs = 1;
};

/// Inspects pictures on several threads and writes the results in the order of the inputs, the failures to standard
/// error. Bounded memory, however many pictures there are. Returns the exit status: 1 when a picture failed or the
/// results could not be written. When the process is told to stop, it ends by that signal once what is in hand is
/// finished and written.
int inspectAll(const std::vector<Input>& inputs, const BatchRequest& request, InspectionWriter& writer);

}  // namespace zkit::tool
