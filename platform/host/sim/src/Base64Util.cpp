#include "zel/core/Base64Util.h"

#include <openssl/evp.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>

namespace {

// EVP's block functions take int lengths; work through longer input in chunks that join
// without padding in between.
constexpr size_t kEncodeChunk = 3 * 1024 * 1024;
constexpr size_t kDecodeChunk = 4 * 1024 * 1024;
constexpr size_t kMaxPadding = 2;

std::string withoutWhiteSpace(const std::string& text) {
    std::string compact;
    compact.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(compact),
                 [](char c) { return !std::isspace(static_cast<unsigned char>(c)); });
    return compact;
}

// Spelled out rather than isalnum(), which may accept more under some locales.
bool isAlphabet(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '/';
}

// How many '=' end the text; none when the text is not whole base64 quads with padding only at
// the end. EVP_DecodeBlock itself decodes '=' as zero bits anywhere, so this is the only check.
std::optional<size_t> paddingOf(const std::string& compact) {
    if (compact.size() % 4 != 0) {
        return std::nullopt;
    }
    const size_t lastData = compact.find_last_not_of('=');
    const size_t padding =
        lastData == std::string::npos ? compact.size() : compact.size() - lastData - 1;
    if (padding > kMaxPadding) {
        return std::nullopt;
    }
    if (!std::all_of(compact.begin(), compact.end() - static_cast<std::ptrdiff_t>(padding),
                     isAlphabet)) {
        return std::nullopt;
    }
    return padding;
}

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

}  // namespace

namespace Zel {
namespace Core {

char* Base64Util::Encode(const std::string& data) {
    const size_t textLength = (data.size() + 2) / 3 * 4;
    auto* text = static_cast<char*>(std::malloc(textLength + 1));
    if (!text) {
        return nullptr;
    }
    size_t written = 0;
    for (size_t offset = 0; offset < data.size(); offset += kEncodeChunk) {
        const size_t chunk = std::min(kEncodeChunk, data.size() - offset);
        written += static_cast<size_t>(
            EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text + written),
                            bytes(data.data() + offset), static_cast<int>(chunk)));
    }
    text[written] = '\0';
    return text;
}

unsigned char* Base64Util::Decode(const std::string& text, size_t& length) {
    length = 0;
    const std::string compact = withoutWhiteSpace(text);
    const std::optional<size_t> padding = paddingOf(compact);
    if (!padding) {
        return nullptr;
    }
    const size_t decodedLength = compact.size() / 4 * 3;
    auto* data = static_cast<unsigned char*>(std::malloc(decodedLength + 1));
    if (!data) {
        return nullptr;
    }
    size_t written = 0;
    for (size_t offset = 0; offset < compact.size(); offset += kDecodeChunk) {
        const size_t chunk = std::min(kDecodeChunk, compact.size() - offset);
        const int decoded = EVP_DecodeBlock(data + written, bytes(compact.data() + offset),
                                            static_cast<int>(chunk));
        if (decoded < 0) {
            std::free(data);
            return nullptr;
        }
        written += static_cast<size_t>(decoded);
    }
    // EVP_DecodeBlock counts the padding as zero bytes.
    length = written - *padding;
    data[length] = '\0';
    return data;
}

}  // namespace Core
}  // namespace Zel
