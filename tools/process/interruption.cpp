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
    for (const int signal : signals)
        std::signal(signal, [](int number) { received = number; });
}

Interruption::~Interruption()
{
    for (const int signal : signals)
        std::signal(signal, SIG_DFL);
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
