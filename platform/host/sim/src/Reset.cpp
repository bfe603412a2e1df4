#include "ResetParts.h"
#include "zelsim/HostSim.h"

namespace zelsim {

void reset() {
    detail::resetLogging();
    detail::resetIdentity();
    detail::resetSession();
}

}  // namespace zelsim
