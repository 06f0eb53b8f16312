#include "inspect/request.h"

#include <charconv>
#include <string_view>

namespace zkit::tool {
namespace {

// Takes a number off the front of a text.
template <class Number>
bool take(std::string_view& text, Number& number)
{
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return error == std::errc();
}

bool takeWord(std::string_view& text, std::string_view beginning)
{
    if (!text.starts_with(beginning))
        return false;
    text.remove_prefix(beginning.size());
    return true;
}

bool takeCells(std::string_view text, ThresholdChoice& choice)
{
    if (!take(text, choice.cellWidth) || choice.cellWidth < 1)
        return false;
    if (!takeWord(text, "x"))
        choice.cellHeight = choice.cellWidth;
    else if (!take(text, choice.cellHeight) || choice.cellHeight < 1)
        return false;
    return text.empty();
}

bool takeRelative(std::string_view text, ThresholdChoice& choice)
{
    choice.level = static_cast<unsigned>(IMG_THRESHOLD_RELATIVE);
    return take(text, choice.relative) && choice.relative >= 0 && choice.relative <= 1 && text.empty();
}

struct Mode {
    std::string_view name;
    IMG_THRESHOLD_MODES mode;
};

constexpr Mode modes[] = {{"isodata", IMG_THRESHOLD_ISODATA},
                          {"entropy", IMG_THRESHOLD_MAX_ENTROPY},
                          {"residue", IMG_THRESHOLD_MIN_RESIDUE}};

}  // namespace

std::optional<ThresholdChoice> parseThreshold(const std::string& text)
{
    ThresholdChoice choice;
    for (const Mode& known : modes)
        if (text == known.name) {
            choice.level = static_cast<unsigned>(known.mode);
            return choice;
        }
    std::string_view rest = text;
    const bool valid = takeWord(rest, "relative:")   ? takeRelative(rest, choice)
                       : takeWord(rest, "adaptive:") ? takeCells(rest, choice)
                                                     : take(rest, choice.level) && choice.level <= 255 && rest.empty();
    return valid ? std::optional(choice) : std::nullopt;
}

}  // namespace zkit::tool
