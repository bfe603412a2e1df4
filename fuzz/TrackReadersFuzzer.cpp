// The readers of the TV's track descriptions (audio and subtitle languages of a programme), both
// on every input: they promise never to throw and to keep a leading 0 in the list.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "bridge/BizLanguages.h"

namespace {

void readWith(int32_t (*reader)(const std::string&, std::vector<int32_t>&),
              const std::string& json) {
    std::vector<int32_t> languages{-7};
    const int32_t status = reader(json, languages);
    if ((status != 0 && status != -1) || languages.empty() || languages.front() != 0) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string json(reinterpret_cast<const char*>(data), size);
    readWith(norvane::BizParseSubtitleInfo, json);
    readWith(norvane::BizParseAudioLanguageInfo, json);
    return 0;
}
