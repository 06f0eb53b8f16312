#include "filter/predefined_workers.h"
#include "support/workers.h"

#include <array>

using namespace zkit;

namespace {

TEST(FilterWorkers, predefined)
{
    using W = PredefinedWorkers;
    constexpr FilterBand W::*filters[] = {&W::highpass1,  &W::highpass2, &W::lowpass1,  &W::lowpass2,
                                          &W::lowpass3,   &W::sobelX,    &W::sobelY,    &W::sobelXY,
                                          &W::prewittX,   &W::prewittY,  &W::prewittXY, &W::laplacian4,
                                          &W::laplacian8, &W::lowpass1X, &W::lowpass1Y, &W::roberts};
    forAwkwardRowsOfSets<PredefinedWorkers>([&](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int step = width % 3 == 0 && random(0, 1) ? 3 : 1, height = random(1, rowsOfBand);
        if (width == 0)
            return;
        std::array<std::unique_ptr<Pixels>, rowsOfBand + 2> pixels;
        std::array<const std::uint8_t*, rowsOfBand + 2> rows{};
        for (std::size_t i = 0; i < static_cast<std::size_t>(height) + 2; ++i) {
            pixels[i] = std::make_unique<Pixels>(random, random(0, 3) ? kind : Pixels::noise, width, 1);
            rows[i] = pixels[i]->row();
        }
        const Pixels before(random, Pixels::noise, width + 9, height);
        for (const auto& filter : filters) {
            Pixels plain(before), packed(before);
            const auto run = [&](const W& workers, Pixels& out) {
                (workers.*filter)(rows.data(), {out.row() + 5, before.source().pitch, width, height}, step);
            };
            run(W::plain, plain);
            run(*set.workers, packed);
            ASSERT_EQ(packed.all(), plain.all())
                << "filter " << (&filter - filters) << ", step " << step << ", height " << height;
        }
    });
}

}  // namespace
