// Everything of zkit::img, and the core library that it is used with.
#pragma once

#include "zkit/core.h"
#include "zkit/img/analysis.h"
#include "zkit/img/filter.h"
#include "zkit/img/geometry.h"
#include "zkit/img/morpho.h"
#include "zkit/img/point.h"
#include "zkit/img/temporal.h"
#include "zkit/img/vectors.h"
