// Contours, paths, lines and profiles.
#include "operation.h"
#include "zkit/img.h"

namespace bench {

namespace {

template <class Path, CONNEXITY connexity>
void contour(Scene& scene)
{
    static Path path;
    ImgContour(scene.comb(), CONTOUR_CLOCKWISE, 1, 1, CONTOUR_THRESHOLD_ABOVE, high, connexity, &path);
}

// One tooth of the comb: a vector takes a point for every eight pixels.
void contourUntyped(Scene& scene)
{
    static ZVector path(1);
    ZROI<ZBW8> tooth(scene.comb(), 0, 2, 24, scene.size().height - 2);
    ImgContour(&tooth, CONTOUR_CLOCKWISE_ALONG_EDGE, 1, 0, CONTOUR_THRESHOLD_ABOVE, high, CONNEXITY_8, &path);
}

// Positions in images of every size.
template <class Path>
struct Diagonal : Path {
    Diagonal()
    {
        for (short i = 0; i < 500; ++i)
            this->AddElement({i, i, {}});
    }
};

void imageToPath(Scene& scene)
{
    static Diagonal<ZBW8PathVector> path;
    ImgImageToPath(scene.grey(), &path);
}

void pathToImage(Scene& scene)
{
    static Diagonal<ZC24PathVector> path;
    ImgPathToImage(scene.colorResult(), &path);
}

template <int fall>
void imageToLineSegment(Scene& scene)
{
    static ZBW8Vector profile;
    const Line line(scene, fall);
    ImgImageToLineSegment(scene.grey(), &profile, 0, 0, line.x, line.y);
}

void imageToLineSegmentColor(Scene& scene)
{
    static ZC24Vector profile;
    const Line line(scene, steep);
    ImgImageToLineSegment(scene.color(), &profile, 0, 0, line.x, line.y);
}

void lineSegmentToImage(Scene& scene)
{
    const Line line(scene, steep);
    ImgLineSegmentToImage(scene.greyResult(), constant, 0, 0, line.x, line.y);
}

// A line of the picture.
struct Profile : ZBW8Vector {
    explicit Profile(Scene& scene) { ImgImageToLineSegment(scene.grey(), this, 0, 0, scene.size().width - 1, 0); }
};

void profilePeaks(Scene& scene)
{
    static ZPeaksVector peaks;
    static Profile profile(scene);
    ImgGetProfilePeaks(&profile, &peaks, low, high, 10, 10);
}

void profileDerivative(Scene& scene)
{
    static ZBW8Vector slopes;
    static Profile profile(scene);
    ImgProfileDerivative(&profile, &slopes);
}

constexpr Operation table[] = {
    {"ImgContour", "BW8 comb", 1, 0, contour<ZPathVector, CONNEXITY_8>},
    {"ImgContour", "BW8 comb, 4-connected", 1, 0, contour<ZPathVector, CONNEXITY_4>},
    {"ImgContour", "BW8 comb, levels", 1, 0, contour<ZBW8PathVector, CONNEXITY_8>},
    {"ImgContour", "a tooth, untyped", 0, 0, contourUntyped},
    {"ImgImageToPath", "500 pixels", 0, 0, imageToPath},
    {"ImgPathToImage", "500 pixels, C24", 0, 0, pathToImage},
    {"ImgImageToLineSegment", "a line, flat", 0, 0, imageToLineSegment<flat>},
    {"ImgImageToLineSegment", "a line, steep", 0, 0, imageToLineSegment<steep>},
    {"ImgImageToLineSegment", "a line, C24", 0, 0, imageToLineSegmentColor},
    {"ImgLineSegmentToImage", "a line", 0, 0, lineSegmentToImage},
    {"ImgGetProfilePeaks", "a profile", 0, 0, profilePeaks},
    {"ImgProfileDerivative", "a profile", 0, 0, profileDerivative},
};

}  // namespace

std::span<const Operation> contourOperations() { return table; }

}  // namespace bench
