#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/point.h"

namespace {

class LutTest : public OperationTest {
protected:
    // Entry i is 7 i + 3 modulo 256.
    LutTest()
    {
        untyped_.SetType(3, 1, 256);
        typed_.SetNumElements(256);
        for (unsigned i = 0; i < 256; ++i) {
            typed_[i] = static_cast<ZBW8>(7 * i + 3);
            static_cast<ZBW8*>(untyped_.GetDataPtr())[i] = typed_[i];
        }
    }

    ZVector untyped_;
    ZBW8Vector typed_;
};

TEST_F(LutTest, every_entry)
{
    ZImage<ZBW8> src(256, 1), dst(256, 1);
    for (int i = 0; i < 256; ++i)
        src.SetPixel(static_cast<ZBW8>(i), i, 0);
    withBothWorkers([&] {
        EXPECT_EQ(ImgLut(&src, &dst, &untyped_), 0);
        for (int i = 0; i < 256; ++i)
            EXPECT_EQ(dst.GetPixel(i, 0), (7 * i + 3) % 256);
        ImgLut(&src, &src, &typed_);
        EXPECT_EQ(bytesOf(src), bytesOf(dst));
        for (int i = 0; i < 256; ++i)
            src.SetPixel(static_cast<ZBW8>(i), i, 0);
    });
}

TEST_F(LutTest, the_table_may_be_overwritten)
{
    ZImage<ZBW8> src(16, 1), apart(16, 1), dst;
    for (int i = 0; i < 16; ++i)
        src.SetPixel(static_cast<ZBW8>(i / 2), i, 0);
    ImgLut(&src, &apart, &untyped_);
    dst.Attach(typed_.GetDataPtr(), 16, 1, 16);
    withBothWorkers([&] {
        for (unsigned i = 0; i < 16; ++i)
            typed_[i] = static_cast<ZBW8>(7 * i + 3);
        ImgLut(&src, &dst, &typed_);
        EXPECT_EQ(bytesOf(dst), bytesOf(apart));
    });
}

TEST_F(LutTest, checks_are_made_in_their_order)
{
    ZImage<ZBW8> src(4, 4), dst(4, 4), small(3, 4), empty, alsoEmpty;
    ZROI<ZBW8> outside(&dst, 1, 1, 4, 4);
    ZVector none, wrongType(2);
    ZVector* const noVector = nullptr;
    EXPECT_EQ(ImgLut(nullptr, &dst, &none), 1400);
    EXPECT_FAILURE(1400, "ImgLut");
    EXPECT_EQ(ImgLut(&src, &small, &none), 1402);
    EXPECT_FAILURE(1402, "ImgLut");
    EXPECT_EQ(ImgLut(&empty, &alsoEmpty, noVector), 1601);
    EXPECT_FAILURE(1601, "ImgLut");
    EXPECT_EQ(ImgLut(&empty, &alsoEmpty, &none), 1602);
    EXPECT_FAILURE(1602, "ImgLut");
    EXPECT_EQ(ImgLut(&empty, &alsoEmpty, &untyped_), 1400);
    EXPECT_FAILURE(1400, "ImgLut", "ImgLut");  // raised by the table's own frame
    EXPECT_EQ(ImgLut(&src, &outside, &untyped_), 1401);
    EXPECT_FAILURE(1401, "ImgLut", "ImgLut");
    EXPECT_EQ(ImgLut(&src, &dst, &wrongType), 0);  // 256 elements of 4 bytes: the first 256 bytes are the table

    struct {
        int dataSize, groups, length, type;
    } const structures[] = {{1, 1, 256, 1}, {2, 1, 255, 1}, {2, 0, 256, 1}, {2, 1, 256, 2}};
    for (const auto& s : structures) {
        none.SetStructure(s.dataSize, s.groups, s.length, s.type);
        EXPECT_EQ(ImgLut(&src, &dst, &none), 1602);
        EXPECT_FAILURE(1602, "ImgLut");
    }
    none.SetType(3, 1, 256);
    none.Reallocate(0);
    EXPECT_EQ(ImgLut(&src, &dst, &none), 1602);  // no group is left
    EXPECT_FAILURE(1602, "ImgLut");

    typed_.SetNumElements(255);
    dst.SetPixel(9, 0, 0);
    ImgLut(&src, &dst, &typed_);
    EXPECT_FAILURE(1613, "ImgLut");
    EXPECT_EQ(dst.GetPixel(0, 0), 9);
    ImgLut(&src, &dst, static_cast<ZBW8Vector*>(nullptr));
    EXPECT_FAILURE(1601, "ImgLut");
}

}  // namespace
