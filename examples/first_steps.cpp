// First steps: an image, a region of it, a threshold, and what the bright object in it measures.
#include <zkit/img.h>

#include <cstdio>

int main()
{
    // A dark picture with a bright part of 60 x 40 pixels.
    ZImage<ZBW8> picture(320, 240);
    ZROI<ZBW8> part(&picture, 100, 80, 60, 40);
    ImgOper(ARITH_LOGIC_COPY, 30, &picture);
    ImgOper(ARITH_LOGIC_COPY, 200, &part);

    // Remove noise, let the histogram choose a threshold, and apply it.
    ZImage<ZBW8> filtered(320, 240), objects(320, 240);
    ImgMedian(&picture, &filtered);
    const unsigned char threshold = ImgAutoThreshold(&filtered, IMG_THRESHOLD_ISODATA, 0);
    ImgThreshold(&filtered, &objects, threshold, 0, 255, 0);

    // Measure it.
    int area = 0;
    float x = 0, y = 0;
    ImgArea(&objects, 0, area);
    ImgGravityCenter(&objects, 255, x, y);
    ZPathVector contour;
    ImgContour(&objects, CONTOUR_CLOCKWISE, 120, 80, CONTOUR_THRESHOLD_ABOVE, 255, CONNEXITY_8, &contour);

    // Whatever failed first is still known: the operations after it have done nothing.
    if (ZGetError() != Z_OK) {
        std::printf("%s: %s\n", ZGetTrace(0), ZErrorText(ZGetError()));
        return 1;
    }
    std::printf("threshold %d, %d pixels around (%g, %g), contour of %u pixels\n", threshold, area, x, y,
                contour.GetNumElements());
    // The median has rounded the corners.
    return area == 60 * 40 - 4 && x == 129.5F && y == 99.5F ? 0 : 1;
}
