// Which workers the operations use.
#pragma once

#include "zkit/export.h"

/// Not 0 (at start) when operations use their packed workers, written for the processor's vector instructions; 0 when
/// they use the plain ones. Every operation reads it on every call. Unless an operation says otherwise both kinds give
/// the same bytes; the plain one is the definition.
ZKIT_CORE_API int ZGetMMX();

/// 0 selects the plain workers everywhere, any other value the packed ones. Process-wide.
ZKIT_CORE_API void ZSetMMX(int enabled);
