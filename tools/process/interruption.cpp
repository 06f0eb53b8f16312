#include "process/interruption.h"

#include <csignal>

namespace zkit::tool {
namespace {

constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

volatile std::sig_atomic_t received = 0;

}  // namespace

Interruption::Interruption()
{
    received = 0;
    for (const int signal : signals)  // one that is ignored, as under nohup, stays so
        if (std::signal(signal, [](int number) { received = number; }) == SIG_IGN)
            std::signal(signal, SIG_IGN);
}

Interruption::~Interruption()
{
    for (const int signal : signals)
        if (std::signal(signal, SIG_DFL) == SIG_IGN)
            std::signal(signal, SIG_IGN);
}

bool Interruption::requested() { return received != 0; }

void Interruption::obey()
{
    if (received == 0)
        return;
    std::signal(received, SIG_DFL);
    std::raise(received);
}

}  // namespace zkit::tool
