#include "support/AgentJson.h"

#include <stdexcept>

namespace testing_support {

ZelJson::Value parseJson(const std::string& text) {
    ZelJson::Value document;
    ZelJson::Reader reader;
    if (!reader.parse(text, document)) {
        throw std::invalid_argument("bad JSON: " + reader.getFormattedErrorMessages());
    }
    return document;
}

}  // namespace testing_support
