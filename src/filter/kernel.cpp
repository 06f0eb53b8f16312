#include "zkit/img/kernel.h"

#include "frame/call_frame.h"
#include "frame/checks.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace zkit;

namespace {

constexpr unsigned nine = 9 * sizeof(float);

constexpr float predefined[][9] = {{0, 0, 0, -1, 1, -1, 1, 1, 1},         // KERNEL_MASK_EDGE
                                   {0, 0, 0, -1, 0, -1, 1, 1, 1},         // KERNEL_MASK_GAP
                                   {1, 1, 1, 1, 1, 1, 1, 1, 1},           // KERNEL_MASK_FULL
                                   {-1, 0, 1, -2, 0, 2, -1, 0, 1},        // KERNEL_SOBEL_X
                                   {-1, -2, -1, 0, 0, 0, 1, 2, 1},        // KERNEL_SOBEL_Y
                                   {-1, 0, 1, -1, 0, 1, -1, 0, 1},        // KERNEL_PREWITT_X
                                   {-1, -1, -1, 0, 0, 0, 1, 1, 1},        // KERNEL_PREWITT_Y
                                   {0, 1, 0, 1, -4, 1, 0, 1, 0},          // KERNEL_LAPLACIAN_4
                                   {1, 1, 1, 1, -8, 1, 1, 1, 1},          // KERNEL_LAPLACIAN_8
                                   {1, 2, 1, 2, 4, 2, 1, 2, 1},           // KERNEL_LOWPASS_1
                                   {1, 1, 1, 1, 0, 1, 1, 1, 1},           // KERNEL_LOWPASS_2
                                   {1, 1, 1, 1, 1, 1, 1, 1, 1},           // KERNEL_LOWPASS_3
                                   {0, -1, 0, -1, 5, -1, 0, -1, 0},       // KERNEL_HIGHPASS_1
                                   {-1, -1, -1, -1, 9, -1, -1, -1, -1}};  // KERNEL_HIGHPASS_2

// Bytes of the coefficients; sizes of zero or below have none.
std::int64_t bytesOf(short sizeX, short sizeY)
{
    return sizeX > 0 && sizeY > 0 ? std::int64_t{sizeX} * sizeY * std::int64_t{sizeof(float)} : 0;
}

}  // namespace

ZKernel::ZKernel() = default;

ZKernel::ZKernel(short sizeX, short sizeY, float gain, unsigned offset, short rectifier, unsigned outsideValue)
    : sizeX_(sizeX), sizeY_(sizeY), gain_(gain), offset_(offset), rectifier_(rectifier), outsideValue_(outsideValue)
{
    const CallFrame frame("ZKernel::ZKernel");
    if (!(frame.clear() && reserve(static_cast<unsigned>(bytesOf(sizeX, sizeY)))))
        frame.trace();
}

ZKernel::ZKernel(KERNEL_TYPE type) { SetKernel(type); }

ZKernel::~ZKernel() { std::free(data_); }

// Makes room for so many bytes. Data that is large enough stays as it is.
bool ZKernel::reserve(unsigned bytes)
{
    if (allocatedSize_ >= bytes)
        return true;
    std::free(data_);
    data_ = static_cast<float*>(std::calloc(1, bytes));
    allocatedSize_ = data_ ? bytes : 0;
    return require(data_ != nullptr, Z_ERROR_OUT_OF_MEMORY);
}

short ZKernel::SetKernel(KERNEL_TYPE type)
{
    const CallFrame frame("ZKernel::SetKernel");
    if (!frame.clear())
        return frame.trace();
    sizeX_ = sizeY_ = 3;
    if (!reserve(nine))
        return frame.trace();
    gain_ = 0;
    offset_ = 0;
    rectifier_ = 0;
    outsideValue_ = 0;
    if (!require(type >= KERNEL_MASK_EDGE && type <= KERNEL_HIGHPASS_2, Z_ERROR_ARGUMENT_1_OUT_OF_RANGE))
        return frame.trace();
    std::memcpy(data_, predefined[type - KERNEL_MASK_EDGE], nine);
    if (type > KERNEL_MASK_FULL) {
        gain_ = 1;
        rectifier_ = 2;
    }
    return frame.finish();
}

