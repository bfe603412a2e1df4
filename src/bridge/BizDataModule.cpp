#include "bridge/BizDataModule.h"

#include "bridge/BizSettingAccess.h"
#include "common/ConsoleLog.h"

namespace norvane {
namespace {

constexpr const char* kDataModuleAction = "marlo.sl2.action.system.operate.dataModule";
constexpr const char* kSoundResetAction = "marlo.sl2.action.sound.setting.reset";
constexpr const char* kPictureResetAction = "marlo.sl2.action.video.reset.picture.settings";
constexpr const char* kFactoryResetAction = "marlo.sl2.action.system.factory.reset";
constexpr const char* kSendKeyAction = "marlo.sl2.system.action.send.key";

// The data module's operation codes.
constexpr const char* kBackUp = "1";
constexpr const char* kRestore = "2";

constexpr int32_t kSoundData = 1;
constexpr int32_t kPictureData = 2;

constexpr int32_t kCheckForUpdate = 5;

}  // namespace

int32_t ZelBackupAQPQ() {
    consoleLog(kLogInfo, "ZelBackupAQPQ called\n");
    runAction(kDataModuleAction, {kBackUp});
    return 0;
}

int32_t BizRestoreAQPQ(int32_t mode) {
    consoleLog(kLogInfo, "BizRestoreAQPQ: mode=%d.\n", mode);
    if (mode != kSoundData && mode != kPictureData) {
        return -1;
    }
    runAction(kDataModuleAction, {kRestore, std::to_string(mode)});
    return 0;
}

int32_t BizResetAQPQ(int32_t mode) {
    if (mode == kSoundData) {
        consoleLog(kLogInfo, "AQ reset.\n");
        runAction(kSoundResetAction, {});
    } else if (mode == kPictureData) {
        consoleLog(kLogInfo, "PQ reset.\n");
        runAction(kPictureResetAction, {});
    }
    return 0;
}

int32_t BizFactoryReset() {
    consoleLog(kLogInfo, "Do BizFactoryReset.\n");
    runAction(kFactoryResetAction, {});
    return 0;
}

int32_t BizActionOTA() {
    notifyTvApplication(kCheckForUpdate);
    consoleLog(kLogInfo, "Do BizActionOTA.\n");
    return 0;
}

int32_t BizSendKey(const std::string& keyName) {
    consoleLog(kLogInfo, "Zel send button %s.\n", keyName.c_str());
    runAction(kSendKeyAction, {keyName});
    return 0;
}

}  // namespace norvane
