#include "convert/command.h"

#include "convert/convert.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace zkit::tool {
namespace {

struct Arguments {
    std::optional<int> bits;
    Shift shift;
    bool lossy = false;
    std::string in, out;
};

PixelType typeOfBits(int bits)
{
    return bits == 1    ? PixelType::binary
           : bits == 8  ? PixelType::grey
           : bits == 16 ? PixelType::wide
                        : PixelType::colour;
}

// Says what would be lost; that is an error unless it is wanted.
void accept(const std::string& loss, bool lossy)
{
    if (!lossy)
        throw PictureError("this would lose " + loss + "; --lossy converts all the same");
    std::cerr << "zkit: this loses " << loss << std::endl;
}

Picture converted(Picture picture, const Arguments& arguments)
{
    const PixelType type = arguments.bits ? typeOfBits(*arguments.bits) : static_cast<PixelType>(picture.index());
    if (static_cast<std::size_t>(type) == picture.index())
        return picture;
    Picture result = convert(picture, type, arguments.shift);
    const char* const loss = lossOf(picture, result, arguments.shift);
    if (loss != nullptr)
        accept(loss + std::string(" (") + typeName(picture) + " to " + typeName(result) + ")", arguments.lossy);
    return result;
}

int run(const Arguments& arguments)
try {
    const Picture picture = converted(readPicture(arguments.in), arguments);
    if (hasLossyEnding(arguments.out))
        accept("the pixels' exact values (JPEG)", arguments.lossy);
    writePicture(arguments.out, picture);
    return 0;
} catch (const std::exception& error) {
    std::cerr << arguments.in << " to " << arguments.out << ": " << error.what() << std::endl;
    return 1;
}

constexpr const char* notes = R"(
The format of IN is recognised by its content, that of OUT by its ending: .png, .tif, .tiff, .bmp, .jpg, .jpeg, .pbm,
.pgm, .ppm or .pnm. Only pixels are carried over: no transparency, resolution, colour profile or further picture.

A conversion that would lose information of the pixels is refused unless --lossy is given, and then says what it has
lost. Levels keep their values: 8-bit levels become 16-bit ones of the same value, and 16-bit levels up to 255 lose
nothing as 8-bit ones; of greater ones the lower bits are lost, as many as needed or as --shift says. Colours become
the mean of their components, about. Black and white are 0 and 255 in grey levels; from 128 on levels are white.

The exit status is 0, 1 when the picture was not converted, 2 for wrong usage.)";

}  // namespace

void addConvertCommand(CLI::App& tool, int& status)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = tool.add_subcommand("convert", "Change a picture's format and pixel type");
    command
        ->add_option("--type", arguments->bits,
                     "Bits a pixel: 1 (black and white), 8 or 16 (grey) or 24 (colour); by default those of IN")
        ->type_name("bits")
        ->check(CLI::IsMember({1, 8, 16, 24}).description(""));
    command
        ->add_option("--shift", arguments->shift,
                     "Bits by which 16-bit levels are shifted to become 8-bit ones, and 8-bit levels to become 16-bit "
                     "ones; by default as many as the greatest level needs, and 0")
        ->type_name("n")
        ->check(CLI::Range(0, 8).description(""));
    command->add_flag("--lossy", arguments->lossy, "Convert also when information is lost");
    command->add_option("IN", arguments->in, "The picture")->type_name("")->required();
    command->add_option("OUT", arguments->out, "The file to be written")->type_name("")->required();
    command->footer(notes);
    command->callback([arguments, &status] { status = run(*arguments); });
}

}  // namespace zkit::tool
