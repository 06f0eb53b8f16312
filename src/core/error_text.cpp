#include "zkit/core/error.h"

// A switch without a default, so that the compiler names a code that has no sentence.
const char* ZErrorText(short code)
{
    switch (static_cast<Z_ERRORS>(code)) {
    case Z_OK: return "No error is pending.";
    case Z_ERROR_BAD_OPERATION: return "The operation code is not one that this function implements.";
    case Z_ERROR_INCONSISTENT_ARGUMENTS: return "Two arguments that must be in order are not.";
    case Z_ERROR_BAD_MODE: return "The mode is not one of the known modes.";
    case Z_ERROR_ARGUMENT_1_OUT_OF_RANGE: return "Argument 1 is out of range.";
    case Z_ERROR_ARGUMENT_2_OUT_OF_RANGE: return "Argument 2 is out of range.";
    case Z_ERROR_ARGUMENT_3_OUT_OF_RANGE: return "Argument 3 is out of range.";
    case Z_ERROR_ARGUMENT_4_OUT_OF_RANGE: return "Argument 4 is out of range.";
    case Z_ERROR_ARGUMENT_5_OUT_OF_RANGE: return "Argument 5 is out of range.";
    case Z_ERROR_ARGUMENT_6_OUT_OF_RANGE: return "Argument 6 is out of range.";
    case Z_ERROR_FILE_OPEN: return "The file cannot be opened.";
    case Z_ERROR_FILE_READ: return "The file ends before everything could be read.";
    case Z_ERROR_FILE_WRITE: return "Writing to the file failed.";
    case Z_ERROR_FILE_BAD_CONTENT: return "The file does not hold a vector of the expected kind.";
    case Z_ERROR_FILE_CLOSE: return "Closing the file failed.";
    case Z_ERROR_NOTHING_FOUND: return "Nothing was found, or the memory to look for it could not be had.";
    case Z_ERROR_OUT_OF_MEMORY: return "Memory could not be had.";
    case Z_ERROR_NO_PIXELS: return "A region has no pixels: there is no region, or no image with storage behind it.";
    case Z_ERROR_ROI_PLACEMENT: return "A region does not lie within its image.";
    case Z_ERROR_SIZE_MISMATCH: return "The sizes of two regions differ.";
    case Z_ERROR_BAD_IMAGE_SIZE: return "The sizes of the images do not suit the operation.";
    case Z_ERROR_OUTSIDE_IMAGE: return "A map names a position outside the source image.";
    case Z_ERROR_DIVISION_BY_ZERO: return "The constant divisor is zero.";
    case Z_ERROR_DIVISION_BY_ZERO_PIXEL: return "A pixel of the divisor image is zero.";
    case Z_ERROR_SAME_IMAGE: return "Source and destination lie on the same image.";
    case Z_ERROR_CONTOUR_START: return "The start pixel of the contour does not belong to an object.";
    case Z_ERROR_CONTOUR_NO_NEIGHBOUR: return "No background touches the start pixel of the contour.";
    case Z_ERROR_CONTOUR_ISOLATED: return "No neighbour of the start pixel continues the contour.";
    case Z_ERROR_PATH_LIMIT: return "The path meets the edge of the region and cannot be completed.";
    case Z_ERROR_CONTOUR_LIMIT: return "The contour was given up before it closed.";
    case Z_ERROR_VECTOR_EMPTY: return "The vector has no data.";
    case Z_ERROR_VECTOR_STRUCTURE: return "The structure of the vector is not the required one.";
    case Z_ERROR_VECTOR_MISMATCH: return "The vector holds data of another structure than the required one.";
    case Z_ERROR_VECTOR_GROUPS: return "The groups of the vector do not suit the operation.";
    case Z_ERROR_VECTOR_DATA_SIZE: return "The data size of the vector is not the required one.";
    case Z_ERROR_VECTOR_DATA_TYPE: return "The data type of the vector is not accepted.";
    case Z_ERROR_VECTOR_KIND: return "The vector is not of the kind that the operation requires.";
    case Z_ERROR_VECTOR_USE: return "The use code of the vector does not suit the operation.";
    case Z_ERROR_VECTOR_RANGE: return "The range of elements does not suit the vector.";
    case Z_ERROR_VECTOR_SIZE: return "The size of the vector does not suit the operation.";
    case Z_ERROR_VECTOR_ELEMENT_COUNT: return "The vector does not hold the required number of elements.";
    case Z_ERROR_KERNEL_UNUSABLE: return "The kernel has no usable coefficients.";
    case Z_ERROR_KERNEL_SIZE: return "The size of the kernel is not accepted.";
    case Z_ERROR_KERNEL_SYMMETRIC: return "The kernel cannot be used as a symmetric one.";
    case Z_ERROR_KERNEL_FIT: return "The kernel does not fit the data.";
    case Z_ERROR_KERNEL_INDEX: return "The position lies outside the coefficients of the kernel.";
    case Z_ERROR_MAP_SIZE: return "The map does not have the size of the destination.";
    case Z_ERROR_UNKNOWN: return "An internal case that nothing handles was met.";
    }
    return "This number is not an error code of the kit.";
}
