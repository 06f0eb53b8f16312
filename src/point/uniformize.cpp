// ImgUniformize with a light reference, and with a light and a dark one.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "point/uniformize_workers.h"
#include "simd/choice.h"
#include "zkit/img/point.h"

using namespace zkit;

void ImgUniformize(ZROI<ZBW8>* src, unsigned char level, ZROI<ZBW8>* reference, ZROI<ZBW8>* dst)
{
    const CallFrame frame("ImgUniformize (light background)");
    if (frame.clear() && pointRegions(dst, src, reference)) {
        const auto row = [level, worker = workers<UniformizeWorkers>().light](auto in, auto light, auto out, auto count,
                                                                              Stores stores) {
            worker(in, light, out, count, level, stores);
        };
        pointRows(dst, row, src, reference);
    }
    frame.finish();
}

void ImgUniformize(ZROI<ZBW8>* src, unsigned char lightLevel, ZROI<ZBW8>* lightReference, unsigned char darkLevel,
                   ZROI<ZBW8>* darkReference, ZROI<ZBW8>* dst)
{
    const CallFrame frame("ImgUniformize (light/dark background)");
    if (frame.clear() && pointRegions(dst, src, lightReference, darkReference)) {
        const auto row = [=, worker = workers<UniformizeWorkers>().lightAndDark](auto in, auto light, auto dark,
                                                                                 auto out, auto count, Stores stores) {
            worker(in, light, dark, out, count, lightLevel - darkLevel, darkLevel, stores);
        };
        pointRows(dst, row, src, lightReference, darkReference);
    }
    frame.finish();
}
