#include "bridge/BizSettingAccess.h"

#include "bridge/ZelBizClient.h"

namespace norvane {
namespace {

constexpr const char* kAppNotifyKey = "marlo.sl2.i32.app.setting.zel.notify";

}  // namespace

int32_t readIntSetting(const char* key) {
    int32_t value = 0;
    ZelBizClient::getInstance()->getIntValue(key, value);
    return value;
}

std::string readStringSetting(const char* key, const std::string& initial) {
    std::string value = initial;
    ZelBizClient::getInstance()->getStringValue(key, value);
    return value;
}

std::vector<std::string> readStringList(const char* key) {
    std::vector<std::string> list;
    if (ZelBizClient::getInstance()->getStringVector(key, list) != 0) {
        list.clear();
    }
    return list;
}

std::vector<int32_t> readIntList(const char* key) {
    std::vector<int32_t> list;
    if (ZelBizClient::getInstance()->getIntVector(key, list) != 0) {
        list.clear();
    }
    return list;
}

int32_t runAction(const char* key, const std::vector<std::string>& arguments) {
    ParameterList reply;
    return ZelBizClient::getInstance()->onAction(key, reply, makeParameters(arguments));
}

void notifyTvApplication(int32_t code) {
    ZelBizClient* client = ZelBizClient::getInstance();
    client->setIntValue(kAppNotifyKey, 0);
    client->setIntValue(kAppNotifyKey, code);
}

std::string displaySourceName(const std::string& name) {
    return name == "AVS" ? "AV" : name;
}

}  // namespace norvane
