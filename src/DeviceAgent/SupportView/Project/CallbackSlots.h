// The callback table's slots: number, name and function type. The slot function of `Name` is
// reached through the wrapper Nv<Name> and installed with NvRegister<Name>.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace norvane {
namespace slot {

using StringQuery = std::string (*)();
using IntQuery = int32_t (*)();
using FlagQuery = bool (*)();
using ListQuery = int32_t (*)(std::vector<std::string>&);
using IntWriter = int32_t (*)(int32_t);
using LabelWriter = int32_t (*)(const std::string&);
using Action = int32_t (*)();
using ModeAction = int32_t (*)(int32_t);
using NameAction = int32_t (*)(const std::string&);
using ArcInspection = int32_t (*)(std::string& result, std::string& details);
using PasswordGenerator = std::string (*)(const std::vector<std::string>& parts);
using FilePathQuery = std::string (*)(const std::string& fileType, int32_t index);
using FrameFill = int32_t (*)(unsigned char* buffer, uint32_t size);
using RegionRule = int32_t (*)(const std::string& region);

}  // namespace slot
}  // namespace norvane

// X(slot number, name, function type), in registration order.
#define NORVANE_CALLBACK_SLOTS(X)                      \
    X(1, GetSystemCountry, StringQuery)                \
    X(2, GetPlatformMode, StringQuery)                 \
    X(3, GetSystemLanguage, StringQuery)               \
    X(4, GetFactoryMode, StringQuery)                  \
    X(5, GetEsn, StringQuery)                          \
    X(6, GetCiPlusKeyName, StringQuery)                \
    X(7, GetVStrHdcpKeyList, ListQuery)                \
    X(8, GetEdidInfo, StringQuery)                     \
    X(9, PictureInspectionNotifyAlt, Action)           \
    X(10, GetSpdifValue, IntQuery)                     \
    X(11, IsBTSoundBarType, FlagQuery)                 \
    X(12, IsHeadphoneConnected, FlagQuery)             \
    X(13, PictureInspectionNotify, Action)             \
    X(14, GetTvVideoFormat, StringQuery)               \
    X(15, GetTvAudioFormat, StringQuery)               \
    X(16, GetTvColourFormat, StringQuery)              \
    X(17, GetTvSignalQuality, StringQuery)             \
    X(18, GetTvSignalLevel, StringQuery)               \
    X(19, GetTvHDRType, StringQuery)                   \
    X(20, GetModulationType, StringQuery)              \
    X(21, GetChannelFrequency, StringQuery)            \
    X(22, GetVStrHDMIPortNameList, ListQuery)          \
    X(23, GetVStrCecInputNames, ListQuery)             \
    X(24, IsCecEnabled, FlagQuery)                     \
    X(25, GetArcPortName, StringQuery)                 \
    X(26, ArcInspect, ArcInspection)                   \
    X(27, GetZelPassword, StringQuery)                 \
    X(28, GenerateZelPassword, PasswordGenerator)      \
    X(29, KeyEventProc, NameAction)                    \
    X(30, GetEthernetMac, StringQuery)                 \
    X(31, GetSerialNumber, StringQuery)                \
    X(32, GetBrand, StringQuery)                       \
    X(33, GetZelModel, StringQuery)                    \
    X(34, GetZelSubModel, StringQuery)                 \
    X(35, GetSwVersion, StringQuery)                   \
    X(36, GetManufacturedDate, StringQuery)            \
    X(37, GetInitialPowerOnDate, StringQuery)          \
    X(38, GetVStrSourceList, ListQuery)                \
    X(39, GetSourceName, StringQuery)                  \
    X(40, SetSource, LabelWriter)                      \
    X(41, GetVStrPictureModeList, ListQuery)           \
    X(42, GetPictureMode, StringQuery)                 \
    X(43, SetPictureMode, LabelWriter)                 \
    X(44, GetOverscan, FlagQuery)                      \
    X(45, SetOverscan, IntWriter)                      \
    X(46, GetColourSaturation, IntQuery)               \
    X(47, SetColourSaturation, IntWriter)              \
    X(48, GetVStrColourTemperatureModeList, ListQuery) \
    X(49, GetColourTemperature, StringQuery)           \
    X(50, SetColourTemperature, LabelWriter)           \
    X(51, GetVStrAdaptiveContrastList, ListQuery)      \
    X(52, GetAdaptiveContrast, StringQuery)            \
    X(53, SetAdaptiveContrast, LabelWriter)            \
    X(54, GetVStrUltraSmoothMotionList, ListQuery)     \
    X(55, GetUltraSmoothMotion, StringQuery)           \
    X(56, SetUltraSmoothMotion, LabelWriter)           \
    X(57, GetVStrNoiseReductionList, ListQuery)        \
    X(58, GetNoiseReduction, StringQuery)              \
    X(59, SetNoiseReduction, LabelWriter)              \
    X(60, GetVolume, IntQuery)                         \
    X(61, SetVolume, IntWriter)                        \
    X(62, GetMuteStatus, StringQuery)                  \
    X(63, SetMuteStatus, LabelWriter)                  \
    X(64, GetVStrSoundModeList, ListQuery)             \
    X(65, GetSoundMode, StringQuery)                   \
    X(66, SetSoundMode, LabelWriter)                   \
    X(67, GetHeadphoneMode, StringQuery)               \
    X(68, SetHeadphoneMode, LabelWriter)               \
    X(69, GetVStrAudioOutputList, ListQuery)           \
    X(70, GetAudioOutput, StringQuery)                 \
    X(71, SetAudioOutput, LabelWriter)                 \
    X(72, GetLipSync, IntQuery)                        \
    X(73, SetLipSync, IntWriter)                       \
    X(74, GetMainPlayInfo, StringQuery)                \
    X(75, GetVStrAudioLanguageList, ListQuery)         \
    X(76, GetCurrentSubtitle, StringQuery)             \
    X(77, SetCurrentSubtitle, LabelWriter)             \
    X(78, GetVStrSubtitleList, ListQuery)              \
    X(79, GetCurrentAudioLanguage, StringQuery)        \
    X(80, SetAudioLanguage, LabelWriter)               \
    X(81, GetHbbTVState, FlagQuery)                    \
    X(82, SetHbbTVState, IntWriter)                    \
    X(83, FactoryReset, Action)                        \
    X(84, GetReadFilePath, FilePathQuery)              \
    X(85, BackupReadFile, NameAction)                  \
    X(86, RemoveReadFile, NameAction)                  \
    X(87, ActionOTA, Action)                           \
    X(88, RestoreAQPQ, ModeAction)                     \
    X(89, ResetAQPQ, ModeAction)                       \
    X(90, GetVStrBTSelfDiagnoseInfo, ListQuery)        \
    X(91, GetVStrBTDeviceList, ListQuery)              \
    X(92, GetNetworkLinkStatus, IntQuery)              \
    X(93, GetAntenna2Signal, IntQuery)                 \
    X(94, GetRemoteControlFirmware, StringQuery)       \
    X(95, FillVideoFrameBuffer, FrameFill)             \
    X(96, IsMacPrivacyRegion, RegionRule)              \
    X(97, GetPictureInspectionRespond, StringQuery)    \
    X(98, GetSoundInspectionRespond, StringQuery)      \
    X(99, GetRegion, StringQuery)                      \
    X(100, GetEnhancedACRState, IntQuery)              \
    X(101, SetEnhancedACRState, IntWriter)             \
    X(102, GetTimeOutFlag, IntQuery)
