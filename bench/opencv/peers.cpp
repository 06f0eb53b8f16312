#include "opencv/peers.h"

namespace bench {

std::span<const Peer> peers()
{
    static const std::vector<Peer> all = [] {
        std::vector<Peer> joined;
        for (const auto family :
             {opencv::analysisPeers(), opencv::contourPeers(), opencv::pointPeers(), opencv::arithmeticPeers(),
              opencv::filterPeers(), opencv::geometryPeers(), opencv::morphoPeers(), opencv::temporalPeers()})
            joined.insert(joined.end(), family.begin(), family.end());
        return joined;
    }();
    cv::setNumThreads(1);
    return all;
}

}  // namespace bench
