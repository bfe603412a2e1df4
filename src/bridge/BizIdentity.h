// Who the TV is: region, country, chip, ESN, MAC, serial, brand, model, software version,
// current source, remote-control firmware, key names, dates, factory state, and the agent's
// access password derived from the serial and the MAC address.
#pragma once

#include <string>
#include <vector>

namespace norvane {

std::string BizGetRegion();
std::string BizGetSystemCountry();
std::string BizGetPlatformMode();
std::string BizGetFactoryMode();
// "NULL" when the TV has none.
std::string BizGetEsn();
// Lower case, otherwise as the TV stores it.
std::string BizGetEthernetMac();
// "Test_SN" when the TV has none.
std::string BizGetSerialNumber();
// "Norvane" when the TV has none.
std::string BizGetBrand();
// 55X9_EU reads as 55X9(EU).
std::string BizGetZelModel();
std::string BizGetZelSubModel();
std::string BizGetSwVersion();
std::string BizGetSourceName();
std::string BizGetRemoteControlFirmware();
std::string BizGetCiPlusKeyName();
std::string BizGetManufacturedDate();
std::string BizGetInitialPowerOnDate();

// The 17-character access password from [serial, lower-case MAC]; fewer parts give the seed.
std::string BizGenerateZelPassword(const std::vector<std::string>& parts);
std::string BizGetZelPassword();

// The whole content of a key-name file (a TV path), byte for byte; "NULL" when it cannot be
// opened or sized, or is empty.
std::string readKeyNameFile(const std::string& tvPath);

}  // namespace norvane
