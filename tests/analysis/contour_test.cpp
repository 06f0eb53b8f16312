#include "support/contour_model.h"
#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/contour.h"

#include <climits>

namespace {

class ContourTest : public OperationTest {};

using Positions = std::vector<std::pair<int, int>>;

template <class Element>
Positions positions(const ZVectorTemplate<Element>& path)
{
    Positions all;
    for (unsigned i = 0; i < path.GetNumElements(); ++i)
        all.emplace_back(path.GetDataPtr()[i].X, path.GetDataPtr()[i].Y);
    return all;
}

std::vector<ContourModel::Step> steps(const ZVector& path)
{
    std::vector<ContourModel::Step> all;
    const auto* values = static_cast<const std::int32_t*>(path.GetDataPtr());
    for (int i = 0; i < path.GetNbGroup(); ++i)
        all.push_back({values[3 * i], values[3 * i + 1], values[3 * i + 2]});
    return all;
}

// Follows what is not 0.
Positions outline(ZROI<ZBW8>& region, CONTOUR_MODE mode, int x, int y, CONNEXITY connexity = CONNEXITY_8)
{
    ZPathVector path;
    ImgContour(&region, mode, x, y, CONTOUR_THRESHOLD_ABOVE, 1, connexity, &path);
    return positions(path);
}

TEST_F(ContourTest, blocks)
{
    ZImage<ZBW8> image;
    draw(image, "000000 000000 001100 001100 000000");
    for (const CONNEXITY connexity : {CONNEXITY_4, CONNEXITY_8}) {
        EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE, 2, 2, connexity), (Positions{{2, 2}, {3, 2}, {3, 3}, {2, 3}}));
        EXPECT_EQ(outline(image, CONTOUR_ANTICLOCKWISE, 2, 2, connexity), (Positions{{2, 2}, {2, 3}, {3, 3}, {3, 2}}));
    }
    draw(image, "000 050 000");
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE, 1, 1), Positions{});
    EXPECT_FAILURE(1502, "ImgContour (ZPathVector)");
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE, 0, 1), Positions{});
    EXPECT_FAILURE(1500, "ImgContour (ZPathVector)");

    draw(image, "0000000 0111110 0111110 0111110 0111110 0111110 0000000");
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE, 1, 1), (Positions{{1, 1},
                                                                  {2, 1},
                                                                  {3, 1},
                                                                  {4, 1},
                                                                  {5, 1},
                                                                  {5, 2},
                                                                  {5, 3},
                                                                  {5, 4},
                                                                  {5, 5},
                                                                  {4, 5},
                                                                  {3, 5},
                                                                  {2, 5},
                                                                  {1, 5},
                                                                  {1, 4},
                                                                  {1, 3},
                                                                  {1, 2}}));
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE, 3, 3), Positions{});
    EXPECT_FAILURE(1501, "ImgContour (ZPathVector)");

    ZBW8PathVector holes;  // levels at or below 0 are the object
    ImgContour(&image, CONTOUR_CLOCKWISE_ALONG_EDGE, 0, 0, CONTOUR_THRESHOLD_BELOW, 0, CONNEXITY_4, &holes);
    EXPECT_EQ(holes.GetNumElements(), 24U);
}

// An object cut off by the edge on its right.
TEST_F(ContourTest, the_edge)
{
    ZImage<ZBW8> image;
    draw(image, "000000 001111 001111 000000");
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE, 2, 1), (Positions{{2, 1}, {3, 1}, {4, 1}}));
    EXPECT_FAILURE(1503, "ImgContour (ZPathVector)");
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE_ALONG_EDGE, 2, 1),
              (Positions{{2, 1}, {3, 1}, {4, 1}, {5, 1}, {5, 2}, {4, 2}, {3, 2}, {2, 2}}));
    // Back from the pixel that has met the edge: a path ends there.
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE_THEN_BACK, 2, 1), (Positions{{5, 1}}));
    EXPECT_FAILURE(1503, "ImgContour (ZPathVector)");
    // The path is not asked for room that it need not have.
    draw(image, "111 000");
    EXPECT_FAILURE(0);
    ZPathVector path(1);
    ImgContour(&image, CONTOUR_CLOCKWISE_THEN_BACK, 1, 0, CONTOUR_THRESHOLD_ABOVE, 1, CONNEXITY_4, &path);
    EXPECT_EQ(path.GetMaxElements(), 1U);
    EXPECT_FAILURE(1503, "ImgContour (ZPathVector)");
}

