#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/point.h"

#include <set>

namespace {

using Code = ARITH_LOGIC_OPERATIONS;

Code code(int number) { return static_cast<Code>(number); }

// Images of one row with the given pixels.
template <class T>
struct RowImage : ZImage<T> {
    RowImage(std::initializer_list<T> pixels) : ZImage<T>(static_cast<int>(pixels.size()), 1)
    {
        int x = 0;
        for (const T& pixel : pixels)
            this->SetPixel(pixel, x++, 0);
    }
};

class ArithmeticTest : public OperationTest {};

struct Case {
    int code, a, b, expected;
};

constexpr Case greyCases[] = {
    {2, 200, 55, 255},   {2, 200, 56, 255}, {2, 1, 2, 3},        {3, 5, 7, 0},        {3, 7, 5, 2},
    {4, 15, 17, 255},    {4, 16, 16, 255},  {4, 15, 16, 240},    {5, 255, 2, 127},    {5, 254, 255, 0},
    {5, 255, 255, 1},    {6, 255, 16, 15},  {6, 7, 255, 7},      {9, 255, 254, 254},  {9, 0, 1, 0},
    {10, 0, 255, 0},     {10, 255, 0, 255}, {10, 9, 9, 127},     {10, 10, 9, 128},    {11, 255, 255, 254},
    {11, 16, 15, 0},     {12, 1, 2, 128},   {12, 254, 255, 254}, {12, 9, 9, 255},     {12, 0, 0, 255},
    {13, 12, 10, 8},     {14, 12, 10, 14},  {15, 12, 10, 6},     {19, 3, 200, 3},     {20, 3, 200, 200},
    {23, 4, 4, 255},     {23, 4, 5, 0},     {24, 4, 5, 255},     {24, 5, 5, 0},       {25, 5, 5, 255},
    {25, 4, 5, 0},       {26, 5, 5, 255},   {26, 6, 5, 0},       {27, 128, 127, 255}, {27, 5, 5, 0},
    {28, 127, 128, 255}, {28, 5, 5, 0},
};

TEST_F(ArithmeticTest, worked_cases)
{
    withBothWorkers([] {
        for (const Case& c : greyCases) {
            SCOPED_TRACE(testing::Message() << "code " << c.code << ": " << c.a << ", " << c.b);
            const auto a = static_cast<ZBW8>(c.a), b = static_cast<ZBW8>(c.b);
            RowImage<ZBW8> imageA{a}, imageB{b}, dst{77};
            RowImage<ZC24> colourA{{a, a, a}}, colourB{{b, b, b}}, colour{{1, 2, 3}};
            const auto take = [&dst] { return dst.GetPixel(0, 0); };
            ImgOper(code(c.code), &imageA, &imageB, &dst);
            EXPECT_EQ(take(), c.expected);
            ImgOper(code(c.code), &imageA, b, &dst);
            EXPECT_EQ(take(), c.expected);
            ImgOper(code(c.code), a, &imageB, &dst);
            EXPECT_EQ(take(), c.expected);
            ImgOper(code(c.code), &colourA, &colourB, &colour);
            EXPECT_EQ(colour.GetPixel(0, 0).c2, c.expected);
            ImgOper(code(c.code), &colourA, ZC24{b, b, b}, &colour);
            EXPECT_EQ(colour.GetPixel(0, 0).c0, c.expected);
            ImgOper(code(c.code), ZC24{a, a, a}, &colourB, &colour);
            EXPECT_EQ(colour.GetPixel(0, 0).c1, c.expected);
        }
    });
}

constexpr Case logicalCases[] = {{16, 0, 3, 255}, {16, 1, 2, 0},  {17, 0, 0, 255}, {17, 0, 1, 0},
                                 {18, 3, 4, 255}, {18, 0, 4, 0},  {18, 0, 0, 255}, {21, 0, 9, 9},
                                 {21, 1, 9, 77},  {22, 0, 9, 77}, {22, 1, 9, 9}};

constexpr Case wideCases[] = {
    {2, 65500, 35, 65535},   {2, 65500, 36, 65535}, {3, 10, 200, 0},        {4, 1000, 65, 65000}, {4, 1000, 66, 65535},
    {5, 65535, 255, 257},    {6, 65535, 16, 15},    {9, 65535, 255, 32895}, {10, 0, 0, 32767},    {10, 65535, 0, 65535},
    {11, 65535, 255, 65279}, {12, 1000, 4, 64000},  {12, 1000, 3, 65535},   {16, 256, 0, 65535},  {17, 0, 0, 65535},
    {18, 256, 1, 65535},     {20, 256, 255, 256},   {23, 255, 255, 65535},  {23, 511, 255, 0},    {27, 256, 255, 65535},
    {29, 65535, 2, 1},       {30, 1, 2, 65535},
};

TEST_F(ArithmeticTest, worked_cases_of_single_forms)
{
    withBothWorkers([] {
        for (const Case& c : logicalCases) {
            SCOPED_TRACE(testing::Message() << "code " << c.code << ": " << c.a << ", " << c.b);
            RowImage<ZBW8> a{static_cast<ZBW8>(c.a)}, b{static_cast<ZBW8>(c.b)}, dst{77};
            ImgOper(code(c.code), &a, &b, &dst);
            EXPECT_EQ(dst.GetPixel(0, 0), c.expected);
        }
        for (const Case& c : wideCases) {
            SCOPED_TRACE(testing::Message() << "code " << c.code << ": " << c.a << ", " << c.b);
            RowImage<ZBW16> a{static_cast<ZBW16>(c.a)}, dst{7};
            RowImage<ZBW8> b{static_cast<ZBW8>(c.b)};
            ImgOper(code(c.code), &a, &b, &dst);
            EXPECT_EQ(dst.GetPixel(0, 0), c.expected);
        }
        // Bytes in their own right: products do not saturate at 255.
        RowImage<ZBW8> a{250, 3}, b{255, 5};
        RowImage<ZBW16> dst{0, 0};
        ImgOper(ARITH_LOGIC_MULTIPLY, &a, &b, &dst);
        EXPECT_EQ(bytesOf(dst), bytesOf(RowImage<ZBW16>{63750, 15}));
        ImgOper(ARITH_LOGIC_SUBTRACT, &a, &b, &dst);
        EXPECT_EQ(bytesOf(dst), bytesOf(RowImage<ZBW16>{0, 0}));
    });
}

TEST_F(ArithmeticTest, shifts_of_any_size)
{
    RowImage<ZBW8> src{0, 1, 3, 255}, dst{9, 9, 9, 9};
    const std::tuple<int, ZBW8, std::vector<std::uint8_t>> cases[] = {
        {7, 0, {0, 1, 3, 255}},     {7, 6, {0, 64, 192, 255}},  {7, 7, {0, 128, 255, 255}},
        {7, 8, {0, 255, 255, 255}}, {7, 9, {0, 255, 255, 255}}, {7, 255, {0, 255, 255, 255}},
        {8, 0, {0, 1, 3, 255}},     {8, 1, {0, 0, 1, 127}},     {8, 7, {0, 0, 0, 1}},
        {8, 8, {0, 0, 0, 0}},       {8, 9, {0, 0, 0, 0}},       {8, 200, {0, 0, 0, 0}}};
    withBothWorkers([&] {
        for (const auto& [number, count, expected] : cases) {
            SCOPED_TRACE(testing::Message() << "code " << number << " by " << int(count));
            ImgOper(code(number), &src, count, &dst);
            EXPECT_EQ(bytesOf(dst), expected);
            EXPECT_EQ(ImgOper1c2(code(number), &src, count, &dst), 0);
            EXPECT_EQ(bytesOf(dst), expected);
        }
        RowImage<ZC24> colour{{200, 200, 200}};
        ImgOper(ARITH_LOGIC_SHIFT_RIGHT, &colour, ZC24{0, 3, 9}, &colour);
        EXPECT_EQ(bytesOf(colour), (std::vector<std::uint8_t>{200, 25, 0}));
    });
}

TEST_F(ArithmeticTest, constants_and_images_alone)
{
    RowImage<ZBW8> grey{0, 100, 255}, dst{1, 2, 3};
    RowImage<ZC24> colour{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    RowImage<ZBW16> wide{1, 2, 3};
    ImgOper(ARITH_LOGIC_COPY, 7, &dst);
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{7, 7, 7}));
    ImgOper(ARITH_LOGIC_INVERT, 7, &grey, &dst);
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{248, 248, 248}));
    ImgOper(ARITH_LOGIC_INVERT, &grey, &dst);
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{255, 155, 0}));
    ImgOper(ARITH_LOGIC_COPY, ZBW16{0x1234}, &wide);
    EXPECT_EQ(bytesOf(wide), (std::vector<std::uint8_t>{0x34, 0x12, 0x34, 0x12, 0x34, 0x12}));
    ImgOper(ARITH_LOGIC_INVERT, &colour, &colour);
    EXPECT_EQ(bytesOf(colour), (std::vector<std::uint8_t>{254, 253, 252, 251, 250, 249, 248, 247, 246}));
    ImgOper(ARITH_LOGIC_INVERT, &grey, &colour);
    EXPECT_EQ(bytesOf(colour), (std::vector<std::uint8_t>{255, 255, 255, 155, 155, 155, 0, 0, 0}));
    ImgOper(ARITH_LOGIC_COPY, ZC24{1, 2, 3}, &colour);
    EXPECT_EQ(bytesOf(colour), (std::vector<std::uint8_t>{1, 2, 3, 1, 2, 3, 1, 2, 3}));
    EXPECT_EQ(ImgOper1c2(ARITH_LOGIC_SET, &grey, 42, &dst), 0);
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{42, 42, 42}));
    EXPECT_EQ(ImgOper1c2(ARITH_LOGIC_COPY_WHERE_NONZERO, &grey, 42, &dst), 0);
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{0, 42, 42}));  // by table: not what the destination held
}

