// What is measured: the operations of each family, the peer's equivalents and the limits of the machine.
#pragma once

#include "scene.h"

#include <span>

namespace bench {

// The arguments of the operations, the same for the peer.
inline constexpr unsigned char low = 90;
inline constexpr unsigned char high = 150;
inline constexpr unsigned char constant = 3;  ///< beside an image; no shift is out of range
inline constexpr float gain = 1.3f;
inline constexpr float steepGain = 5.5f;
inline constexpr float offset = -7.f;
inline constexpr float wantedMean = 128.f;
inline constexpr float wantedDeviation = 40.f;
inline constexpr unsigned char lightLevel = 200;
inline constexpr unsigned char darkLevel = 10;
inline constexpr unsigned int shift = 4;  ///< the sum of summedImages becomes their average
inline constexpr unsigned int highBitOfSum = 11;
inline constexpr float rotation = 15.F;  ///< degrees
inline constexpr float scale = 1.1F;
inline constexpr float reduction = 3.3F;
inline constexpr int fieldShift = 5;

struct Point {
    int x, y;
};

/// Where the warped image has pixel (i, j) from: turned about the middle, in parts beyond the image.
Point turned(int i, int j, const Size& size);
Point nearest(Point at, const Size& size);  ///< in the image

/// Coefficient of a smoothing kernel, symmetric about both axes and both diagonals; they add up to about 1.
constexpr float coefficient(int size, int column, int row)
{
    const float x = float(column - size / 2), y = float(row - size / 2);
    return 0.2F / (1.F + x * x + y * y);
}

/// Entry of the look-up table; its values matter to nobody.
constexpr unsigned char tableEntry(int level) { return static_cast<unsigned char>(level * 167 + 13); }

/// A line from the top left to the right-hand edge, down a part of the height.
inline constexpr int steep = 1;  ///< to the bottom
inline constexpr int flat = 20;
struct Line {
    Line(const Scene& scene, int part) : x(scene.size().width - 1), y((scene.size().height - 1) / part) {}
    int x, y;
};

/// Does an operation once on the scene's current images.
using Body = void (*)(Scene& scene);

/// One line of the table. The bytes are those that must be read and written for every pixel.
struct Operation {
    const char* name;
    const char* type;
    int bytesRead;
    int bytesWritten;
    Body body;
};

std::span<const Operation> analysisOperations();
std::span<const Operation> pointOperations();
std::span<const Operation> arithmeticOperations();
std::span<const Operation> filterOperations();
std::span<const Operation> geometryOperations();
std::span<const Operation> contourOperations();
std::span<const Operation> morphoOperations();
std::span<const Operation> temporalOperations();

/// The peer's equivalent of the operation with the same name and type.
struct Peer {
    const char* name;
    const char* type;
    Body body;
};

/// One entry for every operation that the peer offers, made ready to run on one thread; none when it is not installed.
std::span<const Peer> peers();

/// What the memory allows: a copy of one byte a pixel and a pass that only reads.
std::span<const Operation> limits();

}  // namespace bench
