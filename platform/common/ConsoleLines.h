// Splits what the plug-in's console log printed into the text of each call.
#pragma once

#include <string>
#include <vector>

namespace simconsole {

// Removes every complete call text (ending in " -->\n" or " **>\n") from the front of `pending`
// and returns them in order; an unfinished tail stays in `pending`.
std::vector<std::string> takeFramedLines(std::string& pending);

}  // namespace simconsole
