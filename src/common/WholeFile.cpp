#include "common/WholeFile.h"

#include <cstdio>
#include <cstdlib>

#include "common/ConsoleLog.h"

namespace norvane {

char* readWholeFile(const char* path) {
    std::FILE* file = std::fopen(path, "rb");
    if (file == nullptr) {
        consoleLog(kLogError, "Problem reading file %s", path);
        return nullptr;
    }
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    std::rewind(file);
    const size_t capacity = size > 0 ? static_cast<size_t>(size) : 0;
    char* buffer = static_cast<char*>(std::malloc(capacity + 1));
    if (buffer == nullptr) {
        consoleLog(kLogError, "Problem reading file %s", path);
        std::fclose(file);
        return nullptr;
    }
    const size_t read = std::fread(buffer, 1, capacity, file);
    buffer[read] = '\0';
    if (read != capacity) {
        consoleLog(kLogError, "Problem reading file %s", path);
    }
    std::fclose(file);
    return buffer;
}

}  // namespace norvane
