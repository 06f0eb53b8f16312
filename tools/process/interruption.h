// Being told to stop.
#pragma once

namespace zkit::tool {

/// While one lives, SIGINT, SIGTERM, SIGHUP and SIGPIPE do not end the process but are remembered: work in hand is
/// finished, nothing new begun. One at a time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    static bool requested();

    /// Ends the process by the signal that came, if one came.
    static void obey();
};

}  // namespace zkit::tool
