// Counting what a printed text or a stream holds.
#pragma once

#include <cstddef>
#include <string>

namespace testing_support {

// How often `what` stands in `text`, overlapping occurrences included.
inline size_t occurrences(const std::string& text, const std::string& what) {
    size_t found = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        ++found;
    }
    return found;
}

}  // namespace testing_support
