// The unit in which angles are passed to operations and returned by them.
#pragma once

#include "zkit/export.h"

enum ZAngleUnit : int { Z_ANGLE_RADIANS, Z_ANGLE_DEGREES };

/// The current unit, degrees at start. Process-wide.
ZKIT_CORE_API ZAngleUnit ZGetAngleUnit();

/// Sets the unit. A value that is no unit raises 1011 and changes nothing.
ZKIT_CORE_API void ZSetAngleUnit(ZAngleUnit unit);

/// An angle of the current unit in radians: angle * pi / 180 in degrees, computed in double and rounded once.
ZKIT_CORE_API float ZToRadians(float angle);

/// Radians in the current unit: radians * 180 / pi in degrees, computed in double and rounded once.
ZKIT_CORE_API float ZFromRadians(float radians);
