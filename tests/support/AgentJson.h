// Reading JSON texts into the agent's document type, for tests that compare documents.
#pragma once

#include <string>

#include "zel/json/ZelJson.h"

namespace testing_support {

// The document `text` holds; throws std::invalid_argument with the reader's message when it is
// not JSON.
ZelJson::Value parseJson(const std::string& text);

}  // namespace testing_support
