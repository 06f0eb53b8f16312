#include "frame/checks.h"

namespace zkit {

namespace {

// Runs a check of a region, which reports through the error state, and says whether it passed.
template <class Check>
bool passes(Check check)
{
    short code = Z_OK;
    {
        const ZThreadErrorScope aside;
        check();
        code = ZGetError();
    }
    return require(code == Z_OK, static_cast<Z_ERRORS>(code));
}

}  // namespace

bool placed(ZGenericROI* region)
{
    return require(region, Z_ERROR_NO_PIXELS) && passes([=] { region->CheckPlacement(); });
}

bool sameSize(ZGenericROI* region, ZGenericROI* other)
{
    return require(region && other, Z_ERROR_NO_PIXELS) && passes([=] { region->CheckSameSize(other); });
}

bool filterSizes(ZGenericROI* src, ZGenericROI* dst)
{
    return require(src && dst, Z_ERROR_NO_PIXELS) && passes([=] { src->CheckSizes(dst, 2, 1); });
}

bool hasPixels(const ZGenericROI* region) { return require(region && region->GetPixelPtr(0, 0), Z_ERROR_NO_PIXELS); }

}  // namespace zkit
