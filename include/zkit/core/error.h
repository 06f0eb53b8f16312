// The kit's error state: one pending code and the trail of the operations that it passed through.
//
// No operation throws. An operation that fails records a code with ZSetError and its own name with ZTraceError; while a
// code is pending every further operation refuses to run and only adds its name. The caller reads the code and the
// trail, and clears both with ZClearError. The library never clears them.
#pragma once

#include "zkit/export.h"

/// Every code that the kit raises. ZErrorText has a sentence for each.
enum Z_ERRORS : short {
    Z_OK = 0,

    // arguments
    Z_ERROR_BAD_OPERATION = 1003,
    Z_ERROR_INCONSISTENT_ARGUMENTS = 1007,
    Z_ERROR_BAD_MODE = 1009,
    Z_ERROR_ARGUMENT_1_OUT_OF_RANGE = 1011,
    Z_ERROR_ARGUMENT_2_OUT_OF_RANGE = 1012,
    Z_ERROR_ARGUMENT_3_OUT_OF_RANGE = 1013,
    Z_ERROR_ARGUMENT_4_OUT_OF_RANGE = 1014,
    Z_ERROR_ARGUMENT_5_OUT_OF_RANGE = 1015,
    Z_ERROR_ARGUMENT_6_OUT_OF_RANGE = 1016,

    // files
    Z_ERROR_FILE_OPEN = 1102,
    Z_ERROR_FILE_READ = 1103,
    Z_ERROR_FILE_WRITE = 1104,
    Z_ERROR_FILE_BAD_CONTENT = 1105,
    Z_ERROR_FILE_CLOSE = 1106,

    // resources
    Z_ERROR_NOTHING_FOUND = 1301,
    Z_ERROR_OUT_OF_MEMORY = 1303,

    // images
    Z_ERROR_NO_PIXELS = 1400,
    Z_ERROR_ROI_PLACEMENT = 1401,
    Z_ERROR_SIZE_MISMATCH = 1402,
    Z_ERROR_BAD_IMAGE_SIZE = 1403,
    Z_ERROR_OUTSIDE_IMAGE = 1405,
    Z_ERROR_DIVISION_BY_ZERO = 1411,
    Z_ERROR_DIVISION_BY_ZERO_PIXEL = 1412,
    Z_ERROR_SAME_IMAGE = 1413,

    // contours and paths
    Z_ERROR_CONTOUR_START = 1500,
    Z_ERROR_CONTOUR_NO_NEIGHBOUR = 1501,
    Z_ERROR_CONTOUR_ISOLATED = 1502,
    Z_ERROR_PATH_LIMIT = 1503,
    Z_ERROR_CONTOUR_LIMIT = 1504,

    // vectors
    Z_ERROR_VECTOR_EMPTY = 1601,
    Z_ERROR_VECTOR_STRUCTURE = 1602,
    Z_ERROR_VECTOR_MISMATCH = 1603,
    Z_ERROR_VECTOR_GROUPS = 1604,
    Z_ERROR_VECTOR_DATA_SIZE = 1605,
    Z_ERROR_VECTOR_DATA_TYPE = 1606,
    Z_ERROR_VECTOR_KIND = 1607,
    Z_ERROR_VECTOR_USE = 1608,
    Z_ERROR_VECTOR_RANGE = 1609,
    Z_ERROR_VECTOR_SIZE = 1611,
    Z_ERROR_VECTOR_ELEMENT_COUNT = 1613,

    // kernels
    Z_ERROR_KERNEL_UNUSABLE = 1700,
    Z_ERROR_KERNEL_SIZE = 1701,
    Z_ERROR_KERNEL_SYMMETRIC = 1702,
    Z_ERROR_KERNEL_FIT = 1703,
    Z_ERROR_KERNEL_INDEX = 1704,

    Z_ERROR_MAP_SIZE = 2200,
    Z_ERROR_UNKNOWN = 32767
};

/// The pending code, 0 when none is pending.
ZKIT_CORE_API short ZGetError();

/// Records a code as pending and returns it. With nothing pending the trail starts empty; with a code pending the new
/// code replaces it and the trail is kept.
ZKIT_CORE_API short ZSetError(Z_ERRORS code);

/// Appends a name to the trail, also when nothing is pending, and returns the pending code.
/// @param name  kept by address: a string literal or another string that outlives the trail; null counts as "".
ZKIT_CORE_API short ZTraceError(const char* name);

/// The result of success: 0.
ZKIT_CORE_API short ZOk();

/// Clears the pending code and the trail.
ZKIT_CORE_API void ZClearError();

/// Number of names in the trail, at most 64: of a longer trail the newest 64 are kept.
ZKIT_CORE_API int ZGetTraceCount();

/// A name of the trail: index 0 is the innermost operation, recorded first. An index outside the trail gives "".
ZKIT_CORE_API const char* ZGetTrace(int index);

/// One plain English sentence for every code of Z_ERRORS; for any other number a sentence that says so. Never null.
ZKIT_CORE_API const char* ZErrorText(short code);

namespace zkit {

/// The storage of one error state. Read and written through the functions above only.
struct ErrorState {
    static constexpr int trailCapacity = 64;

    short code = Z_OK;
    int traceCount = 0;   // names in the trail
    int oldestTrace = 0;  // where the ring of names begins
    const char* traces[trailCapacity];
};

}  // namespace zkit

/// While one lives, its thread has an error state of its own, empty at first.
///
/// Without a scope the error state is shared by the whole process: safe to touch from several threads, but a failure on
/// one thread stops the operations of all others. A thread that runs operations beside other threads therefore starts
/// with a scope. Scopes nest; the state of a scope is gone with it, and the state around it is as it was before.
/// A scope ends on the thread that made it.
class ZKIT_CORE_API ZThreadErrorScope {
public:
    ZThreadErrorScope();
    ~ZThreadErrorScope();
    ZThreadErrorScope(const ZThreadErrorScope&) = delete;
    ZThreadErrorScope& operator=(const ZThreadErrorScope&) = delete;

private:
    zkit::ErrorState state_;
    zkit::ErrorState* outer_;
};
