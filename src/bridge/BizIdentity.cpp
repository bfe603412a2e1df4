#include "bridge/BizIdentity.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>

#include <sys/stat.h>

#include "bridge/BizSettingAccess.h"
#include "common/ConsoleLog.h"
#include "common/Seams.h"

namespace norvane {
namespace {

constexpr const char* kCountryKey = "marlo.sl2.str.basic.settings.country";
constexpr const char* kChipTypeKey = "marlo.sl2.str.nvfactory.chip.type";
constexpr const char* kFactoryStateKey = "marlo.sl2.i32.nvfactory.state.open";
constexpr const char* kEsnKey = "marlo.sl2.str.app.setting.esn";
constexpr const char* kEthernetMacKey = "marlo.sl2.str.network.mac-address-ethernet";
constexpr const char* kSerialKey = "marlo.sl2.str.nvfactory.materiel.serial";
constexpr const char* kBrandKey = "marlo.sl2.str.nvfactory.fullbrand";
constexpr const char* kProductionTypeKey = "marlo.sl2.str.nvfactory.production.type";
constexpr const char* kSwVersionKey = "marlo.sl2.str.nvfactory.software.version";
constexpr const char* kCurrentSourceKey = "marlo.sl2.str.source.input.current";
constexpr const char* kRemoteFirmwareKey = "marlo.sl2.str.network.remotecontrol.firmware";

constexpr const char* kCiPlusKeyNameFile = "/certificate/keyname/ciplus.name";
constexpr const char* kMissingKeyName = "NULL";
constexpr const char* kUnknownDate = "unkown";

constexpr char kPasswordSeed[] = "Tkq7rLw_Zb3x-9mNp";
constexpr size_t kPasswordLength = sizeof(kPasswordSeed) - 1;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Serial characters fill the even positions.
unsigned int serialCharacter(unsigned char serial, unsigned char seed) {
    const unsigned int mixed = serial | seed;
    return mixed >= 'a' ? '0' + mixed % 10 : mixed;
}

// MAC characters fill the odd positions; the result is always printable.
unsigned int macCharacter(unsigned char mac, unsigned char seed, unsigned int position) {
    const unsigned int mixed = mac & seed;
    if (mixed >= 'a') {
        return mixed - ('a' - 'A');
    }
    if (mixed < 'A') {
        return mixed % 27 + 32 + position;
    }
    return mixed;
}

}  // namespace

std::string BizGetRegion() {
    const std::string region = "NA";
    consoleLog(kLogInfo, "The Region is %s", region.c_str());
    return region;
}

std::string BizGetSystemCountry() {
    consoleLog(kLogInfo, "BizGetSystemCountry called.");
    return readStringSetting(kCountryKey);
}

std::string BizGetPlatformMode() {
    consoleLog(kLogInfo, "BizGetPlatformMode called.");
    return readStringSetting(kChipTypeKey);
}

std::string BizGetFactoryMode() {
    const int32_t state = readIntSetting(kFactoryStateKey);
    consoleLog(kLogInfo, "BizGetFactoryMode: %d.\n", state);
    return state != 0 ? "Factory Mode" : "User Mode";
}

std::string BizGetEsn() {
    const std::string esn = readStringSetting(kEsnKey);
    return esn.empty() ? "NULL" : esn;
}

std::string BizGetEthernetMac() {
    std::string mac = readStringSetting(kEthernetMacKey);
    // ASCII only: the host's locale must not change a MAC address.
    std::transform(mac.begin(), mac.end(), mac.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return mac;
}

std::string BizGetSerialNumber() {
    const std::string fallback = "Test_SN";
    const std::string serial = readStringSetting(kSerialKey, fallback);
    return serial.empty() ? fallback : serial;
}

std::string BizGetBrand() {
    const std::string brand = readStringSetting(kBrandKey);
    if (brand.empty()) {
        consoleLog(kLogError, "Get brand error.");
        return "Norvane";
    }
    return brand;
}

std::string BizGetZelModel() {
    std::string model = readStringSetting(kProductionTypeKey);
    const size_t underscore = model.find('_');
    if (underscore != std::string::npos) {
        model[underscore] = '(';
        model += ')';
    }
    consoleLog(kLogInfo, "Biz Get Zel Model:%s.", model.c_str());
    return model;
}

std::string BizGetZelSubModel() {
    consoleLog(kLogInfo, "BizGetZelSubModel called.");
    // The TV's identity is read for the log only: the agent's server expects the fixed
    // sub-model of this build.
    readStringSetting(kProductionTypeKey);
    readStringSetting(kCountryKey);
    readStringSetting(kBrandKey);
    const std::string subModel = "0004";
    consoleLog(kLogInfo, "Norvane Model Value is %s.", subModel.c_str());
    return subModel;
}

std::string BizGetSwVersion() {
    const std::string version = readStringSetting(kSwVersionKey);
    consoleLog(kLogInfo, "BizGetSwVersion called, swVersion = %s.\n", version.c_str());
    return version;
}

std::string BizGetSourceName() {
    const std::string source = displaySourceName(readStringSetting(kCurrentSourceKey, "TV"));
    consoleLog(kLogInfo, "BizGetSourceName called, strSource = %s.\n", source.c_str());
    return source;
}

std::string BizGetRemoteControlFirmware() {
    return readStringSetting(kRemoteFirmwareKey);
}

std::string BizGetCiPlusKeyName() {
    return readKeyNameFile(kCiPlusKeyNameFile);
}

std::string BizGetManufacturedDate() {
    consoleLog(kLogInfo, "BizGetManufacturedDate called.");
    return kUnknownDate;
}

std::string BizGetInitialPowerOnDate() {
    consoleLog(kLogInfo, "BizGetInitialPowerOnDate called.");
    return kUnknownDate;
}

std::string BizGenerateZelPassword(const std::vector<std::string>& parts) {
    std::string password(kPasswordSeed, kPasswordLength);
    if (parts.size() < 2) {
        consoleLog(kLogError, "In BizGenerateZelPassword, parameter error.");
        return password;
    }
    const std::string& serial = parts[0];
    const std::string& mac = parts[1];
    const auto seed = [](size_t position) {
        return static_cast<unsigned char>(kPasswordSeed[position]);
    };
    for (size_t i = 0; i < std::min(serial.size(), kPasswordLength); i += 2) {
        password[i] =
            static_cast<char>(serialCharacter(static_cast<unsigned char>(serial[i]), seed(i)));
    }
    for (size_t i = 1; i < std::min(mac.size(), kPasswordLength); i += 2) {
        password[i] = static_cast<char>(macCharacter(static_cast<unsigned char>(mac[i]), seed(i),
                                                     static_cast<unsigned int>(i)));
    }
    return password;
}

std::string BizGetZelPassword() {
    return BizGenerateZelPassword({BizGetSerialNumber(), BizGetEthernetMac()});
}

std::string readKeyNameFile(const std::string& tvPath) {
    const std::unique_ptr<std::FILE, FileCloser> file(
        std::fopen(platformPath(tvPath).c_str(), "rb"));
    // Only a regular file has a size worth reading (a folder's end offset can be enormous).
    struct stat status {};
    if (!file || fstat(fileno(file.get()), &status) != 0 || !S_ISREG(status.st_mode) ||
        std::fseek(file.get(), 0, SEEK_END) != 0) {
        return kMissingKeyName;
    }
    const long size = std::ftell(file.get());
    if (size <= 0) {
        return kMissingKeyName;
    }
    std::rewind(file.get());
    std::string content(static_cast<size_t>(size), '\0');
    content.resize(std::fread(&content[0], 1, content.size(), file.get()));
    return content;
}

}  // namespace norvane
