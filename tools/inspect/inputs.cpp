#include "inspect/inputs.h"

#include "picture/picture.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace zkit::tool {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> picturesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (hasPictureEnding(entry->path()) && !entry->is_directory(ignored))
            names.push_back(entry->path().string());
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace

std::vector<Input> listInputs(const std::vector<std::string>& names, bool scene)
{
    std::vector<Input> inputs;
    if (scene)
        inputs.push_back({"scene", {}, true});
    for (const std::string& name : names) {
        std::error_code ignored;
        const std::vector<std::string> files =
            fs::is_directory(name, ignored) ? picturesIn(name) : std::vector<std::string>();
        for (const std::string& file : files)
            inputs.push_back({file, {}, false});
        if (files.empty())
            inputs.push_back({name, {}, false});
    }
    // Pictures of equal names, from several folders or of several formats, are told apart by numbers.
    std::set<std::string> taken;
    for (Input& input : inputs) {
        const std::string stem = fs::path(input.name).stem().string();
        input.drawing = stem;
        for (int number = 2; !taken.insert(input.drawing).second; ++number)
            input.drawing = stem + "-" + std::to_string(number);
    }
    return inputs;
}

}  // namespace zkit::tool
