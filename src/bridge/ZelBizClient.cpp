#include "bridge/ZelBizClient.h"

#include <cstdlib>

#include "common/ConsoleLog.h"
#include "common/Seams.h"
#include "csp/cspDebug.h"
#include "frame/Process.h"

namespace norvane {

using marlo::lm::interfaces::tvapi::RootInterface;
using marlo::lm::interfaces::tvapi::ValueHandle;

namespace {

ZelBizClient* clientInstance = nullptr;
// Owned by the middleware, which keeps it alive for the life of the process.
RootInterface* rootInterface = nullptr;
std::map<int32_t, std::string> languageTable;

constexpr const char* kRootInterfaceName = "marlo.lm.interfaces.tvapi.RootInterface";
constexpr const char* kMissingRootOrKey = "TV Root Interface is NULL or id is NULL.\n";

const char* const kLanguageNames[] = {
    "German",     "English",      "French",        "Italian",
    "Spanish",    "Dutch",        "Czech",         "Greek",
    "Polish",     "Hungarian",    "Finnish",       "Slovenian",
    "Slovak",     "Turkish",      "Swedish",       "Danish",
    "Portuguese", "Russian",      "Norwegian",     "Chinese",
    "Latvian",    "Lithuanian",   "Estonian",      "Ukrainian",
    "Romanian",   "Byelorussian", "Serbian",       "Croatian",
    "Japanese",   "Irish",        "Welsh",         "Catalan",
    "Gaelic",     "Basque",       "Galician",      "Scots",
    "Breton",     "Corsican",     "Alemannic",     "Bulgarian",
    "Arabic",     "Walloon",      "Luxembourgish", "Vietnamese",
    "Thai",       "Burmese",      "Uzbekistan",    "Hindi",
    "Malaysian",  "Hebrew",       "Farsi",         "Indonesian",
    "Macedonian", "Albanian",     "Kurdish",       "Traditional Chinese",
    "Armenian",   "Georgian",     "Urdu",          "Amharic",
    "Kirghiz",    "Kazakh",       "Azerbaijani",   "Icelandic",
    "Bosnian",    "Moldavian",    "Bengal",        "Mongolia",
    "Montenegro", "Tamil",
};

void fillLanguageNames() {
    int32_t index = 0;
    for (const char* name : kLanguageNames) {
        languageTable.emplace(index++, name);
    }
}

int32_t startSettingsService() {
    cspDebugInit();
    setenv("LMQR2_UDPHOST", "127.0.0.1:12321", 1);
    if (frame::Process::getInstance().startAppMembersSync(CreateBizProxy) != 0) {
        consoleLog(kLogError, "Start biz proxy failed.\n");
        return -1;
    }
    consoleLog(kLogInfo, "Start biz proxy successfully\n");

    boost::shared_ptr<frame::Interface> reference;
    if (frame::Process::getInstance().getInterfaceReference(reference, kRootInterfaceName) != 0) {
        return -1;
    }
    if (reference->get<RootInterface>() != nullptr) {
        rootInterface = reference->get<RootInterface>();
    }
    if (rootInterface == nullptr) {
        consoleLog(kLogError, "Zel root interface init failed\n");
        return -1;
    }
    fillLanguageNames();
    clock::sleepMicroseconds(300000);
    consoleLog(kLogInfo, "Zel root interface init successfully\n");
    return 0;
}

bool usable(const char* key) {
    return rootInterface != nullptr && key != nullptr && *key != '\0';
}

// The shape every primitive shares: connect the key, run the typed operation on its handle,
// disconnect. Returns false (logged) when the key cannot be reached.
template <typename Operation>
bool withHandle(const char* key, tvmodelapi::Observer* observer, Operation operation) {
    if (!usable(key)) {
        consoleLog(kLogError, kMissingRootOrKey);
        return false;
    }
    const std::string name(key);
    ValueHandle* handle = nullptr;
    const int32_t status = rootInterface->connect(name, observer, handle);
    if (status != 0) {
        consoleLog(kLogError, "TV Root Interface connect [%s] failed, res = %d.\n", key, status);
        return false;
    }
    operation(*handle);
    rootInterface->disconnect(name, status, handle);
    return true;
}

int32_t attachObserver(const char* key, tvmodelapi::Observer* observer) {
    if (!usable(key)) {
        consoleLog(kLogError, kMissingRootOrKey);
        return -1;
    }
    ValueHandle* handle = nullptr;
    const int32_t status = rootInterface->connect(std::string(key), observer, handle);
    if (status < 0) {
        consoleLog(kLogError, "Connect for %s failed (res = %d).\n", key, status);
        return -1;
    }
    return 0;
}

}  // namespace

ParameterList makeParameters(const std::vector<std::string>& values) {
    ParameterList parameters;
    parameters.reserve(values.size());
    int32_t position = 0;
    for (const std::string& value : values) {
        parameters.push_back(ParameterRecord{parameterTag(position++), value});
    }
    return parameters;
}

const std::map<int32_t, std::string>& languageNames() {
    return languageTable;
}

ZelBizClient::ZelBizClient() {
    if (rootInterface == nullptr) {
        startSettingsService();
    }
}

ZelBizClient::~ZelBizClient() = default;

ZelBizClient* ZelBizClient::getInstance() {
    if (clientInstance == nullptr) {
        clientInstance = new ZelBizClient();
    }
    return clientInstance;
}

void ZelBizClient::getIntValue(const char* key, int32_t& value) {
    int32_t read = 0;
    if (withHandle(key, nullptr, [&](ValueHandle& handle) { read = handle.getInt32(); })) {
        value = read;
    }
}

int32_t ZelBizClient::setIntValue(const char* key, int32_t value) {
    int32_t result = 0;
    if (!withHandle(key, nullptr, [&](ValueHandle& handle) { result = handle.setInt32(value); })) {
        return -1;
    }
    consoleLog(kLogInfo, "set value of [%s] successfully, value = %d, res = %d.\n", key, value,
               result);
    return result;
}

int32_t ZelBizClient::getStringValue(const char* key, std::string& value,
                                     tvmodelapi::Observer* observer) {
    if (!withHandle(key, observer, [&](ValueHandle& handle) { handle.getString(value); })) {
        return -1;
    }
    consoleLog(kLogInfo, "Get value of [%s] successfully, value = %s.\n", key, value.c_str());
    return 0;
}

int32_t ZelBizClient::setStringValue(const char* key, const std::string& value) {
    int32_t result = 0;
    if (!withHandle(key, nullptr, [&](ValueHandle& handle) { result = handle.setString(value); })) {
        return -1;
    }
    consoleLog(kLogInfo, "set value of [%s] successfully, value = %s, res = %d.\n", key,
               value.c_str(), result);
    return result;
}

int32_t ZelBizClient::getStringVector(const char* key, std::vector<std::string>& value,
                                      tvmodelapi::Observer* observer) {
    return withHandle(key, observer, [&](ValueHandle& handle) { handle.getStringVector(value); })
               ? 0
               : -1;
}

int32_t ZelBizClient::getIntVector(const char* key, std::vector<int32_t>& value,
                                   tvmodelapi::Observer* observer) {
    return withHandle(key, observer, [&](ValueHandle& handle) { handle.getInt32Vector(value); })
               ? 0
               : -1;
}

int32_t ZelBizClient::getIntValueStatus(const char* key, int32_t& value,
                                        tvmodelapi::Observer* observer) {
    return withHandle(key, observer, [&](ValueHandle& handle) { value = handle.getInt32(); }) ? 0
                                                                                              : -1;
}

int32_t ZelBizClient::onAction(const char* key, ParameterList& reply,
                               const ParameterList& arguments) {
    int32_t result = 0;
    if (!withHandle(key, nullptr,
                    [&](ValueHandle& handle) { result = handle.onAction(reply, arguments); })) {
        return -1;
    }
    consoleLog(kLogInfo, "onAction of [%s] successfully, res = %d.\n", key, result);
    return result;
}

int32_t ZelBizClient::connectIntObserver(const char* key,
                                         tvmodelapi::ObserverNumericInteger* observer) {
    return attachObserver(key, observer);
}

int32_t ZelBizClient::connectStringObserver(const char* key, tvmodelapi::ObserverString* observer) {
    return attachObserver(key, observer);
}

}  // namespace norvane
