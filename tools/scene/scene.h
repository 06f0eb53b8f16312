// A picture whose truth is known: parts on an unevenly lit table, seen by a noisy camera.
#pragma once

#include "picture/picture.h"

#include <array>

namespace zkit::tool {

/// A part of the scene, in pixels; the centre of the picture's top-left pixel is (0, 0). Centres and sizes are
/// multiples of 1/16, so that they are exact. Rectangles end between pixels, so that a threshold finds them exactly.
struct ScenePart {
    enum class Shape { disc, rectangle };

    Shape shape;
    double centreX, centreY;
    double width, height;  // of a disc: its diameter, twice

    double area() const;
};

constexpr int sceneWidth = 640, sceneHeight = 480;

/// Half way between the table (40 to 88, brighter to the right and to the bottom) and the parts (200), give or take the
/// noise, which is less than 8 levels: what separates the two everywhere.
constexpr int sceneThreshold = 132;

/// The parts. No two come nearer than 20 pixels to each other or to the edge of the picture.
constexpr std::array<ScenePart, 9> sceneParts = {{
    {ScenePart::Shape::disc, 90.25, 80.5, 64, 64},
    {ScenePart::Shape::disc, 230.0, 90.75, 40.5, 40.5},
    {ScenePart::Shape::disc, 380.5, 85.125, 96.25, 96.25},
    {ScenePart::Shape::rectangle, 540.5, 90.0, 100, 61},
    {ScenePart::Shape::rectangle, 110.5, 240.5, 120, 24},
    {ScenePart::Shape::disc, 300.75, 250.5, 120, 120},
    {ScenePart::Shape::rectangle, 480.0, 260.5, 49, 130},
    {ScenePart::Shape::disc, 120.0, 390.0, 72.125, 72.125},
    {ScenePart::Shape::rectangle, 360.5, 400.0, 180, 51},
}};

/// Draws the scene, the same pixels everywhere: integers only, and a noise generator of its own.
ImagePointer<ZBW8> renderScene();

}  // namespace zkit::tool
