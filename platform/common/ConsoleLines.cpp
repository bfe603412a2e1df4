#include "ConsoleLines.h"

#include <algorithm>

namespace simconsole {

std::vector<std::string> takeFramedLines(std::string& pending) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < pending.size()) {
        size_t end = std::string::npos;
        for (const char* closing : {" -->\n", " **>\n"}) {
            const size_t found = pending.find(closing, start);
            if (found != std::string::npos) {
                end = std::min(end, found + 5);
            }
        }
        if (end == std::string::npos) {
            break;
        }
        lines.push_back(pending.substr(start, end - start));
        start = end;
    }
    pending.erase(0, start);
    return lines;
}

}  // namespace simconsole
