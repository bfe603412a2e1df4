// The agent identity file rewrite, for the host's provisioning of a new TV. An identity file
// (JSON: "key", "cert", "trust", "password", "value1", "value2") holds a base64-wrapped,
// pass-phrase-protected RSA private key; the rewrite protects the key with this TV's access
// password instead.
#pragma once

#include <cstdint>
#include <string>

#include "NorvaneExports.h"

extern "C" {

// Reads `input`, unwraps its key with its "password" (generated from its "value1" and "value2"
// when empty), and writes `output` (which may be `input`) with the key protected by the TV's
// access password, the old "cert" and "trust", and the given value1 and value2. Returns 0, or -1
// on any failure (logged), in which case `output` is left as it was.
NV_EXPORT int32_t NvCreateNewZelIdJson(const std::string& input, const std::string& output,
                                       const char* value1, const char* value2);
}
