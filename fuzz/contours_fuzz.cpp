// Contours, paths, lines and profiles: regions in buffers whose margins are guarded, and arguments of any value. What a
// call leaves behind must agree with its code.
#include "support/arena.h"
#include "zkit/img.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace {

void require(bool condition, const char* fault)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", fault);
    std::abort();
}

short takeCode()
{
    const short code = ZGetError();
    ZClearError();
    return code;
}

// A region, usable or not.
template <class T>
class Scene {
public:
    explicit Scene(Input& input)
        : layout_(input),
          usable_(layout_.usable(layout_.add<T>(input))),
          arena_(layout_, bytes(input)),
          region_(arena_.template region<T>(0))
    {
    }

    ZROI<T>* region() const { return region_; }
    bool usable() const { return usable_; }
    int width() const { return usable_ ? region_->GetWidth() : 0; }
    int height() const { return usable_ ? region_->GetHeight() : 0; }
    bool holds(int x, int y) const { return x >= 0 && y >= 0 && x < width() && y < height(); }

    std::vector<std::uint8_t> pixels() const
    {
        std::vector<std::uint8_t> all;
        for (int y = 0; y < height() && width() > 0; ++y) {
            const auto* row = static_cast<const std::uint8_t*>(region_->GetPixelPtr(0, y));
            all.insert(all.end(), row, row + static_cast<std::size_t>(width()) * sizeof(T));
        }
        return all;
    }

private:
    std::vector<std::uint8_t> bytes(Input& input) const
    {
        std::vector<std::uint8_t> all(layout_.size());
        input.fill(all);
        return all;
    }

    Layout layout_;
    bool usable_;
    Arena arena_;
    ZROI<T>* region_;
};

int coordinate(Input& input) { return input.oneIn(16) ? input.take<int>() : input.number(-1, 40); }

template <class T>
void fillVector(Input& input, ZVectorTemplate<T>& vector, int most)
{
    vector.SetNumElements(static_cast<unsigned>(input.number(0, most)));
    if (vector.GetNumElements() > 0)
        input.fill({reinterpret_cast<std::uint8_t*>(vector.GetDataPtr()), vector.GetNumElements() * sizeof(T)});
}

struct Point {
    int x, y;
};

// The arguments of a contour but for the path.
struct Following {
    explicit Following(Input& input)
        : mode(input.oneIn(16) ? input.take<int>() : input.number(0, 5)),
          sense(input.number(0, 2)),
          connexity(input.number(0, 2)),
          threshold(input.oneIn(16) ? input.take<unsigned>() : input.take<std::uint8_t>()),
          x(coordinate(input)),
          y(coordinate(input)),
          scene(input)
    {
    }

    template <class Path>
    short operator()(Path* path) const
    {
        ImgContour(scene.region(), static_cast<CONTOUR_MODE>(mode), x, y, static_cast<CONTOUR_THRESHOLD>(sense),
                   threshold, static_cast<CONNEXITY>(connexity), path);
        return takeCode();
    }

    // Every point is an object pixel beside the one before it; a closed contour ends beside its start.
    void check(const std::vector<Point>& points, short code) const
    {
        require(code != Z_OK || points.size() > 1, "a contour without pixels");
        require(code == Z_OK || code >= Z_ERROR_PATH_LIMIT || points.empty(), "pixels of a walk that has not begun");
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Point &here = points[i], &next = points[(i + 1) % points.size()];
            require(scene.holds(here.x, here.y), "a point outside the region");
            const unsigned level = scene.region()->GetPixel(here.x, here.y);
            require(sense == 0 ? level >= threshold : level <= threshold, "a point beside the object");
            const int dx = std::abs(next.x - here.x), dy = std::abs(next.y - here.y);
            if (i + 1 < points.size() || code == Z_OK)
                require(std::max(dx, dy) == 1 && (connexity == 1 || dx + dy == 1), "a gap");
        }
    }

    int mode, sense, connexity;
    unsigned threshold;
    int x, y;
    Scene<ZBW8> scene;
};

void contours(Input& input)
{
    const Following follow(input);
    ZPathVector path(static_cast<unsigned>(input.number(0, 9)));
    ZBW8PathVector levels;
    const short code = follow(&path);
    require(code == follow(&levels), "another code with levels");
    require(path.GetNumElements() == levels.GetNumElements(), "another number of points with levels");
    std::vector<Point> points;
    for (unsigned i = 0; i < path.GetNumElements(); ++i) {
        require(path[i].X == levels[i].X && path[i].Y == levels[i].Y, "other points with levels");
        require(levels[i].Pixel == follow.scene.region()->GetPixel(path[i].X, path[i].Y), "another level");
        points.push_back({path[i].X, path[i].Y});
    }
    follow.check(points, code);
}