short ZKernel::setSquare(const char* name, short size, const float* values)
{
    const CallFrame frame(name);
    if (!frame.clear())
        return frame.trace();
    sizeX_ = sizeY_ = size;
    const auto bytes = static_cast<unsigned>(bytesOf(size, size));
    if (!reserve(bytes))
        return frame.trace();
    std::memcpy(data_, values, bytes);
    return frame.finish();
}

short ZKernel::SetKernelData(float v0, float v1, float v2, float v3, float v4, float v5, float v6, float v7, float v8)
{
    const float values[] = {v0, v1, v2, v3, v4, v5, v6, v7, v8};
    return setSquare("ZKernel::SetKernelData 3x3", 3, values);
}

short ZKernel::SetKernelData(float v0, float v1, float v2, float v3, float v4, float v5, float v6, float v7, float v8,
                             float v9, float v10, float v11, float v12, float v13, float v14, float v15, float v16,
                             float v17, float v18, float v19, float v20, float v21, float v22, float v23, float v24)
{
    const float values[] = {v0,  v1,  v2,  v3,  v4,  v5,  v6,  v7,  v8,  v9,  v10, v11, v12,
                            v13, v14, v15, v16, v17, v18, v19, v20, v21, v22, v23, v24};
    return setSquare("ZKernel::SetKernelData 5x5", 5, values);
}

short ZKernel::SetKernelData(float v0, float v1, float v2, float v3, float v4, float v5, float v6, float v7, float v8,
                             float v9, float v10, float v11, float v12, float v13, float v14, float v15, float v16,
                             float v17, float v18, float v19, float v20, float v21, float v22, float v23, float v24,
                             float v25, float v26, float v27, float v28, float v29, float v30, float v31, float v32,
                             float v33, float v34, float v35, float v36, float v37, float v38, float v39, float v40,
                             float v41, float v42, float v43, float v44, float v45, float v46, float v47, float v48)
{
    const float values[] = {v0,  v1,  v2,  v3,  v4,  v5,  v6,  v7,  v8,  v9,  v10, v11, v12, v13, v14, v15, v16,
                            v17, v18, v19, v20, v21, v22, v23, v24, v25, v26, v27, v28, v29, v30, v31, v32, v33,
                            v34, v35, v36, v37, v38, v39, v40, v41, v42, v43, v44, v45, v46, v47, v48};
    return setSquare("ZKernel::SetKernelData 5x5", 7, values);  // the name of the 5 x 5 form, which is intended
}

// The index counts sizeY elements a row, which is intended.
bool ZKernel::holds(int x, int y) const
{
    return require(data_, Z_ERROR_KERNEL_INDEX) && require(x >= 0 && x < sizeX_, Z_ERROR_ARGUMENT_1_OUT_OF_RANGE) &&
           require(y >= 0 && y < sizeY_, Z_ERROR_ARGUMENT_2_OUT_OF_RANGE) &&
           require(static_cast<unsigned>(y * sizeY_ + x) < allocatedSize_ / sizeof(float), Z_ERROR_KERNEL_INDEX);
}

short ZKernel::SetKernelData(int x, int y, float value)
{
    const CallFrame frame("ZKernel::SetKernelData");
    if (!(frame.clear() && holds(x, y)))
        return frame.trace();
    data_[y * sizeY_ + x] = value;
    return frame.finish();
}

short ZKernel::GetKernelData(int x, int y, float& value)
{
    const CallFrame frame("ZKernel::GetKernelData");
    if (!(frame.clear() && holds(x, y)))
        return frame.trace();
    value = data_[y * sizeY_ + x];
    return frame.finish();
}

short ZKernel::setSize(const char* name, short& size, short value, short other)
{
    const CallFrame frame(name);
    if (!frame.clear())
        return frame.trace();
    const std::int64_t bytes = bytesOf(value, other);
    if (bytes > allocatedSize_ && SetAllocatedSize(static_cast<unsigned>(bytes)) != Z_OK)
        return frame.trace();
    size = value;
    return frame.finish();
}

short ZKernel::SetSizeX(short size) { return setSize("ZKernel::SetSizeX", sizeX_, size, sizeY_); }

short ZKernel::SetSizeY(short size) { return setSize("ZKernel::SetSizeY", sizeY_, size, sizeX_); }

short ZKernel::SetAllocatedSize(unsigned bytes)
{
    const CallFrame frame("ZKernel::SetAllocatedSize");
    if (!(frame.clear() && reserve(bytes)))
        return frame.trace();
    return frame.finish();
}
