// ImgContour into paths of positions, of positions with grey levels, and into untyped vectors.
#include "zkit/img/contour.h"
#include "analysis/bins.h"
#include "analysis/contour_walk.h"
#include "frame/call_frame.h"
#include "frame/planes.h"

#include <algorithm>
#include <climits>
#include <span>

using namespace zkit;

namespace {

// What the walks of a call have in common; its settings live no longer than the call.
struct Contour {
    ZROI<ZBW8>* src;
    int mode;
    int x, y;
    unsigned int least, most;  // the object's levels
    bool eightConnected;

    bool anticlockwise() const { return mode >= CONTOUR_ANTICLOCKWISE; }
    bool goesBack() const { return mode == CONTOUR_CLOCKWISE_THEN_BACK || mode == CONTOUR_ANTICLOCKWISE_THEN_BACK; }
    bool alongEdge() const { return mode == CONTOUR_CLOCKWISE_ALONG_EDGE || mode == CONTOUR_ANTICLOCKWISE_ALONG_EDGE; }
};

Contour contour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense, unsigned int threshold,
                CONNEXITY connexity)
{
    const bool above = sense == CONTOUR_THRESHOLD_ABOVE;
    return {src, mode, x, y, above ? threshold : 0, above ? UINT_MAX : threshold, connexity == CONNEXITY_8};
}

short lowBits(int coordinate) { return static_cast<short>(coordinate); }

ZPath point(int x, int y, ZBW8, int, const ZPath*) { return {lowBits(x), lowBits(y)}; }
ZBW8Path point(int x, int y, ZBW8 level, int, const ZBW8Path*) { return {lowBits(x), lowBits(y), level}; }

// A path takes as many points as the walk can have positions and directions before it must repeat itself.
template <class Point>
class TypedPath {
public:
    explicit TypedPath(ZVectorTemplate<Point>* path) : path_(path) {}

    bool empty() const
    {
        if (require(path_, Z_ERROR_VECTOR_EMPTY))
            path_->Empty();
        return path_;
    }

    static std::int64_t limit(std::int64_t pixels) { return 8 * pixels; }

    // Room behind the points recorded; none after an error. The path lets one point in while an error is pending, which
    // is intended: it ends a walk back, as that of the first walk still is.
    std::span<Point> room(std::int64_t recorded) const
    {
        const auto used = static_cast<unsigned int>(recorded);
        const bool pending = ZGetError() != Z_OK;
        if (pending && used > 0)
            return {};
        path_->SetNumElements(used);
        if (used == path_->GetMaxElements())
            path_->AddElement({});
        if (used == path_->GetMaxElements())
            return {};
        return {path_->GetDataPtr() + used, pending ? 1 : path_->GetMaxElements() - used};
    }

    void close(std::int64_t recorded) const { path_->SetNumElements(static_cast<unsigned int>(recorded)); }

private:
    ZVectorTemplate<Point>* path_;
};

struct Group {
    std::int32_t x, y, direction;
};

Group point(int x, int y, ZBW8, int direction, const Group*) { return {x, y, direction}; }

// An untyped vector takes a point for every 8 pixels, whatever error is pending.
class UntypedPath {
public:
    explicit UntypedPath(ZVector* path) : path_(path) {}

    bool empty() const
    {
        return require(path_, Z_ERROR_VECTOR_EMPTY) &&
               (path_->IsSameVectType(1) || path_->SetType(1, 2000, 0) == Z_OK) && path_->SetNbGroup(0) == Z_OK &&
               hasData(path_) &&
               require(path_->GetGroupLength() == 3 && path_->GetDataSize() == 4, Z_ERROR_VECTOR_STRUCTURE);
    }

    static std::int64_t limit(std::int64_t pixels) { return pixels / 8; }

    std::span<Group> room(std::int64_t recorded) const
    {
        constexpr int growth = 512 * sizeof(Group);
        if (recorded == path_->GetNbMaxGroup() &&
            !(require(path_->GetAllocatedSize() <= INT_MAX - growth, Z_ERROR_OUT_OF_MEMORY) &&
              path_->Reallocate(path_->GetAllocatedSize() + growth) == Z_OK))
            return {};
        const auto groups = static_cast<std::size_t>(path_->GetNbMaxGroup());
        return std::span(static_cast<Group*>(path_->GetDataPtr()), groups).subspan(static_cast<std::size_t>(recorded));
    }

