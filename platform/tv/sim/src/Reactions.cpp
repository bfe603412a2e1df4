#include "Reactions.h"

#include <optional>

#include "Service.h"
#include "SettingKeys.h"
#include "Status.h"
#include "Text.h"

namespace tvsim {
namespace {

constexpr char kEverySetting[] = "marlo.sl2.";
constexpr char kSoundSettings[] = "marlo.sl2.i32.sound.";

// The data module's operations and the settings group a restore names.
constexpr char kBackUpOperation[] = "1";
constexpr char kRestoreOperation[] = "2";
constexpr char kRestoreSound[] = "1";
constexpr char kRestorePicture[] = "2";

// The argument at `position` of an action's list, found by its tag.
std::optional<std::string> argument(const ParameterList& arguments, int32_t position) {
    const int32_t tag = marlo::lm::interfaces::tvapi::parameterTag(position);
    for (const ParameterRecord& record : arguments) {
        if (record.tag == tag) {
            return record.value;
        }
    }
    return std::nullopt;
}

using Reaction = int32_t (*)(Service& service, const ParameterList& arguments);

int32_t captureScreen(Service& service, const ParameterList& arguments) {
    const std::optional<std::string> folder = argument(arguments, 0);
    const std::optional<std::string> fileName = argument(arguments, 1);
    if (!folder || !fileName) {
        return status::kBadArguments;
    }
    return service.captureScreen(*folder + *fileName) ? status::kOk : status::kFailed;
}

int32_t resetPicture(Service& service, const ParameterList&) {
    service.restoreProfileValues(keys::kPictureSettings);
    return status::kOk;
}

int32_t resetSound(Service& service, const ParameterList&) {
    service.restoreProfileValues(kSoundSettings);
    return status::kOk;
}

int32_t factoryReset(Service& service, const ParameterList&) {
    service.restoreProfileValues(kEverySetting);
    return status::kOk;
}

int32_t operateDataModule(Service& service, const ParameterList& arguments) {
    const std::optional<std::string> operation = argument(arguments, 0);
    if (operation == kBackUpOperation) {
        service.backUp({keys::kPictureSettings, kSoundSettings});
        return status::kOk;
    }
    if (operation == kRestoreOperation) {
        const std::optional<std::string> group = argument(arguments, 1);
        if (group == kRestoreSound || group == kRestorePicture) {
            const bool restored = service.restoreBackup(
                group == kRestoreSound ? kSoundSettings : keys::kPictureSettings);
            return restored ? status::kOk : status::kFailed;
        }
    }
    return status::kBadArguments;
}

// A remote key for the TV's software; keys it does not know are accepted and change nothing.
int32_t sendKey(Service& service, const ParameterList& arguments) {
    const std::optional<std::string> key = argument(arguments, 0);
    if (!key) {
        return status::kBadArguments;
    }
    service.software().pressKey(*key);
    return status::kOk;
}

int32_t setPictureAdjustment(Service& service, const ParameterList& arguments) {
    const std::optional<std::string> text = argument(arguments, 0);
    const std::optional<int32_t> mode = text ? parseInt32(*text) : std::nullopt;
    if (!mode) {
        return status::kBadArguments;
    }
    service.store().set(keys::kPictureMode, *mode);
    return status::kOk;
}

struct BuiltIn {
    const char* key;
    Reaction reaction;
};

constexpr BuiltIn kBuiltIns[] = {
    {"marlo.sl2.action.system.capture.screen", &captureScreen},
    {"marlo.sl2.action.video.reset.picture.settings", &resetPicture},
    {"marlo.sl2.action.sound.setting.reset", &resetSound},
    {"marlo.sl2.action.system.factory.reset", &factoryReset},
    {"marlo.sl2.action.system.operate.dataModule", &operateDataModule},
    {"marlo.sl2.system.action.send.key", &sendKey},
    {"marlo.sl2.action.video.set.picture.adjustment", &setPictureAdjustment},
};

// What the TV's application switches the source to when told through the notify setting.
struct SourceSwitch {
    int32_t notification;
    const char* source;
};

constexpr SourceSwitch kSourceSwitches[] = {{7, "TV"},     {8, "AVS"},    {9, "HDMI1"},
                                            {10, "HDMI2"}, {11, "HDMI3"}, {12, "HDMI4"}};

}  // namespace

ActionHandler builtInActionHandler(Service& service, const std::string& key) {
    for (const BuiltIn& builtIn : kBuiltIns) {
        if (key == builtIn.key) {
            return [&service, reaction = builtIn.reaction](const ParameterList& arguments,
                                                           ParameterList&) {
                return reaction(service, arguments);
            };
        }
    }
    return nullptr;
}

void reactToWrite(Service& service, const std::string& key, const Value& value) {
    const auto* notification = std::get_if<int32_t>(&value);
    if (key != keys::kAppNotify || notification == nullptr) {
        return;
    }
    for (const SourceSwitch& change : kSourceSwitches) {
        if (*notification == change.notification) {
            service.store().set(keys::kCurrentSource, std::string(change.source));
        }
    }
}

}  // namespace tvsim
