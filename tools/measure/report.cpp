#include "measure/report.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace zkit::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int labelWidth = 18, significantDigits = 9;

std::string text(double value)
{
    if (!std::isfinite(value))
        return "none";
    std::ostringstream stream;
    stream << std::setprecision(significantDigits) << value;
    return stream.str();
}

void line(std::ostream& out, const char* label, const std::string& value)
{
    out << "  " << std::left << std::setw(labelWidth) << label << value << '\n';
}

std::string sizeText(int width, int height)
{
    return std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

std::string momentsText(const Moments& moments)
{
    return "m00 " + text(moments.m00) + ", m10 " + text(moments.m10) + ", m01 " + text(moments.m01) + ", m20 " +
           text(moments.m20) + ", m11 " + text(moments.m11) + ", m02 " + text(moments.m02);
}

std::string componentsText(const Components& components)
{
    return "red " + text(components.red) + ", green " + text(components.green) + ", blue " + text(components.blue);
}

void writeFigures(std::ostream& out, const GreyFigures& figures)
{
    const std::string threshold = std::to_string(figures.threshold), levels = " grey levels";
    line(out, "minimum", std::to_string(figures.min) + levels);
    line(out, "maximum", std::to_string(figures.max) + levels);
    line(out, "mean", text(figures.mean) + levels);
    line(out, "deviation", text(figures.deviation) + levels);
    line(out, "area", std::to_string(figures.area) + " pixels above " + threshold);
    line(out, "area", text(figures.binary.m00) + " pixels from " + threshold + " on");
    line(out, "centre of gravity",
         "x " + text(figures.centreX()) + ", y " + text(figures.centreY()) + " pixels, from " + threshold + " on");
    line(out, "binary moments", momentsText(figures.binary));
    line(out, "weighed moments", momentsText(figures.weighed));
    line(out, "focus", text(figures.focus) + levels);
}

void writeFigures(std::ostream& out, const ColourFigures& figures)
{
    line(out, "mean", componentsText(figures.mean) + " levels");
    line(out, "deviation", componentsText(figures.deviation) + " levels");
    line(out, "correlation",
         "red-green " + text(figures.redGreen) + ", green-blue " + text(figures.greenBlue) + ", blue-red " +
             text(figures.blueRed));
    line(out, "focus", text(figures.focus) + " levels");
}

Json toJson(const Moments& moments)
{
    return {{"m00", moments.m00}, {"m10", moments.m10}, {"m01", moments.m01},
            {"m20", moments.m20}, {"m11", moments.m11}, {"m02", moments.m02}};
}

Json toJson(const Components& components)
{
    return {{"red", components.red}, {"green", components.green}, {"blue", components.blue}};
}

void addFigures(Json& object, const GreyFigures& figures)
{
    object["threshold"] = figures.threshold;
    object["min"] = figures.min;
    object["max"] = figures.max;
    object["mean"] = figures.mean;
    object["deviation"] = figures.deviation;
    object["area"] = figures.area;
    object["centre"] = {{"x", figures.centreX()}, {"y", figures.centreY()}};
    object["binary_moments"] = toJson(figures.binary);
    object["weighed_moments"] = toJson(figures.weighed);
    object["focus"] = figures.focus;
}

void addFigures(Json& object, const ColourFigures& figures)
{
    object["mean"] = toJson(figures.mean);
    object["deviation"] = toJson(figures.deviation);
    object["correlation"] = {
        {"red_green", figures.redGreen}, {"green_blue", figures.greenBlue}, {"blue_red", figures.blueRed}};
    object["focus"] = figures.focus;
}

}  // namespace

void writeText(std::ostream& out, const std::string& name, const Measurement& measurement)
{
    const Rectangle& region = measurement.region;
    out << name << '\n';
    line(out, "size", sizeText(measurement.width, measurement.height));
    line(out, "type", measurement.type);
    if (region.width != measurement.width || region.height != measurement.height)
        line(out, "region",
             sizeText(region.width, region.height) + " from x " + std::to_string(region.x) + ", y " +
                 std::to_string(region.y) + ", where coordinates begin");
    std::visit([&](const auto& figures) { writeFigures(out, figures); }, measurement.figures);
}

Json toJson(const std::string& name, const Measurement& measurement)
{
    const Rectangle& region = measurement.region;
    Json object;
    object["file"] = name;
    object["width"] = measurement.width;
    object["height"] = measurement.height;
    object["type"] = measurement.type;
    object["region"] = {{"x", region.x}, {"y", region.y}, {"width", region.width}, {"height", region.height}};
    std::visit([&](const auto& figures) { addFigures(object, figures); }, measurement.figures);
    return object;
}

}  // namespace zkit::tool
