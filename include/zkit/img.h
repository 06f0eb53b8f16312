// Everything of zkit::img.
#pragma once

#include "zkit/img/analysis.h"
#include "zkit/img/filter.h"
#include "zkit/img/point.h"
#include "zkit/img/vectors.h"