// Every form by its name, called with a code.
struct Form {
    const char* name;
    std::set<int> codes;
    std::function<void(Code)> call;
};

class ArithmeticFormsTest : public ArithmeticTest {
protected:
    static std::set<int> range(int first, int last, std::initializer_list<int> without = {})
    {
        std::set<int> codes;
        for (int number = first; number <= last; ++number)
            codes.insert(number);
        for (const int number : without)
            codes.erase(number);
        return codes;
    }

    // Divides and multiplies by 1 and 5, never by 0.
    RowImage<ZBW8> a_{9, 200}, b_{1, 5}, grey_{0, 0};
    RowImage<ZC24> ca_{{9, 10, 11}, {200, 0, 1}}, cb_{{1, 2, 3}, {5, 6, 7}}, colour_{{0, 0, 0}, {0, 0, 0}};
    RowImage<ZBW16> wa_{9, 2000}, wide_{0, 0};
    ZBW8 c_ = 3;
    ZC24 cc_{3, 4, 5};

    const std::vector<Form> forms_ = {
        {"ImgOper (BW8 Const to Image)", {0}, [this](Code o) { ImgOper(o, c_, &grey_); }},
        {"ImgOper (BW8 Image to Image)", {0, 1}, [this](Code o) { ImgOper(o, &a_, &grey_); }},
        {"ImgOper (BW8 Image to C24 Image)", {0, 1}, [this](Code o) { ImgOper(o, &a_, &colour_); }},
        {"ImgOper (BW8 Const, Image to Image)", range(0, 28, {7, 8, 16, 17, 18, 21, 22}),
         [this](Code o) { ImgOper(o, c_, &b_, &grey_); }},
        {"ImgOper (BW8 Image, Const to Image)", range(0, 28, {16, 17, 18}),
         [this](Code o) { ImgOper(o, &a_, c_, &grey_); }},
        {"ImgOper (BW8 Image, Image to Image)", range(2, 28, {7, 8}), [this](Code o) { ImgOper(o, &a_, &b_, &grey_); }},
        {"ImgOper (C24 Const to Image)", {0}, [this](Code o) { ImgOper(o, cc_, &colour_); }},
        {"ImgOper (C24 Image to Image)", {0, 1}, [this](Code o) { ImgOper(o, &ca_, &colour_); }},
        {"ImgOper (C24 Const, Image to Image)", range(0, 28, {7, 8, 16, 17, 18, 21, 22}),
         [this](Code o) { ImgOper(o, cc_, &cb_, &colour_); }},
        {"ImgOper (C24 Image, Const to Image)", range(2, 28, {16, 17, 18}),
         [this](Code o) { ImgOper(o, &ca_, cc_, &colour_); }},
        {"ImgOper (C24 Image, Image to Image)", range(2, 28, {7, 8}),
         [this](Code o) { ImgOper(o, &ca_, &cb_, &colour_); }},
        {"ImgOper (BW8 Image, C24 Image to C24 Image)", range(2, 22, {7, 8}),
         [this](Code o) { ImgOper(o, &a_, &cb_, &colour_); }},
        {"ImgOper (C24 Image, BW8 Image to C24 Image)", range(2, 22, {7, 8}),
         [this](Code o) { ImgOper(o, &ca_, &b_, &colour_); }},
        {"ImgOper (BW16 Const to BW16 Image)", {0}, [this](Code o) { ImgOper(o, ZBW16{300}, &wide_); }},
        {"ImgOper (BW8 Image and BW8 Image to BW16 Image)",
         {2, 3, 4, 5},
         [this](Code o) { ImgOper(o, &a_, &b_, &wide_); }},
        {"ImgOper (BW16 Image and BW8 Image to BW16 IMage)", range(2, 30, {7, 8}),
         [this](Code o) { ImgOper(o, &wa_, &b_, &wide_); }},
        {"ImgOper1c2",
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 14, 15, 19, 20, 22, 33},
         [this](Code o) { ImgOper1c2(o, &a_, c_, &grey_); }},
        {"ImgOper123", {2, 3, 4, 5, 6, 9, 13, 14, 15, 19, 20}, [this](Code o) { ImgOper123(o, &a_, &b_, &grey_); }},
    };
};

