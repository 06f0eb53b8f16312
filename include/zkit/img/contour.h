// Following the outline of an object.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"
#include "zkit/img/vectors.h"

/// The sense in which an object's outline is followed, as seen on the screen, and what happens at the region's edge.
enum CONTOUR_MODE : int {
    CONTOUR_CLOCKWISE = 0,                ///< ends at the edge
    CONTOUR_CLOCKWISE_ALONG_EDGE = 1,     ///< pixels outside the region are background
    CONTOUR_CLOCKWISE_THEN_BACK = 2,      ///< at the edge, follows from there in the other sense
    CONTOUR_ANTICLOCKWISE = 3,            ///< ends at the edge
    CONTOUR_ANTICLOCKWISE_THEN_BACK = 4,  ///< at the edge, follows from there in the other sense
    CONTOUR_ANTICLOCKWISE_ALONG_EDGE = 5  ///< pixels outside the region are background
};

/// Which pixels are the object's. Any other value counts as below.
enum CONTOUR_THRESHOLD : int {
    CONTOUR_THRESHOLD_ABOVE = 0,  ///< those at or above the threshold
    CONTOUR_THRESHOLD_BELOW = 1   ///< those at or below it
};

/// Which neighbours of a pixel are connected with it. Any other value counts as 4.
enum CONNEXITY : int {
    CONNEXITY_4 = 0,  ///< left, right, above and below
    CONNEXITY_8 = 1   ///< the diagonal ones too
};

/// Follows the outline of the object that has pixel (x, y) on its boundary, until it comes back to this pixel in the
/// direction in which it left it, and gives the boundary's pixels in order, this one first. A pixel that is passed
/// more than once is there more than once. The coordinates are the low 16 bits of those within the region.
///
/// Directions count from 0, to the right, in steps of 45 degrees anticlockwise up to 7. A walk leaves a pixel in the
/// first direction in which an object pixel lies, searched in the mode's sense (4-connected: among 0, 2, 4 and 6): at
/// the start from the first background on, which for connexity 8 must be two neighbours where the object follows
/// above, below, left or right; at other pixels from beside the pixel that it came from.
///
/// With a mode that goes back, a walk that meets the edge (1503) empties the path and starts again in the other sense
/// from the last pixel it has reached. As 1503 is still pending then, that pixel alone is recorded.
/// @param mode       one of CONTOUR_MODE (else 1009).
/// @param threshold  above 255 all pixels are below it.
/// @param path       is emptied first. It grows by doubling.
/// Errors, in this order: a pending error, 1009: the path is then unchanged; 1601 null path; 1400, 1401 of the region;
/// 1013 x or 1014 y is outside the region; 1500 the pixel is not the object's; no neighbour to go to where the search
/// at the start ends at object or outside (1501) or at background (1502), as within an object and for a single pixel;
/// 1503 the walk meets the edge; 1504 it has taken 8 steps for every pixel of the region and does not close; 1303 no
/// memory. The path holds what has been recorded. Trail: "ImgContour (ZPathVector)".
ZKIT_IMG_API void ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense,
                             unsigned int threshold, CONNEXITY connexity, ZPathVector* path);

/// The same with the grey levels of the pixels. Trail: "ImgContour (ZBW8PathVector)".
ZKIT_IMG_API void ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense,
                             unsigned int threshold, CONNEXITY connexity, ZBW8PathVector* path);

/// The same into an untyped vector, whose groups are x, y and the direction in which the walk leaves the pixel, all of
/// 32 bits. It differs in this:
/// - The vector is made SetType(1, 2000, 0) unless it is of type 1, and grows by 512 groups (6144 bytes).
/// - It takes one pixel for every 8 of the region (rounded down), the walk then ends with 1504; at the edge or closed
///   it ends before that.
/// - With a mode that goes back the second walk is complete, and when it closes the pending 1503 is cleared.
/// Errors: in the place of 1601 null vector, 1303 no memory, 1601 a vector of type 1 without data, 1602 one whose
/// groups are not three elements of 4 bytes. Returns 0 or the code. Trail: "ImgContour (ZVector)".
ZKIT_IMG_API short ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense,
                              unsigned int threshold, CONNEXITY connexity, ZVector* path);