void untypedContours(Input& input)
{
    const Following follow(input);
    ZVector path(input.number(0, 3));
    if (input.oneIn(2)) {
        path.SetStructure(input.number(0, 8), input.number(0, 9), input.number(0, 5), input.number(0, 4));
        path.Reallocate(input.number(0, 255));
    } else if (input.oneIn(4))
        path.SetType(1, input.number(0, 9), 0);
    ZClearError();
    const short code = follow(&path);
    if (code == Z_ERROR_BAD_MODE || code == Z_ERROR_VECTOR_EMPTY || code == Z_ERROR_VECTOR_STRUCTURE)
        return;
    require(path.IsSameVectType(1) && path.GetNbGroup() <= path.GetNbMaxGroup(), "the vector is no contour");
    require(path.GetNbGroup() <= follow.scene.width() * follow.scene.height() / 8, "more than one in eight pixels");
    std::vector<Point> points;
    const auto* values = static_cast<const std::int32_t*>(path.GetDataPtr());
    for (int i = 0; i < path.GetNbGroup(); ++i)
        points.push_back({values[3 * i], values[3 * i + 1]});
    follow.check(points, code);
}

// There and back again: the picture stays as it is.
template <class T, class Path>
void paths(Input& input)
{
    Path path;
    fillVector(input, path, 20);
    const int mask = input.oneIn(4) ? -1 : 7;
    const Scene<T> scene(input);
    bool within = true;
    for (unsigned i = 0; i < path.GetNumElements(); ++i) {
        auto& element = path[i];
        element.X = static_cast<short>(element.X & mask);
        element.Y = static_cast<short>(element.Y & mask);
        within = within && scene.holds(element.X, element.Y);
    }
    const std::vector<std::uint8_t> before = scene.pixels();
    ImgImageToPath(scene.region(), &path);
    const short code = takeCode();
    require((code == Z_OK) == (scene.usable() && within), "positions are judged wrongly");
    if (within)
        ImgPathToImage(scene.region(), &path);
    require(!within || takeCode() == code, "another code on the way back");
    require(scene.pixels() == before, "the picture changes");
    ImgPathToImage(scene.region(), &path);  // also the elements that are not its own
    ZClearError();
}

// A line that is written after it has been read is one pixel late.
template <class T, class Vector>
void lines(Input& input)
{
    const int x0 = coordinate(input), y0 = coordinate(input), x1 = coordinate(input), y1 = coordinate(input);
    Vector profile, late;
    fillVector(input, profile, 20);
    const Scene<T> scene(input);
    ImgImageToLineSegment(scene.region(), &profile, x0, y0, x1, y1);
    const short code = takeCode();
    require((code == Z_OK) == (scene.holds(x0, y0) && scene.holds(x1, y1)), "the ends are judged wrongly");
    if constexpr (sizeof(T) != 2) {
        ImgLineSegmentToImage(scene.region(), &profile, x0, y0, x1, y1);
        require(takeCode() == code, "another code on the way back");
        if (code == Z_OK) {
            ImgImageToLineSegment(scene.region(), &late, x0, y0, x1, y1);
            for (unsigned i = 0; i < late.GetNumElements(); ++i)
                require(std::memcmp(&late[i], &profile[i > 0 ? i - 1 : 0], sizeof(T)) == 0, "not one pixel late");
        }
        ImgLineSegmentToImage(scene.region(), profile.GetNumElements() > 0 ? profile[0] : T{}, x0, y0, x1, y1);
        require(takeCode() == code, "another code with a constant");
        if (code == Z_OK)
            require(static_cast<int>(profile.GetNumElements()) == std::max(std::abs(x1 - x0), std::abs(y1 - y0)) + 1,
                    "the wrong number of pixels");
    }
    ZClearError();
}

void profiles(Input& input)
{
    ZBW8Vector profile, slopes;
    ZPeaksVector peaks;
    const auto low = input.oneIn(8) ? input.take<unsigned>() : input.take<std::uint8_t>();
    const auto high = input.oneIn(8) ? input.take<unsigned>() : low + input.take<std::uint8_t>();
    const auto amplitude = input.integer<unsigned>(), area = input.integer<unsigned>();
    fillVector(input, profile, 200);
    fillVector(input, slopes, 200);
    ImgGetProfilePeaks(&profile, &peaks, low, high, amplitude, area);
    require(takeCode() == (low > high ? Z_ERROR_INCONSISTENT_ARGUMENTS : Z_OK), "thresholds are judged wrongly");
    unsigned end = 1;
    for (unsigned i = 0; i < peaks.GetNumElements(); ++i) {
        const ZPeak& peak = peaks[i];
        require(peak.Start >= end && peak.Length > 0 && peak.Length < profile.GetNumElements() - peak.Start, "no run");
        end = peak.Start + peak.Length;
        const bool inside = peak.Center >= static_cast<float>(peak.Start) && peak.Center < static_cast<float>(end);
        require(inside || low > 255 || high > 255, "a centre outside its run");
    }
    ImgProfileDerivative(&profile, &slopes);
    ImgProfileDerivative(&profile, &profile);
    require(takeCode() == Z_OK && slopes.GetNumElements() == profile.GetNumElements(), "another number of slopes");
    for (unsigned i = 0; i < slopes.GetNumElements(); ++i)
        require(slopes[i] == profile[i], "other slopes in place");
}

constexpr void (*targets[])(Input& input) = {contours,
                                             untypedContours,
                                             paths<ZBW8, ZBW8PathVector>,
                                             paths<ZC24, ZC24PathVector>,
                                             lines<ZBW8, ZBW8Vector>,
                                             lines<ZBW16, ZBW16Vector>,
                                             lines<ZC24, ZC24Vector>,
                                             profiles};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const ZThreadErrorScope errors;
    targets[static_cast<std::size_t>(input.number(0, std::size(targets) - 1))](input);
    return 0;
}
