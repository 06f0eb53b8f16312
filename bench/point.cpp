// Point operations.
#include "operation.h"
#include "zkit/img.h"

namespace bench {

namespace {

struct Table {
    ZVector vector{3};

    Table()
    {
        auto* entries = static_cast<unsigned char*>(vector.GetDataPtr());
        for (int level = 0; level < 256; ++level)
            entries[level] = tableEntry(level);
    }
};

void lut(Scene& scene)
{
    static Table curve;
    ImgLut(scene.grey(), scene.greyResult(), &curve.vector);
}

constexpr Operation table[] = {
    {"ImgLut", "BW8", 1, 1, lut},
};

}  // namespace

std::span<const Operation> pointOperations() { return table; }

}  // namespace bench
