// Everything of zkit::core: error state, images and regions, vectors, angle unit, processor flag, drawing.
#pragma once

#include "zkit/core/angle.h"
#include "zkit/core/cpu.h"
#include "zkit/core/drawing.h"
#include "zkit/core/error.h"
#include "zkit/core/pixel.h"
#include "zkit/core/plot.h"
#include "zkit/core/roi.h"
#include "zkit/core/vector.h"
