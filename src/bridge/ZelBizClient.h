// The plug-in's only door into the TV's settings service: starts the middleware proxy once,
// keeps the root interface and offers typed reads, writes, actions and observer attachment.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "marlo/tvapi/RootInterface.h"
#include "tvmodelapi/Observer.h"

namespace norvane {

using ParameterRecord = marlo::lm::interfaces::tvapi::ParameterRecord;
using ParameterList = marlo::lm::interfaces::tvapi::ParameterList;
using marlo::lm::interfaces::tvapi::parameterTag;

// Builds an action argument list, tagging each value with its position.
ParameterList makeParameters(const std::vector<std::string>& values);

class ZelBizClient {
public:
    // The process-wide client; the first call starts the middleware proxy (never retried).
    static ZelBizClient* getInstance();
    virtual ~ZelBizClient();
    ZelBizClient(const ZelBizClient&) = delete;
    ZelBizClient& operator=(const ZelBizClient&) = delete;

    // Sets `value` only on success; callers initialise it with the value a failure stands for.
    void getIntValue(const char* key, int32_t& value);
    int32_t setIntValue(const char* key, int32_t value);
    int32_t getStringValue(const char* key, std::string& value,
                           tvmodelapi::Observer* observer = nullptr);
    int32_t setStringValue(const char* key, const std::string& value);
    int32_t getStringVector(const char* key, std::vector<std::string>& value,
                            tvmodelapi::Observer* observer = nullptr);
    int32_t getIntVector(const char* key, std::vector<int32_t>& value,
                         tvmodelapi::Observer* observer = nullptr);
    int32_t onAction(const char* key, ParameterList& reply, const ParameterList& arguments);
    int32_t getIntValueStatus(const char* key, int32_t& value, tvmodelapi::Observer* observer);

    // The observer stays attached for the life of the process.
    int32_t connectIntObserver(const char* key, tvmodelapi::ObserverNumericInteger* observer);
    int32_t connectStringObserver(const char* key, tvmodelapi::ObserverString* observer);

private:
    ZelBizClient();
};

// Middleware language number (0 to 69) to English language name; filled when the client starts.
const std::map<int32_t, std::string>& languageNames();

}  // namespace norvane
