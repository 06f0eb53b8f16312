#include "support/errors.h"
#include "zkit/img/kernel.h"

#include <algorithm>

namespace {

class KernelTest : public OperationTest {};

std::vector<float> dataOf(const ZKernel& kernel)
{
    return {kernel.GetDataPtr(), kernel.GetDataPtr() + kernel.GetAllocatedSize() / sizeof(float)};
}

TEST_F(KernelTest, predefined)
{
    const std::vector<std::vector<float>> expected = {
        {0, 0, 0, -1, 1, -1, 1, 1, 1},   {0, 0, 0, -1, 0, -1, 1, 1, 1},      {1, 1, 1, 1, 1, 1, 1, 1, 1},
        {-1, 0, 1, -2, 0, 2, -1, 0, 1},  {-1, -2, -1, 0, 0, 0, 1, 2, 1},     {-1, 0, 1, -1, 0, 1, -1, 0, 1},
        {-1, -1, -1, 0, 0, 0, 1, 1, 1},  {0, 1, 0, 1, -4, 1, 0, 1, 0},       {1, 1, 1, 1, -8, 1, 1, 1, 1},
        {1, 2, 1, 2, 4, 2, 1, 2, 1},     {1, 1, 1, 1, 0, 1, 1, 1, 1},        {1, 1, 1, 1, 1, 1, 1, 1, 1},
        {0, -1, 0, -1, 5, -1, 0, -1, 0}, {-1, -1, -1, -1, 9, -1, -1, -1, -1}};
    for (int type = 1; type <= 14; ++type) {
        const ZKernel kernel(static_cast<KERNEL_TYPE>(type));
        EXPECT_EQ(dataOf(kernel), expected[static_cast<std::size_t>(type - 1)]);
        EXPECT_EQ(kernel.GetGain(), type > 3 ? 1 : 0);
        EXPECT_EQ(kernel.GetRectifier(), type > 3 ? 2 : 0);
    }
    for (const int type : {0, 15}) {
        ZKernel kernel(5, 5, 2, 3, 1, 4);
        EXPECT_EQ(kernel.SetKernel(static_cast<KERNEL_TYPE>(type)), 1011);
        EXPECT_FAILURE(1011, "ZKernel::SetKernel");
        EXPECT_EQ(kernel.GetSizeX() * 10 + kernel.GetSizeY(), 33);
        EXPECT_EQ(kernel.GetGain(), 0);
        EXPECT_EQ(kernel.GetOffset() + kernel.GetOutsideValue() + static_cast<unsigned>(kernel.GetRectifier()), 0U);
        EXPECT_EQ(kernel.GetAllocatedSize(), 100U);
    }
}

TEST_F(KernelTest, sizes_and_storage)
{
    ZKernel kernel;
    EXPECT_EQ(kernel.GetDataPtr(), nullptr);
    EXPECT_EQ(kernel.GetGain(), 1);
    EXPECT_EQ(kernel.GetRectifier(), 2);
    kernel.SetSizeX(5);
    EXPECT_EQ(kernel.GetAllocatedSize(), 0U);
    kernel.SetSizeY(7);
    EXPECT_EQ(kernel.GetAllocatedSize(), 140U);
    EXPECT_EQ(dataOf(kernel), std::vector<float>(35));
    kernel.SetKernelData(1, 2, 3, 4, 5, 6, 7, 8, 9);
    EXPECT_EQ(kernel.GetAllocatedSize(), 140U);
    kernel.SetSizeX(2);
    kernel.SetSizeY(-7);
    EXPECT_EQ(kernel.GetDataPtr()[8], 9);
    kernel.SetSizeX(-30000);
    EXPECT_EQ(kernel.GetAllocatedSize(), 140U);
    kernel.SetAllocatedSize(139);
    EXPECT_EQ(kernel.GetDataPtr()[8], 9);
    kernel.SetAllocatedSize(144);
    EXPECT_EQ(dataOf(kernel), std::vector<float>(36));
    for (const auto& [x, y] : {std::pair<short, short>{0, 5}, {-3, -3}, {3, -1}}) {
        const ZKernel none(x, y, 1, 2, 3, 4);
        EXPECT_EQ(none.GetDataPtr(), nullptr);
        EXPECT_EQ(none.GetAllocatedSize(), 0U);
        EXPECT_EQ(none.GetOutsideValue(), 4U);
    }
}

TEST_F(KernelTest, whole_kernels_are_copied_row_by_row)
{
    ZKernel kernel;
    kernel.SetKernelData(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25,
                         26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48);
    EXPECT_EQ(kernel.GetSizeX() * 10 + kernel.GetSizeY(), 77);
    for (int i = 0; i < 49; ++i)
        EXPECT_EQ(kernel.GetDataPtr()[i], static_cast<float>(i));
    kernel.SetKernelData(25, 24, 23, 22, 21, 20, 19, 18, 17, 16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1);
    EXPECT_EQ(kernel.GetSizeX() * 10 + kernel.GetSizeY(), 55);
    for (int i = 0; i < 49; ++i)
        EXPECT_EQ(kernel.GetDataPtr()[i], static_cast<float>(i < 25 ? 25 - i : i));
}

TEST_F(KernelTest, elements_count_rows_by_the_height)
{
    ZKernel kernel(3, 5, 1, 0, 2, 0);
    float value = 9;
    EXPECT_EQ(kernel.SetKernelData(2, 1, 4), 0);
    EXPECT_EQ(kernel.GetDataPtr()[7], 4);
    EXPECT_EQ(kernel.GetKernelData(2, 1, value), 0);
    EXPECT_EQ(value, 4);
    struct {
        int x, y;
        short code;
    } const wrong[] = {{-1, 9, 1011}, {3, 0, 1011}, {0, -1, 1012}, {2, 5, 1012}, {2, 3, 1704}, {0, 4, 1704}};
    for (const auto& [x, y, code] : wrong) {
        EXPECT_EQ(kernel.GetKernelData(x, y, value), code);
        EXPECT_FAILURE(code, "ZKernel::GetKernelData");
        EXPECT_EQ(kernel.SetKernelData(x, y, 1), code);
        EXPECT_FAILURE(code, "ZKernel::SetKernelData");
    }
    EXPECT_EQ(value, 4);
    ZKernel none;
    none.GetKernelData(-1, -1, value);
    EXPECT_FAILURE(1704, "ZKernel::GetKernelData");
}

TEST_F(KernelTest, a_pending_error_stops_members_with_a_name)
{
    ZKernel kernel(KERNEL_SOBEL_X);
    const std::vector<float> before = dataOf(kernel);
    float value = 7;
    ZSetError(Z_ERROR_BAD_MODE);
    kernel.SetKernel(KERNEL_LOWPASS_1);
    kernel.SetKernelData(1, 1, 1, 1, 1, 1, 1, 1, 1);
    kernel.SetKernelData(1, 1, 1.F);
    kernel.GetKernelData(1, 1, value);
    kernel.SetSizeX(9);
    kernel.SetSizeY(9);
    kernel.SetAllocatedSize(900);
    const ZKernel none(3, 3, 2, 0, 2, 0);
    kernel.SetGain(3);
    EXPECT_FAILURE(1009, "ZKernel::SetKernel", "ZKernel::SetKernelData 3x3", "ZKernel::SetKernelData",
                   "ZKernel::GetKernelData", "ZKernel::SetSizeX", "ZKernel::SetSizeY", "ZKernel::SetAllocatedSize",
                   "ZKernel::ZKernel");
    EXPECT_EQ(dataOf(kernel), before);
    EXPECT_EQ(kernel.GetSizeX() * 10 + kernel.GetSizeY(), 33);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(kernel.GetGain(), 3);
    EXPECT_EQ(none.GetDataPtr(), nullptr);
    EXPECT_EQ(none.GetGain(), 2);
}

}  // namespace
