// ClrGetComponent, ClrSetComponent.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "zkit/color.h"

using namespace zkit;

namespace {

bool copyable(ZGenericROI* src, ZGenericROI* dst, unsigned int component)
{
    return require(src && dst, Z_ERROR_NO_PIXELS) && placed(src) && placed(dst) && sameSize(src, dst) &&
           require(component <= 2, Z_ERROR_ARGUMENT_3_OUT_OF_RANGE);
}

std::uint8_t byteOf(ZC24 pixel, unsigned int component)
{
    return component == 0 ? pixel.c2 : component == 1 ? pixel.c1 : pixel.c0;
}

}  // namespace

short ClrGetComponent(ZROI<ZC24>* src, ZROI<ZBW8>* dst, unsigned int component, ZColorLookup* lookup)
{
    const CallFrame frame("ClrGetComponent");
    if (!(frame.clear() && copyable(src, dst, component)))
        return frame.trace();
    Source from = source(src);
    const Target to = target(dst);
    SeparateSource separate;
    if (!separate.forPoints(from, 3, to, 1))
        return frame.trace();
    const std::ptrdiff_t byte = 2 - static_cast<int>(component), width = from.width;
    for (std::ptrdiff_t y = 0; y < from.height; ++y) {
        const std::uint8_t* in = from.data + y * from.pitch;
        std::uint8_t* out = to.data + y * to.pitch;
        if (!lookup) {
            for (std::ptrdiff_t x = 0; x < width; ++x)
                out[x] = in[3 * x + byte];
            continue;
        }
        for (std::ptrdiff_t x = 0; x < width; ++x) {
            ZC24 pixel{in[3 * x], in[3 * x + 1], in[3 * x + 2]};
            lookup->Transform(pixel, pixel);
            out[x] = byteOf(pixel, component);
        }
    }
    return frame.finish();
}

short ClrSetComponent(ZROI<ZBW8>* src, ZROI<ZC24>* dst, unsigned int component)
{
    const CallFrame frame("ClrSetComponent");
    if (!(frame.clear() && copyable(src, dst, component)))
        return frame.trace();
    Source from = source(src);
    const Target to = target(dst);
    SeparateSource separate;
    if (!separate.forPoints(from, 1, to, 3))
        return frame.trace();
    const std::ptrdiff_t byte = 2 - static_cast<int>(component), width = from.width;
    for (std::ptrdiff_t y = 0; y < from.height; ++y) {
        const std::uint8_t* in = from.data + y * from.pitch;
        std::uint8_t* out = to.data + y * to.pitch + byte;
        for (std::ptrdiff_t x = 0; x < width; ++x)
            out[3 * x] = in[x];
    }
    return frame.finish();
}
