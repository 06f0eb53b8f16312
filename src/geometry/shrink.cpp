// ImgShrink, grey and colour.
#include "frame/by_component.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "geometry/shrink_workers.h"
#include "simd/choice.h"
#include "zkit/img/geometry.h"

#include <memory>
#include <new>

using namespace zkit;

namespace {

// Where block i of `blocks` of them begins, of so many rows or columns as `size` says.
std::ptrdiff_t edge(std::ptrdiff_t i, std::ptrdiff_t size, std::ptrdiff_t blocks)
{
    return static_cast<std::ptrdiff_t>(static_cast<std::int64_t>(i) * size / blocks);
}

// What the rows of an operation need besides the pixels.
class Work {
public:
    Work(const Source& src, const Target& dst)
        : edges_(new (std::nothrow) std::int32_t[static_cast<std::size_t>(dst.width + 1)]),
          columns_(new (std::nothrow) std::uint16_t[static_cast<std::size_t>(src.width + 64)]),
          totals_(new (std::nothrow) std::uint32_t[static_cast<std::size_t>(dst.width)])
    {
        for (std::ptrdiff_t i = 0; edges_ && i <= dst.width; ++i)
            edges_[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(edge(i, src.width, dst.width));
    }

    bool exists() const { return edges_ && columns_ && totals_; }
    const std::int32_t* edges() const { return edges_.get(); }
    ShrinkMemory memory() const { return {columns_.get(), totals_.get()}; }

private:
    std::unique_ptr<std::int32_t[]> edges_;
    std::unique_ptr<std::uint16_t[]> columns_;
    std::unique_ptr<std::uint32_t[]> totals_;
};

// Raises 1303 and returns false when there is no working memory.
bool shrink(Source src, const Target& dst)
{
    if (dst.width == 0 || dst.height == 0)
        return true;
    SeparateSource separate;
    const Work work(src, dst);
    if (!(separate.forNeighbours(src, dst) && require(work.exists(), Z_ERROR_OUT_OF_MEMORY)))
        return false;
    const auto row = workers<ShrinkWorkers>().row;
    for (std::ptrdiff_t y = 0; y < dst.height; ++y) {
        const std::ptrdiff_t top = edge(y, src.height, dst.height), end = edge(y + 1, src.height, dst.height);
        row({src.data + top * src.pitch, src.pitch, src.width, end - top}, dst.data + y * dst.pitch, work.edges(),
            dst.width, work.memory());
    }
    return true;
}

bool noLarger(const ZGenericROI* region, const ZGenericROI* other)
{
    return region->GetWidth() <= other->GetWidth() && region->GetHeight() <= other->GetHeight();
}

}  // namespace

short ImgShrink(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    const CallFrame frame("ImgShrink");
    if (!(frame.clear() && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst) &&
          require(noLarger(dst, src), Z_ERROR_BAD_IMAGE_SIZE) && shrink(source(src), target(dst))))
        return frame.trace();
    return frame.finish();
}

void ImgShrink(ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    byComponent("ImgShrink (C24)", src, dst, [](ZROI<ZBW8>* in, ZROI<ZBW8>* out, int) { return ImgShrink(in, out); });
}