    void close(std::int64_t recorded) const { path_->SetNbGroup(static_cast<int>(recorded)); }

private:
    ZVector* path_;
};

bool turnedToStart(ContourWalk& walk)
{
    auto last = ContourWalk::Neighbour::background;
    const bool turned = walk.turnToStart(last);
    return require(turned, last == ContourWalk::Neighbour::background ? Z_ERROR_CONTOUR_ISOLATED
                                                                      : Z_ERROR_CONTOUR_NO_NEIGHBOUR);
}

// Walks until the walk ends or no more points are taken, and raises an error unless it closes.
template <class Path>
WalkState record(ContourWalk& walk, std::int64_t limit, const Path& path)
{
    std::int64_t recorded = 0;
    WalkState state = WalkState::goesOn;
    while (state == WalkState::goesOn && require(recorded < limit, Z_ERROR_CONTOUR_LIMIT)) {
        const auto room = path.room(recorded);
        if (room.empty())
            break;
        auto* const first = room.data();
        auto* out = first;
        const auto make = [first](auto... position) { return point(position..., first); };
        state = walk.follow(out, first + std::min<std::int64_t>(std::ssize(room), limit - recorded), make);
        recorded += out - first;
    }
    path.close(recorded);
    require(state != WalkState::edge, Z_ERROR_PATH_LIMIT);
    require(state != WalkState::lost, Z_ERROR_CONTOUR_LIMIT);
    return state;
}

// One walk from (x, y), which become the last pixel reached. Raises an error unless it closes.
template <class Path>
WalkState follow(Contour& contour, bool anticlockwise, const Path& path)
{
    ZROI<ZBW8>* const src = contour.src;
    if (!(path.empty() && placed(src) &&
          require(contour.x >= 0 && contour.x < src->GetWidth(), Z_ERROR_ARGUMENT_3_OUT_OF_RANGE) &&
          require(contour.y >= 0 && contour.y < src->GetHeight(), Z_ERROR_ARGUMENT_4_OUT_OF_RANGE)))
        return WalkState::goesOn;
    ContourWalk walk(
        {source(src), contour.least, contour.most, contour.eightConnected, contour.alongEdge(), anticlockwise},
        contour.x, contour.y);
    if (!(require(walk.onObject(), Z_ERROR_CONTOUR_START) && turnedToStart(walk)))
        return WalkState::goesOn;
    const WalkState end =
        record(walk, Path::limit(static_cast<std::int64_t>(src->GetWidth()) * src->GetHeight()), path);
    contour.x = walk.x();
    contour.y = walk.y();
    return end;
}

template <class Path>
short trace(const char* name, Contour contour, const Path& path)
{
    const CallFrame frame(name);
    if (!(frame.clear() && require(contour.mode >= 0 && contour.mode <= 5, Z_ERROR_BAD_MODE)))
        return frame.trace();
    const bool anticlockwise = contour.anticlockwise();
    if (follow(contour, anticlockwise, path) == WalkState::edge && contour.goesBack() &&
        follow(contour, !anticlockwise, path) == WalkState::closed)
        ZClearError();  // 1503 of the walk there: the walk back has the whole outline
    return frame.finish();
}

}  // namespace

void ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense, unsigned int threshold,
                CONNEXITY connexity, ZPathVector* path)
{
    trace("ImgContour (ZPathVector)", contour(src, mode, x, y, sense, threshold, connexity), TypedPath<ZPath>(path));
}

void ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense, unsigned int threshold,
                CONNEXITY connexity, ZBW8PathVector* path)
{
    trace("ImgContour (ZBW8PathVector)", contour(src, mode, x, y, sense, threshold, connexity),
          TypedPath<ZBW8Path>(path));
}

short ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense, unsigned int threshold,
                 CONNEXITY connexity, ZVector* path)
{
    return trace("ImgContour (ZVector)", contour(src, mode, x, y, sense, threshold, connexity), UntypedPath(path));
}
