// The kernel of general convolutions: coefficients and the way from a weighted sum to a pixel.
#pragma once

#include "zkit/core/error.h"
#include "zkit/export.h"

/// Predefined 3 x 3 kernels. The masks have three values and are no filters: their gain and rectifier are 0.
enum KERNEL_TYPE : int {
    KERNEL_MASK_EDGE = 1,
    KERNEL_MASK_GAP = 2,
    KERNEL_MASK_FULL = 3,
    KERNEL_SOBEL_X = 4,
    KERNEL_SOBEL_Y = 5,
    KERNEL_PREWITT_X = 6,
    KERNEL_PREWITT_Y = 7,
    KERNEL_LAPLACIAN_4 = 8,
    KERNEL_LAPLACIAN_8 = 9,
    KERNEL_LOWPASS_1 = 10,   ///< 1 2 1 in both directions
    KERNEL_LOWPASS_2 = 11,   ///< the ring of the eight neighbours
    KERNEL_LOWPASS_3 = 12,   ///< all nine alike
    KERNEL_HIGHPASS_1 = 13,  ///< 5 in the middle, four neighbours
    KERNEL_HIGHPASS_2 = 14,  ///< 9 in the middle, eight neighbours
};

/// A kernel of sizeX columns and sizeY rows. Convolutions read the coefficient of column x and row y at index
/// y * sizeX + x of the data; lowpass kernels are not divided by their sum here, the convolution does that.
///
/// Members that return an error refuse to work while one is pending, add their name to the trail and return it;
/// otherwise they return 0 or the code that they raise, with their name. The other members work always.
class ZKIT_IMG_API ZKernel {
public:
    /// Sizes 0, gain 1, offset 0, rectifier 2, outside value 0, no data.
    ZKernel();

    /// Zero coefficients; see the setters for the numbers. A size of zero or below has no data. Without memory for the
    /// coefficients (1303), or while an error is pending, the kernel has none; trail: "ZKernel::ZKernel".
    ZKernel(short sizeX, short sizeY, float gain, unsigned offset, short rectifier, unsigned outsideValue);

    /// A predefined kernel. Errors are those of SetKernel.
    explicit ZKernel(KERNEL_TYPE type);

    virtual ~ZKernel();
    ZKernel(const ZKernel&) = delete;
    ZKernel& operator=(const ZKernel&) = delete;

    /// Makes it a predefined kernel: 3 x 3, offset 0, outside value 0; gain 1 and rectifier 2, for masks 0 and 0.
    /// Errors: 1303, only the size is changed then; 1011 unknown type, which leaves 3 x 3, gain 0, offset 0, rectifier
    /// 0, outside value 0 and the coefficients that were there. Trail: "ZKernel::SetKernel".
    short SetKernel(KERNEL_TYPE type);

    /// Makes it 3 x 3 with these coefficients, row by row. Gain, offset, rectifier and outside value stay. Error: 1303,
    /// the size is changed then. Trail: "ZKernel::SetKernelData 3x3".
    short SetKernelData(float v0, float v1, float v2, float v3, float v4, float v5, float v6, float v7, float v8);

    /// The same, 5 x 5. Trail: "ZKernel::SetKernelData 5x5".
    short SetKernelData(float v0, float v1, float v2, float v3, float v4, float v5, float v6, float v7, float v8,
                        float v9, float v10, float v11, float v12, float v13, float v14, float v15, float v16,
                        float v17, float v18, float v19, float v20, float v21, float v22, float v23, float v24);

    /// The same, 7 x 7. Trail: "ZKernel::SetKernelData 5x5" too, which is intended.
    short SetKernelData(float v0, float v1, float v2, float v3, float v4, float v5, float v6, float v7, float v8,
                        float v9, float v10, float v11, float v12, float v13, float v14, float v15, float v16,
                        float v17, float v18, float v19, float v20, float v21, float v22, float v23, float v24,
                        float v25, float v26, float v27, float v28, float v29, float v30, float v31, float v32,
                        float v33, float v34, float v35, float v36, float v37, float v38, float v39, float v40,
                        float v41, float v42, float v43, float v44, float v45, float v46, float v47, float v48);

    /// Writes or reads one coefficient, at index y * sizeY + x of the data: that of column x and row y in a square
    /// kernel only, which is intended. Errors, in this order: 1704 no data; 1011 x not within 0..sizeX - 1; 1012 y not
    /// within 0..sizeY - 1; 1704 no such element of the data. `value` is unchanged then. Trail:
    /// "ZKernel::SetKernelData", "ZKernel::GetKernelData".
    short SetKernelData(int x, int y, float value);
    short GetKernelData(int x, int y, float& value);

    /// Changes a size. Coefficients stay where they lie in the data, but for data that has to grow (SetAllocatedSize).
    /// A size of zero or below is stored as it is. Error: 1303, the size is unchanged then; trail:
    /// "ZKernel::SetAllocatedSize", then "ZKernel::SetSizeX", "ZKernel::SetSizeY".
    short SetSizeX(short size);
    short SetSizeY(short size);

    /// Makes the data at least so many bytes. Data that has to grow is all zero then. Error: 1303, the kernel has no
    /// data then. Trail: "ZKernel::SetAllocatedSize".
    short SetAllocatedSize(unsigned bytes);

    short GetSizeX() const { return sizeX_; }
    short GetSizeY() const { return sizeY_; }
    float GetGain() const { return gain_; }
    unsigned GetOffset() const { return offset_; }
    short GetRectifier() const { return rectifier_; }
    unsigned GetOutsideValue() const { return outsideValue_; }
    unsigned GetAllocatedSize() const { return allocatedSize_; }  ///< bytes of the data
    float* GetDataPtr() const { return data_; }                   ///< null without data

    /// Factor of the weighted sum; the convolution divides it by the sum of the coefficients.
    void SetGain(float gain) { gain_ = gain; }

    /// Added to the rectified sum. Counts as a signed number.
    void SetOffset(unsigned offset) { offset_ = offset; }

    /// What becomes of negative sums: 0 nothing, 1 they alone are kept and made positive, 2 they give 0, 3 the absolute
    /// value. Convolutions say what other numbers do.
    void SetRectifier(short rectifier) { rectifier_ = rectifier; }

    /// The value that some convolutions take for pixels outside the region.
    void SetOutsideValue(unsigned value) { outsideValue_ = value; }

private:
    bool reserve(unsigned bytes);
    short setSquare(const char* name, short size, const float* values);
    short setSize(const char* name, short& size, short value, short other);
    bool holds(int x, int y) const;

    short sizeX_ = 0;
    short sizeY_ = 0;
    float gain_ = 1;
    unsigned offset_ = 0;
    short rectifier_ = 2;
    unsigned outsideValue_ = 0;
    float* data_ = nullptr;
    unsigned allocatedSize_ = 0;
};