// A ring that touches the lower edge: the walk back from there follows its hole, and the hole's outline closes.
TEST_F(ContourTest, an_untyped_walk_back_may_close)
{
    ZImage<ZBW8> image;
    draw(image, "000000000 000000000 000000000 000000000 000010000 000101000 001000100 000101000 000010000");
    ZVector path;
    EXPECT_EQ(ImgContour(&image, CONTOUR_CLOCKWISE_THEN_BACK, 2, 6, CONTOUR_THRESHOLD_ABOVE, 1, CONNEXITY_8, &path), 0);
    EXPECT_FAILURE(0);
    EXPECT_EQ(steps(path),
              (std::vector<ContourModel::Step>{
                  {4, 8, 3}, {3, 7, 3}, {2, 6, 1}, {3, 5, 1}, {4, 4, 7}, {5, 5, 7}, {6, 6, 5}, {5, 7, 5}}));
    EXPECT_EQ(outline(image, CONTOUR_CLOCKWISE_THEN_BACK, 2, 6), (Positions{{4, 8}}));
    EXPECT_FAILURE(1503, "ImgContour (ZPathVector)");
}

// All modes, connexities and senses over noise, in regions of larger images.
TEST_F(ContourTest, as_by_tables)
{
    Random random(31);
    std::vector<int> codes(2000);
    for (int round = 0; round < 6000; ++round) {
        const int width = random(1, 12), height = random(1, 12);
        ZImage<ZBW8> image(width + 3, height + 3);
        fill(image, random);
        ZROI<ZBW8> region(&image, random(0, 3), random(0, 3), width, height);
        const auto mode = static_cast<CONTOUR_MODE>(random(0, 5));
        const auto sense = static_cast<CONTOUR_THRESHOLD>(random(0, 2));
        const auto connexity = static_cast<CONNEXITY>(random(0, 2));
        const auto threshold = static_cast<unsigned>(random(-3, 260));
        const int x = random(-1, width), y = random(-1, height);
        SCOPED_TRACE(testing::Message() << width << 'x' << height << " mode " << mode << " at " << x << ',' << y);

        const ContourModel model(region, mode, x, y, sense, threshold, connexity, false);
        ZPathVector path(5);
        ZBW8PathVector levels;
        path.SetNumElements(3);
        ImgContour(&region, mode, x, y, sense, threshold, connexity, &path);
        const Failure failure = takeFailure();
        EXPECT_EQ(failure.code, model.code);
        EXPECT_EQ(failure.trail, model.code ? Trail{"ImgContour (ZPathVector)"} : Trail{});
        ImgContour(&region, mode, x, y, sense, threshold, connexity, &levels);
        EXPECT_EQ(takeFailure().code, model.code);
        ASSERT_EQ(path.GetNumElements(), model.steps.size());
        ASSERT_EQ(levels.GetNumElements(), model.steps.size());
        for (unsigned i = 0; i < path.GetNumElements(); ++i) {
            const ContourModel::Step& step = model.steps[i];
            const ZBW8Path& level = levels[i];
            EXPECT_TRUE(path[i].X == step.x && path[i].Y == step.y && level.X == step.x && level.Y == step.y);
            EXPECT_EQ(level.Pixel, region.GetPixel(step.x, step.y));
        }

        const ContourModel untypedModel(region, mode, x, y, sense, threshold, connexity, true);
        ZVector untyped(round % 3);
        EXPECT_EQ(ImgContour(&region, mode, x, y, sense, threshold, connexity, &untyped), untypedModel.code);
        EXPECT_EQ(takeFailure().trail, untypedModel.code ? Trail{"ImgContour (ZVector)"} : Trail{});
        EXPECT_EQ(steps(untyped), untypedModel.steps);
        ++codes[static_cast<std::size_t>(model.code)];
        ++codes[static_cast<std::size_t>(untypedModel.code)];
    }
    for (const int code : {0, 1013, 1014, 1500, 1501, 1502, 1503, 1504})
        EXPECT_GT(codes[static_cast<std::size_t>(code)], 20) << code;
}

