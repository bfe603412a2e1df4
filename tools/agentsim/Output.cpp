#include "Output.h"

#include <cerrno>
#include <cstring>
#include <string>

namespace agentsim {

void flushOrThrow(std::FILE* out) {
    errno = 0;
    if (std::fflush(out) != 0 || std::ferror(out) != 0) {
        const int reason = errno;
        throw OutputError(std::string("agentsim: cannot write the output: ") +
                          (reason != 0 ? std::strerror(reason) : "a write failed"));
    }
}

}  // namespace agentsim
