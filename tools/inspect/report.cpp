#include "inspect/report.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cstdio>
#include <ostream>

namespace zkit::tool {
namespace {

using Json = nlohmann::ordered_json;

class TableWriter : public InspectionWriter {
public:
    void write(std::ostream& out, const std::string& name, const Inspection& inspection) override
    {
        out << name << ": " << inspection.width << " x " << inspection.height << " pixels, ";
        if (inspection.threshold)
            out << "threshold " << *inspection.threshold;
        else
            out << "adaptive threshold";
        out << ", " << inspection.objects.size() << (inspection.objects.size() == 1 ? " object\n" : " objects\n");
        if (!inspection.objects.empty())
            out << "   no      x      y  width height      area  centre x  centre y   angle  elong. perimeter   mean"
                   "    dev.\n";
        int number = 0;
        for (const Object& object : inspection.objects)
            writeLine(out, ++number, object);
    }

private:
    static void writeLine(std::ostream& out, int number, const Object& object)
    {
        char line[200];
        std::snprintf(line, sizeof line, "%5d %6d %6d %6d %6d %9lld %9.2f %9.2f %7.1f %7.2f %9.1f %6.1f %7.1f%s\n",
                      number, object.box.x, object.box.y, object.box.width, object.box.height,
                      static_cast<long long>(object.area), object.centreX, object.centreY, object.orientation,
                      object.elongation, object.perimeter, object.mean, object.deviation,
                      object.touchesEdge ? "  at the edge" : "");
        out << line;
    }
};

class JsonWriter : public InspectionWriter {
public:
    void begin(std::ostream& out) override { out << '['; }

    void write(std::ostream& out, const std::string& name, const Inspection& inspection) override
    {
        Json picture;
        picture["file"] = name;
        picture["width"] = inspection.width;
        picture["height"] = inspection.height;
        picture["threshold"] = inspection.threshold ? Json(*inspection.threshold) : Json();
        picture["objects"] = Json::array();
        for (const Object& object : inspection.objects)
            picture["objects"].push_back(toJson(object));
        add(out, picture);
    }

    void writeFailure(std::ostream& out, const std::string& name, const std::string& reason) override
    {
        add(out, {{"file", name}, {"error", reason}});
    }

    void end(std::ostream& out) override { out << "\n]\n"; }

private:
    static Json toJson(const Object& object)
    {
        return {
            {"box",
             {{"x", object.box.x}, {"y", object.box.y}, {"width", object.box.width}, {"height", object.box.height}}},
            {"area", object.area},
            {"centre", {{"x", object.centreX}, {"y", object.centreY}}},
            {"orientation", object.orientation},
            {"elongation", object.elongation},
            {"perimeter", object.perimeter},
            {"mean", object.mean},
            {"deviation", object.deviation},
            {"touches_edge", object.touchesEdge}};
    }

    // A name that is not UTF-8 gets replacement characters.
    void add(std::ostream& out, const Json& picture)
    {
        out << (first_ ? "\n" : ",\n") << picture.dump(2, ' ', false, Json::error_handler_t::replace);
        first_ = false;
    }

    bool first_ = true;
};

class CsvWriter : public InspectionWriter {
public:
    void begin(std::ostream& out) override
    {
        out << "file,number,x,y,width,height,area,centre_x,centre_y,orientation,elongation,perimeter,mean,deviation,"
               "touches_edge\n";
    }

    void write(std::ostream& out, const std::string& name, const Inspection& inspection) override
    {
        int number = 0;
        for (const Object& object : inspection.objects) {
            out << quoted(name) << ',' << ++number << ',' << object.box.x << ',' << object.box.y << ','
                << object.box.width << ',' << object.box.height << ',' << object.area;
            for (const double figure : {object.centreX, object.centreY, object.orientation, object.elongation,
                                        object.perimeter, object.mean, object.deviation})
                out << ',' << text(figure);
            out << ',' << (object.touchesEdge ? 1 : 0) << '\n';
        }
    }

private:
    // The shortest text that gives the number again.
    static std::string text(double figure)
    {
        std::array<char, 32> digits{};
        return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), figure).ptr};
    }

    static std::string quoted(const std::string& name)
    {
        if (name.find_first_of(",\"\r\n") == std::string::npos)
            return name;
        std::string result = "\"";
        for (const char letter : name)
            result += letter == '"' ? std::string("\"\"") : std::string(1, letter);
        return result + '"';
    }
};

}  // namespace

std::unique_ptr<InspectionWriter> tableWriter() { return std::make_unique<TableWriter>(); }
std::unique_ptr<InspectionWriter> jsonWriter() { return std::make_unique<JsonWriter>(); }
std::unique_ptr<InspectionWriter> csvWriter() { return std::make_unique<CsvWriter>(); }

}  // namespace zkit::tool