TEST_F(ContourTest, an_untyped_vector_grows_by_512_groups_to_an_eighth_of_the_region)
{
    ZImage<ZBW8> image(700, 41);  // 2 rows in 41 of which all pixels are boundary
    const auto follow = [&](ZVector& path) {
        return ImgContour(&image, CONTOUR_CLOCKWISE, 1, 3, CONTOUR_THRESHOLD_ABOVE, 1, CONNEXITY_8, &path);
    };
    for (int x = 1; x < 699; ++x)
        for (int y = 3; y < 38; ++y)
            image.SetPixel(x % 2 || y == 37 ? 1 : 0, x, y);
    ZVector path(1);
    EXPECT_EQ(follow(path), 1504);
    EXPECT_FAILURE(1504, "ImgContour (ZVector)");
    EXPECT_EQ(path.GetNbGroup(), 700 * 41 / 8);
    EXPECT_EQ(path.GetAllocatedSize(), 24000 + 4 * 6144);
    path.SetType(1, 1, 0);
    EXPECT_EQ(follow(path), 1504);
    ZClearError();
    EXPECT_EQ(path.GetAllocatedSize(), 12 + 7 * 6144 + 6144);

    path.Reallocate(0);
    EXPECT_EQ(follow(path), 1601);
    EXPECT_FAILURE(1601, "ImgContour (ZVector)");
    path.SetStructure(1, 50, 3, 1);  // still of type 1
    EXPECT_EQ(follow(path), 1602);
    EXPECT_FAILURE(1602, "ImgContour (ZVector)");
    EXPECT_EQ(path.GetNbGroup(), 0);
}

TEST_F(ContourTest, refused)
{
    ZImage<ZBW8> image(9, 9), empty;
    ZPathVector path;
    path.SetNumElements(2);
    const auto follow = [&](ZROI<ZBW8>* region, int mode, int x, int y, unsigned threshold = 0) {
        ImgContour(region, static_cast<CONTOUR_MODE>(mode), x, y, CONTOUR_THRESHOLD_ABOVE, threshold, CONNEXITY_8,
                   &path);
        return takeFailure().code;
    };
    EXPECT_EQ(follow(nullptr, 6, 0, 0), 1009);
    EXPECT_EQ(follow(nullptr, -1, 0, 0), 1009);
    EXPECT_EQ(path.GetNumElements(), 2U);
    EXPECT_EQ(follow(&empty, 0, -1, 0), 1400);
    EXPECT_EQ(path.GetNumElements(), 0U);
    EXPECT_EQ(follow(&image, 0, INT_MAX, INT_MAX), 1013);
    EXPECT_EQ(follow(&image, 0, 0, INT_MIN), 1014);
    EXPECT_EQ(follow(&image, 0, 0, 9), 1014);
    EXPECT_EQ(follow(&image, 0, 0, 0, UINT_MAX), 1500);
    ZROI<ZBW8> nothing(&image, 9, 9, 0, 0);
    EXPECT_EQ(follow(&nothing, 0, 0, 0), 1013);
    ImgContour(&image, CONTOUR_CLOCKWISE, 0, 0, CONTOUR_THRESHOLD_ABOVE, 0, CONNEXITY_4,
               static_cast<ZBW8PathVector*>(nullptr));
    EXPECT_FAILURE(1601, "ImgContour (ZBW8PathVector)");
    EXPECT_EQ(ImgContour(&empty, CONTOUR_CLOCKWISE, 0, 0, CONTOUR_THRESHOLD_ABOVE, 0, CONNEXITY_4,
                         static_cast<ZVector*>(nullptr)),
              1601);
    EXPECT_FAILURE(1601, "ImgContour (ZVector)");
}

}  // namespace