TEST_F(ArithmeticFormsTest, every_form_accepts_its_codes_alone)
{
    for (const Form& form : forms_)
        for (const int number :
             {INT_MIN, -1, 0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,      17,
              18,      19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 64, 256 + 2, INT_MAX}) {
            SCOPED_TRACE(testing::Message() << form.name << " with code " << number);
            const auto before = {bytesOf(grey_), bytesOf(colour_), bytesOf(wide_)};
            form.call(code(number));
            if (form.codes.count(number)) {
                EXPECT_EQ(ZGetError(), 0);
                continue;
            }
            const bool noCase = std::string(form.name) == "ImgOper123" && number >= 2 && number <= 20;
            EXPECT_FAILURE(noCase ? 32767 : 1003, form.name);
            const auto after = {bytesOf(grey_), bytesOf(colour_), bytesOf(wide_)};
            EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
        }
}

TEST_F(ArithmeticFormsTest, zero_divisors_are_told_and_give_the_largest_value)
{
    withBothWorkers([&] {
        cb_.SetPixel({1, 2, 0}, 0, 0);
        b_.SetPixel(0, 0, 0);
        for (const Form& form : forms_)
            for (const int number : {5, 6}) {
                const std::string name = form.name;
                const bool constantDivides = name.find("Const to") != std::string::npos || name == "ImgOper1c2";
                if (!form.codes.count(number) || constantDivides)
                    continue;
                SCOPED_TRACE(testing::Message() << name << " with code " << number);
                form.call(code(number));
                EXPECT_FAILURE(1412, form.name);
            }
        ImgOper123(ARITH_LOGIC_DIVIDE, &a_, &b_, &grey_);
        EXPECT_EQ(bytesOf(grey_), (std::vector<std::uint8_t>{255, 40}));
        ZClearError();
        ImgOper(ARITH_LOGIC_MODULO, &wa_, &b_, &wide_);
        EXPECT_EQ(bytesOf(wide_), bytesOf(RowImage<ZBW16>{65535, 0}));
        ZClearError();
        ImgOper(ARITH_LOGIC_DIVIDE, &ca_, &cb_, &colour_);
        EXPECT_EQ(bytesOf(colour_), (std::vector<std::uint8_t>{9, 5, 255, 40, 0, 0}));
        ZClearError();
        ImgOper(ARITH_LOGIC_SCALED_DIVIDE, &a_, &b_, &grey_);  // tells nothing
        EXPECT_EQ(bytesOf(grey_), (std::vector<std::uint8_t>{255, 255}));

        const std::vector<std::uint8_t> before = bytesOf(grey_), colourBefore = bytesOf(colour_);
        EXPECT_EQ(ImgOper1c2(ARITH_LOGIC_MODULO, &a_, 0, &grey_), 1411);
        EXPECT_FAILURE(1411, "ImgOper1c2");
        ImgOper(ARITH_LOGIC_DIVIDE, &a_, ZBW8{0}, &grey_);
        EXPECT_FAILURE(1411, "ImgOper (BW8 Image, Const to Image)");
        ImgOper(ARITH_LOGIC_DIVIDE, &ca_, ZC24{1, 0, 1}, &colour_);
        EXPECT_FAILURE(1411, "ImgOper (C24 Image, Const to Image)");
        EXPECT_EQ(bytesOf(grey_), before);
        EXPECT_EQ(bytesOf(colour_), colourBefore);
        // A row that fills vectors and one that ends in one, with its only zero at the end.
        for (const int width : {32, 40, 97}) {
            ZImage<ZBW8> ones(width, 1), result(width, 1);
            ImgOper(ARITH_LOGIC_COPY, 1, &ones);
            ImgOper(ARITH_LOGIC_DIVIDE, &ones, &ones, &result);
            EXPECT_EQ(ZGetError(), 0);
            ones.SetPixel(0, width - 1, 0);
            ImgOper(ARITH_LOGIC_DIVIDE, &ones, &ones, &result);
            EXPECT_FAILURE(1412, "ImgOper (BW8 Image, Image to Image)");
        }
    });
}

