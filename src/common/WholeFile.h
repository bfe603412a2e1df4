// Reads a whole file into memory.
#pragma once

namespace norvane {

// Returns a NUL-terminated buffer of the file's bytes that the caller releases with free().
// On a file that cannot be opened or a buffer that cannot be allocated, logs
// "Problem reading file %s" and returns null; after a short read logs the same line and returns
// the part that was read.
char* readWholeFile(const char* path);

}  // namespace norvane
