// Contour following once more, by tables and pixel by pixel: what ImgContour is compared with.
#pragma once

#include "zkit/core/roi.h"
#include "zkit/img/contour.h"

#include <cstdint>
#include <vector>

struct ContourModel {
    struct Step {
        int x, y, direction;
        bool operator==(const Step&) const = default;
    };

    // Walks there and, if the mode says so and the walk there has met the edge, back.
    // @param untyped  the rules of the untyped vector, else those of paths
    ContourModel(const ZROI<ZBW8>& region, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense, unsigned threshold,
                 CONNEXITY connexity, bool untyped)
        : region_(region), sense_(sense), threshold_(threshold), eight_(connexity == 1), untyped_(untyped)
    {
        const bool anticlockwise = mode == 3 || mode == 4 || mode == 5;
        outside_ = mode == 1 || mode == 5 ? 0 : 2;
        code = walk(x, y, anticlockwise, false);
        if (code == 1503 && (mode == 2 || mode == 4))
            code = walk(x_, y_, !anticlockwise, !untyped);
    }

    int code = 0;
    std::vector<Step> steps;

private:
    static constexpr int dx[] = {1, 1, 0, -1, -1, -1, 0, 1}, dy[] = {0, -1, -1, -1, 0, 1, 1, 1};
    static constexpr int nexts[2][2][8] = {{{6, -1, 0, -1, 2, -1, 4, -1}, {2, -1, 4, -1, 6, -1, 0, -1}},
                                           {{7, 0, 1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6, 7, 0}}};
    static constexpr int restarts[2][2][8] = {{{2, -1, 4, -1, 6, -1, 0, -1}, {6, -1, 0, -1, 2, -1, 4, -1}},
                                              {{1, 3, 3, 5, 5, 7, 7, 1}, {7, 7, 1, 1, 3, 3, 5, 5}}};

    bool isObject(int x, int y) const
    {
        const unsigned level = region_.GetPixel(x, y);
        return sense_ == CONTOUR_THRESHOLD_ABOVE ? level >= threshold_ : level <= threshold_;
    }

    bool within(int x, int y) const { return x >= 0 && x < region_.GetWidth() && y >= 0 && y < region_.GetHeight(); }

    int test(int d) const
    {
        const int x = x_ + dx[d], y = y_ + dy[d];
        return within(x, y) ? isObject(x, y) : outside_;
    }

    int walk(int x, int y, bool anticlockwise, bool pending)
    {
        steps.clear();
        if (x < 0 || x >= region_.GetWidth())
            return 1013;
        if (y < 0 || y >= region_.GetHeight())
            return 1014;
        if (!isObject(x, y))
            return 1500;
        const int *next = nexts[eight_][anticlockwise], *restart = restarts[eight_][anticlockwise];
        x_ = x;
        y_ = y;
        int d = 0, twoBefore = 0, before = test(d);
        d = next[d];
        int last = test(d);
        for (int turns = 0;; ++turns) {
            if (turns == 8)
                return last != 0 ? 1501 : 1502;
            twoBefore = before;
            before = last;
            d = next[d];
            last = test(d);
            if (before == 0 && last == 1 && !(eight_ && d % 2 == 0 && twoBefore != 0))
                break;
        }
        const auto pixels =
            static_cast<std::size_t>(region_.GetWidth()) * static_cast<std::size_t>(region_.GetHeight());
        for (const int start = d;;) {
            if (!steps.empty() && x_ == x && y_ == y && d == start)
                return 0;
            if (steps.size() == (untyped_ ? pixels / 8 : pixels * 8))
                return 1504;
            steps.push_back({x_, y_, d});
            if (pending)
                return 1503;
            x_ += dx[d];
            y_ += dy[d];
            for (d = restart[d]; test(d) == 0;)
                d = next[d];
            if (test(d) == 2)
                return 1503;
        }
    }

    const ZROI<ZBW8>& region_;
    CONTOUR_THRESHOLD sense_;
    unsigned threshold_;
    bool eight_, untyped_;
    int outside_ = 0, x_ = 0, y_ = 0;
};
