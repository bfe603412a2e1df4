// Texts compiled into the library from the data files beside it (see CMakeLists.txt).
#pragma once

namespace tvsim {
namespace embedded {

// profiles/default.json
const char* defaultProfile();
// tools/ra_getlog.sh: the TV's log collector, installed below the filesystem root.
const char* logTool();

}  // namespace embedded
}  // namespace tvsim
