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

/// Follows the outline of the object that has pixel (x, y) on its boundary, until it comes back to this pixel and would
/// leave it in the direction in which it left it at the start. The path gets the boundary's pixels in order, this one
/// first, one that is passed more than once as often as that. Coordinates are the low 16 bits of those in the region.
///
/// Directions count anticlockwise in steps of 45 degrees from 0, to the right, up to 7; 4-connected walks know 0, 2, 4
/// and 6 only. A walk turns in the mode's sense to the first direction in which an object pixel follows: at the start
/// after background (with connexity 8 and an even direction, after two neighbours of the background), later from beside
/// the pixel that it has come from.
///
/// Where the walk of a mode that goes back meets the edge (1503), the path is emptied and a second walk starts in the
/// other sense from the last pixel reached. As 1503 is still pending, it records this pixel only; an error of its own
/// takes the place of 1503.
/// @param mode       one of CONTOUR_MODE (else 1009).
/// @param threshold  above 255 all pixels are below it.
/// @param path       is emptied first and grows by doubling.
/// Errors, in this order: a pending error; 1009, the path is then unchanged; 1601 null path; 1400, 1401 of the region;
/// 1013 x or 1014 y is outside the region; 1500 the pixel is not the object's; no direction to start in: the last
/// neighbour looked at is the object's or outside (1501, as within an object) or background (1502, as for a single
/// pixel); then, while it walks, 1504 eight steps for every pixel of the region have not closed it, 1303 no memory,
/// 1503 it meets the edge. The path then holds what has been recorded. Trail: "ImgContour (ZPathVector)".
ZKIT_IMG_API void ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense,
                             unsigned int threshold, CONNEXITY connexity, ZPathVector* path);

/// The same with the grey levels of the pixels. Trail: "ImgContour (ZBW8PathVector)".
ZKIT_IMG_API void ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense,
                             unsigned int threshold, CONNEXITY connexity, ZBW8PathVector* path);

/// The same into an untyped vector, whose groups are x, y and the direction in which the walk leaves the pixel, all of
/// 32 bits. It differs in this:
/// - The vector is made SetType(1, 2000, 0) unless it is of type 1, and grows by 512 groups (6144 bytes).
/// - It takes one pixel for every 8 of the region, rounded down; a longer walk, neither closed nor at the edge by
///   then, ends with 1504.
/// - The second walk of a mode that goes back is a complete one; when it closes, the pending 1503 is cleared.
/// Errors: in the place of 1601 null vector, 1303 no memory, 1601 a vector of type 1 without data, 1602 one whose
/// groups are not of three elements of 4 bytes. Returns 0 or the code. Trail: "ImgContour (ZVector)".
ZKIT_IMG_API short ImgContour(ZROI<ZBW8>* src, CONTOUR_MODE mode, int x, int y, CONTOUR_THRESHOLD sense,
                              unsigned int threshold, CONNEXITY connexity, ZVector* path);
