// Agent base64 codec.
#pragma once

#include <cstddef>
#include <string>

namespace Zel {
namespace Core {

class Base64Util {
public:
    // Returns newly allocated, NUL-terminated base64 text (no line breaks) that the caller
    // releases with free(); null when the text cannot be allocated.
    static char* Encode(const std::string& data);

    // Decodes base64 text (line breaks and other white space are skipped) into a newly allocated
    // buffer that the caller releases with free(); its length goes to `length`. The buffer holds
    // one extra NUL byte after the data. Returns null on malformed input.
    static unsigned char* Decode(const std::string& text, size_t& length);
};

}  // namespace Core
}  // namespace Zel
