// Convolution with a kernel of the caller's: ImgConvolKernel, grey and colour, ImgConvolSymmetricKernel.
#include "zkit/img/convolution.h"

#include "filter/convolution.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"

using namespace zkit;

namespace {

// The kernel has as much data as its sizes ask for (1700).
bool usable(const ZKernel* kernel)
{
    const auto enough = [kernel] {
        const std::int64_t x = kernel->GetSizeX(), y = kernel->GetSizeY();
        return x > 0 && y > 0 && x * y * std::int64_t{sizeof(float)} <= std::int64_t{kernel->GetAllocatedSize()};
    };
    return require(kernel && kernel->GetDataPtr() && enough(), Z_ERROR_KERNEL_UNUSABLE);
}

bool hasFixedSize(const ZKernel& kernel)
{
    const short size = kernel.GetSizeX();
    return size == kernel.GetSizeY() && (size == 3 || size == 5 || size == 7);
}

bool usesFixedPoint(const ZKernel& kernel) { return kernel.GetRectifier() != 0 && hasFixedSize(kernel); }

// Rectifiers that fixed point does not know leave the destination as it is.
bool leavesUntouched(const ZKernel& kernel)
{
    return usesFixedPoint(kernel) && (kernel.GetRectifier() < 0 || kernel.GetRectifier() > 3);
}

// Passes on whether an inner stage has succeeded, and adds its name to the trail when it has not.
bool stage(const char* name, bool succeeded)
{
    if (!succeeded)
        ZTraceError(name);
    return succeeded;
}

const char* fixedStage(const ZKernel& kernel)
{
    return kernel.GetSizeX() == 3 ? "ConvolKernel3x3" : kernel.GetSizeX() == 5 ? "ConvolKernel5x5" : "ConvolKernel7x7";
}

const char* symmetricStage(const ZKernel& kernel)
{
    return kernel.GetSizeX() == 3   ? "ConvolKernelS3xS3"
           : kernel.GetSizeX() == 5 ? "ConvolKernelS5xS5"
                                    : "ConvolKernelS7xS7";
}

bool convolve(const Source& src, const Target& dst, int step, const ZKernel& kernel)
{
    if (leavesUntouched(kernel))
        return true;
    if (usesFixedPoint(kernel))
        return stage(fixedStage(kernel), convolveFixed(src, dst, step, fixedKernel(kernel)));
    return convolveFloating(src, dst, step, kernel);
}

bool bothPlaced(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, const ZKernel& kernel)
{
    const bool both = placed(src) && placed(dst);
    return usesFixedPoint(kernel) ? stage(fixedStage(kernel), both) : both;
}

}  // namespace

short ImgConvolKernel(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZKernel* kernel)
{
    const CallFrame frame("ImgConvolKernel");
    if (!(frame.clear() && filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && usable(kernel) &&
          bothPlaced(src, dst, *kernel) && convolve(source(src), target(dst), 1, *kernel)))
        return frame.trace();
    return frame.finish();
}

// All components at once, with the errors of one component after the other.
void ImgConvolKernel(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZKernel* kernel)
{
    const char* const grey = "ImgConvolKernel";
    const CallFrame frame("ImgConvolKernel (C24)");
    if (frame.clear() && require(src && dst, Z_ERROR_NO_PIXELS) && placed(src) &&
        stage(grey, filterSizes(src, dst) && usable(kernel)) && placed(dst) &&
        stage(grey, convolve(bytes(source(src), 3), bytes(target(dst), 3), 3, *kernel)))
        frame.finish();
    else
        frame.trace();
}

void ImgConvolSymmetricKernel(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZKernel* kernel)
{
    const auto convolved = [&] {
        return placed(src) && sameSize(dst, src) && placed(dst) &&
               (leavesUntouched(*kernel) || convolveFixed(source(src), target(dst), 1, symmetricFixedKernel(*kernel)));
    };
    const CallFrame frame("ImgConvolSymmetricKernel");
    if (usable(kernel) && require(kernel->GetRectifier() != 0, Z_ERROR_KERNEL_SYMMETRIC) &&
        require(hasFixedSize(*kernel), Z_ERROR_KERNEL_FIT) && stage(symmetricStage(*kernel), convolved()))
        frame.finish();
    else
        frame.trace();
}
