// ImgProjectOnARow and ImgProjectOnAColumn.
#include "analysis/bins.h"
#include "analysis/projection_workers.h"
#include "frame/call_frame.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

#include <algorithm>

using namespace zkit;

namespace {

using Worker = void (*)(Source, std::uint32_t* sums);

short project(const char* name, ZROI<ZBW8>* src, ZBW32Vector* proj, int (ZGenericROI::*length)() const, Worker worker)
{
    const CallFrame frame(name);
    if (!(frame.clear() && placed(src) && require(proj, Z_ERROR_VECTOR_EMPTY) &&
          hold(proj, static_cast<unsigned int>((src->*length)()))))
        return frame.trace();
    std::fill_n(proj->GetDataPtr(), proj->GetNumElements(), 0U);
    worker(source(src), proj->GetDataPtr());
    return frame.finish();
}

short project(const char* name, ZROI<ZBW8>* src, ZVector* proj, int (ZGenericROI::*length)() const, Worker worker,
              Z_ERRORS withoutData)
{
    const CallFrame frame(name);
    if (!(frame.clear() && placed(src) && require(proj, Z_ERROR_VECTOR_EMPTY) &&
          proj->SetType(2, 1, (src->*length)()) == Z_OK && require(proj->GetDataPtr(), withoutData)))
        return frame.trace();
    worker(source(src), Bins(proj).counts);  // they start at 0
    return frame.finish();
}

}  // namespace

void ImgProjectOnARow(ZROI<ZBW8>* src, ZBW32Vector* proj)
{
    project("ImgProjectOnARow (ZBW32Vector)", src, proj, &ZGenericROI::GetWidth, workers<ProjectionWorkers>().onRow);
}

void ImgProjectOnAColumn(ZROI<ZBW8>* src, ZBW32Vector* proj)
{
    project("ImgProjectOnAColumn (ZBW32Vector)", src, proj, &ZGenericROI::GetHeight,
            workers<ProjectionWorkers>().onColumn);
}

short ImgProjectOnARow(ZROI<ZBW8>* src, ZVector* proj)
{
    return project("ImgProjectOnARow (ZVector)", src, proj, &ZGenericROI::GetWidth, workers<ProjectionWorkers>().onRow,
                   Z_ERROR_VECTOR_EMPTY);
}

// The code for a vector without data is not that of the other projection, which is intended.
short ImgProjectOnAColumn(ZROI<ZBW8>* src, ZVector* proj)
{
    return project("ImgProjectOnAColumn", src, proj, &ZGenericROI::GetHeight, workers<ProjectionWorkers>().onColumn,
                   Z_ERROR_NO_PIXELS);
}
