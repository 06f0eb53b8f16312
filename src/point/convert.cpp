// ImgConvert and ImgConvertTo422.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "point/convert_workers.h"
#include "simd/choice.h"
#include "zkit/img/point.h"

using namespace zkit;

namespace {

// A conversion. Its size check comes before it asks for a pending error, which is intended.
template <class Worker, class... Shift>
void convert(const char* name, ZGenericROI* src, ZGenericROI* dst, Worker worker, Shift... shift)
{
    const CallFrame frame(name);
    if (sameSize(src, dst) && frame.clear() && placed(src) && placed(dst))
        pointRows(
            dst, [=](auto in, auto out, auto count, Stores stores) { worker(in, out, count, shift..., stores); }, src);
    frame.finish();
}

int bits(unsigned int shift) { return static_cast<int>(shift % 32); }

}  // namespace

void ImgConvert(ZROI<ZBW16>* src, ZROI<ZBW8>* dst, unsigned int shift)
{
    convert("ImgConvert (BW16 to BW8)", src, dst, workers<ConvertWorkers>().wideToGrey, bits(shift));
}

void ImgConvert(ZROI<ZBW8>* src, ZROI<ZBW16>* dst, unsigned int shift)
{
    convert("ImgConvert (BW8 to BW16)", src, dst, workers<ConvertWorkers>().greyToWide, bits(shift));
}

void ImgConvertTo422(ZROI<ZBW8>* src, ZROI<ZBW16>* dst)
{
    convert("ImgConvertTo422 (BW8 to BW16)", src, dst, workers<ConvertWorkers>().greyTo422);
}

void ImgConvert(ZROI<ZBW8>* src, ZROI<ZC24>* dst)
{
    convert("ImgConvert (BW8 to C24)", src, dst, workers<ConvertWorkers>().greyToColour);
}

void ImgConvert(ZROI<ZC24>* src, ZROI<ZBW8>* dst)
{
    convert("ImgConvert (C24 to BW8)", src, dst, workers<ConvertWorkers>().colourToGrey);
}
