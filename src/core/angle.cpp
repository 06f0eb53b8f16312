#include "zkit/core/angle.h"

#include "zkit/core/error.h"

#include <atomic>
#include <numbers>

namespace {

std::atomic<ZAngleUnit> unit{Z_ANGLE_DEGREES};

}  // namespace

ZAngleUnit ZGetAngleUnit() { return unit.load(std::memory_order_relaxed); }

void ZSetAngleUnit(ZAngleUnit newUnit)
{
    if (newUnit == Z_ANGLE_RADIANS || newUnit == Z_ANGLE_DEGREES)
        unit.store(newUnit, std::memory_order_relaxed);
    else
        ZSetError(Z_ERROR_ARGUMENT_1_OUT_OF_RANGE);
}

float ZToRadians(float angle)
{
    return ZGetAngleUnit() == Z_ANGLE_RADIANS ? angle : static_cast<float>(angle * std::numbers::pi / 180.0);
}

float ZFromRadians(float radians)
{
    return ZGetAngleUnit() == Z_ANGLE_RADIANS ? radians : static_cast<float>(radians * 180.0 / std::numbers::pi);
}
