#include "frame/by_component.h"

#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/separate_region.h"
#include "zkit/color.h"

#include <algorithm>

namespace zkit {

namespace {

// A grey region of its own, as large as another one, which may have no pixels.
class WorkingRegion {
public:
    explicit WorkingRegion(const ZGenericROI* like)
        : image_(std::max(like->GetWidth(), 1), std::max(like->GetHeight(), 1)),
          region_(&image_, 0, 0, like->GetWidth(), like->GetHeight())
    {
    }

    // Whether there was memory for it; the image has raised 1303 otherwise.
    bool exists() const { return image_.GetPixelPtr(0, 0) != nullptr; }

    ZROI<ZBW8>* get() { return &region_; }

private:
    ZImage<ZBW8> image_;
    ZROI<ZBW8> region_;
};

}  // namespace

void eachComponent(const char* name, ZROI<ZC24>* src, ZROI<ZC24>* dst, const ComponentOperation& operation)
{
    const CallFrame frame(name);
    SeparateRegion<ZC24> from;  // writing one component could change another one of the source
    if (frame.clear() && placed(src) && placed(dst) && from.forPoints(src, dst)) {
        WorkingRegion in(src), out(dst);
        const auto done = [&](int component) {
            const auto number = static_cast<unsigned>(component);
            return ClrGetComponent(from.get(), in.get(), number, nullptr) == Z_OK &&
                   operation(in.get(), out.get(), component) == Z_OK && ClrSetComponent(out.get(), dst, number) == Z_OK;
        };
        static_cast<void>(in.exists() && out.exists() && done(0) && done(1) && done(2));
    }
    frame.finish();
}

}  // namespace zkit
