// The simulated TV and agent the harnesses run the plug-in against: a temporary filesystem root
// in /tmp (removed at exit), time a thousand times faster than real time so that the waits inside
// commands stay short, and the built-in profile of a plausible TV.
#pragma once

#include <string>

namespace fuzzing {

// Sets the TV up on the first call; later calls only return its root folder.
const std::string& prepareTv();

// Drops what the simulators record for tests (agent log lines, traces, session calls, the TV's
// journal), which would otherwise grow with every input.
void forgetRecords();

}  // namespace fuzzing