TEST_F(ArithmeticFormsTest, regions_are_checked_in_order)
{
    ZImage<ZBW8> small(1, 1), empty;
    ZROI<ZBW8> outside(&a_, 1, 0, 2, 1);
    ZROI<ZC24> nowhere;
    nowhere.SetPlacement(0, 0, 2, 1);

    // A grey and a colour image: sizes, then pixels without a name in the trail, then the place.
    ImgOper(ARITH_LOGIC_ADD, &small, &nowhere, &colour_);
    EXPECT_FAILURE(1403, "ImgOper (BW8 Image, C24 Image to C24 Image)");
    ImgOper(code(99), &a_, &nowhere, &colour_);
    EXPECT_FAILURE(1400);
    ImgOper(code(99), &ca_, &outside, &colour_);
    EXPECT_FAILURE(1401, "ImgOper (C24 Image, BW8 Image to C24 Image)");
    ImgOper(ARITH_LOGIC_ADD, static_cast<ZROI<ZC24>*>(nullptr), &b_, &colour_);
    EXPECT_FAILURE(1400, "ImgOper (C24 Image, BW8 Image to C24 Image)");

    ImgOper(code(99), &outside, &small, &grey_);
    EXPECT_FAILURE(1401, "ImgOper (BW8 Image, Image to Image)");
    ImgOper(code(99), &a_, &small, &grey_);
    EXPECT_FAILURE(1402, "ImgOper (BW8 Image, Image to Image)");

    ImgOper(ARITH_LOGIC_ADD, ZBW8{1}, &empty, &outside);  // the source first, also behind a constant
    EXPECT_FAILURE(1400, "ImgOper (BW8 Const, Image to Image)");

    EXPECT_EQ(ImgOper123(code(99), &a_, &small, &empty), 1402);
    EXPECT_FAILURE(1402, "ImgOper123");
    EXPECT_EQ(ImgOper123(code(99), &a_, &outside, &grey_), 1401);
    EXPECT_FAILURE(1401, "ImgOper123");
    EXPECT_EQ(ImgOper1c2(code(99), &a_, 1, &small), 1402);
    EXPECT_FAILURE(1402, "ImgOper1c2");
    EXPECT_EQ(ImgOper1c2(ARITH_LOGIC_ADD, &outside, 1, &grey_), 1401);
    EXPECT_FAILURE(1401, "ImgLut", "ImgLut", "ImgOper1c2");
}

}  // namespace
