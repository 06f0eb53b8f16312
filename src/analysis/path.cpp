// ImgImageToPath and ImgPathToImage.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "zkit/img/profile.h"

#include <cstring>

using namespace zkit;

namespace {

// Calls copy(pixel, element) for every element of the path that is within the region.
template <class T, class Element, class Copy>
void followPath(const char* name, ZROI<T>* region, ZVectorTemplate<Element>* path, Copy copy)
{
    const CallFrame frame(name);
    if (!(frame.clear() && placed(region) && require(path, Z_ERROR_VECTOR_EMPTY))) {
        frame.trace();
        return;
    }
    const Target pixels = target(region);
    bool within = true;
    for (unsigned int i = 0; i < path->GetNumElements(); ++i) {
        Element& element = path->GetDataPtr()[i];
        const std::ptrdiff_t x = element.X, y = element.Y;
        if (x >= 0 && x < pixels.width && y >= 0 && y < pixels.height)
            copy(pixels.data + y * pixels.pitch + x * static_cast<std::ptrdiff_t>(sizeof(T)), element);
        else
            within = false;
    }
    require(within, Z_ERROR_PATH_LIMIT);  // the name is not recorded for this, which is intended
}

constexpr auto read = [](const std::uint8_t* pixel, auto& element) {
    std::memcpy(&element.Pixel, pixel, sizeof element.Pixel);
};
constexpr auto write = [](std::uint8_t* pixel, const auto& element) {
    std::memcpy(pixel, &element.Pixel, sizeof element.Pixel);
};

}  // namespace

void ImgImageToPath(ZROI<ZBW8>* src, ZBW8PathVector* path) { followPath("ImgImageToPath (BW8)", src, path, read); }

void ImgImageToPath(ZROI<ZC24>* src, ZC24PathVector* path) { followPath("ImgImageToPath (C24)", src, path, read); }

void ImgPathToImage(ZROI<ZBW8>* dst, ZBW8PathVector* path) { followPath("ImgPathToImage (BW8)", dst, path, write); }

void ImgPathToImage(ZROI<ZC24>* dst, ZC24PathVector* path) { followPath("ImgPathToImage (C24)", dst, path, write); }
