// The walk along an object's outline. It knows pixels only: neither regions nor errors nor vectors.
#pragma once

#include "simd/plane.h"

#include <array>

namespace zkit {

// What is followed, and how. Levels from `least` to `most` are the object's.
struct Outline {
    Source pixels;
    unsigned int least, most;
    bool eightConnected;
    bool outsideIsBackground;
    bool anticlockwise;
};

// What has become of a walk.
enum class WalkState {
    goesOn,
    closed,  // it is back at its start
    edge,    // it has met a neighbour outside, and outside is not background
    lost     // the object has vanished: somebody changes the pixels meanwhile
};

// Directions count anticlockwise from 0, to the right; the other ones of a 4-connected walk are even.
class ContourWalk {
public:
    ContourWalk(const Outline& outline, int x, int y)
        : outline_(outline),
          width_(static_cast<int>(outline.pixels.width)),
          height_(static_cast<int>(outline.pixels.height)),
          turn_((outline.anticlockwise ? 1 : -1) * (outline.eightConnected ? 1 : 2)),
          here_{outline.pixels.data + y * outline.pixels.pitch + x, x, y, 0},
          start_(here_)
    {
        for (std::size_t d = 0; d < 8; ++d)
            offset_[d] = dy[d] * outline.pixels.pitch + dx[d];
    }

    int x() const { return here_.x; }
    int y() const { return here_.y; }

    enum class Neighbour { background, object, outside };

    bool onObject() const { return kind(*here_.pixel) == Neighbour::object; }

    // Turns to the direction in which the walk starts: object after background. Returns false when there is none, and
    // the last neighbour looked at.
    bool turnToStart(Neighbour& last);

    // Records every pixel, as `make` makes a point of it, and steps on, until the walk ends or `out` reaches `end`.
    template <class Point, class Make>
    WalkState follow(Point*& out, const Point* end, Make make);

private:
    struct Position {
        const std::uint8_t* pixel;
        int x, y, direction;
    };

    Neighbour kind(unsigned int level) const
    {
        return level >= outline_.least && level <= outline_.most ? Neighbour::object : Neighbour::background;
    }
    int next(int direction) const { return (direction + turn_) & 7; }

    // Where the search for the next step begins after one in this direction: beside the pixel that was left, on the
    // side that has been searched already.
    int restart(int direction) const { return (direction - turn_ * (1 + (direction & 1))) & 7; }

    Neighbour neighbour(int direction) const;
    Neighbour turnToNext();
    WalkState step();

    static constexpr std::array<std::int8_t, 8> dx = {1, 1, 0, -1, -1, -1, 0, 1};
    static constexpr std::array<std::int8_t, 8> dy = {0, -1, -1, -1, 0, 1, 1, 1};

    Outline outline_;
    int width_, height_;
    int turn_;
    std::array<std::ptrdiff_t, 8> offset_;
    Position here_, start_;
};

inline ContourWalk::Neighbour ContourWalk::neighbour(int direction) const
{
    const auto d = static_cast<std::size_t>(direction);
    const int x = here_.x + dx[d], y = here_.y + dy[d];
    if (x < 0 || x >= width_ || y < 0 || y >= height_)
        return outline_.outsideIsBackground ? Neighbour::background : Neighbour::outside;
    return kind(here_.pixel[offset_[d]]);
}

inline bool ContourWalk::turnToStart(Neighbour& last)
{
    int d = 0;
    Neighbour before = neighbour(d);
    d = next(d);
    last = neighbour(d);
    for (int turns = 0; turns < 8; ++turns) {
        const Neighbour twoBefore = before;
        before = last;
        d = next(d);
        last = neighbour(d);
        // Of eight neighbours those on the axes must follow two of the background, which is intended.
        if (before == Neighbour::background && last == Neighbour::object &&
            (!outline_.eightConnected || d % 2 != 0 || twoBefore == Neighbour::background)) {
            here_.direction = d;
            start_ = here_;
            return true;
        }
    }
    return false;
}

// Turns to the first neighbour that is not background. There is one, the pixel that was left, unless pixels change.
inline ContourWalk::Neighbour ContourWalk::turnToNext()
{
    here_.direction = restart(here_.direction);
    const bool inside = here_.x > 0 && here_.x < width_ - 1 && here_.y > 0 && here_.y < height_ - 1;
    for (int turns = 0; turns < 8; ++turns) {
        const Neighbour found =
            inside ? kind(here_.pixel[offset_[static_cast<std::size_t>(here_.direction)]]) : neighbour(here_.direction);
        if (found != Neighbour::background)
            return found;
        here_.direction = next(here_.direction);
    }
    return Neighbour::background;
}

inline WalkState ContourWalk::step()
{
    const auto d = static_cast<std::size_t>(here_.direction);
    here_ = {here_.pixel + offset_[d], here_.x + dx[d], here_.y + dy[d], here_.direction};
    const Neighbour found = turnToNext();
    if (found != Neighbour::object)
        return found == Neighbour::outside ? WalkState::edge : WalkState::lost;
    return here_.pixel == start_.pixel && here_.direction == start_.direction ? WalkState::closed : WalkState::goesOn;
}

template <class Point, class Make>
WalkState ContourWalk::follow(Point*& out, const Point* end, Make make)
{
    ContourWalk walk = *this;  // in registers: no write to a point can be thought to change it
    Point* point = out;
    WalkState state = WalkState::goesOn;
    while (state == WalkState::goesOn && point != end) {
        const Position& at = walk.here_;
        *point++ = make(at.x, at.y, *at.pixel, at.direction);
        state = walk.step();
    }
    here_ = walk.here_;
    out = point;
    return state;
}

}  // namespace zkit
