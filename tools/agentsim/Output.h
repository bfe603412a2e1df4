// agentsim's own output: a write that fails is an error of the whole run, not a lost line.
#pragma once

#include <cstdio>
#include <stdexcept>

namespace agentsim {

class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Flushes `out`; throws OutputError (one line, with the reason) when anything written to it since
// it was opened could not be written.
void flushOrThrow(std::FILE* out);

}  // namespace agentsim
