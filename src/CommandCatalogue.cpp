#include "CommandCatalogue.h"

#include "DeviceAgent/SupportView/Project/CommandNvDiagBTInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagHDMIInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagNetworkInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagPictureInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagSoundInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagSystemInfo.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagTVInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceConfig.h"
#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceInfo.h"
#include "DeviceAgent/SupportView/Project/CommandNvRemoteButton.h"
#include "DeviceAgent/SupportView/Project/CommandNvResetFactoryDefaults.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolDTV.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolOTA.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQReset.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQRestore.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPicture.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolSound.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolSourceChange.h"

namespace norvane {

std::vector<Zel::Sv::CommandBase*> createCommandCatalogue() {
    std::vector<Zel::Sv::CommandBase*> commands;
    // The order the agent shows and numbers them in.
    commands.push_back(new Zel::Sv::SystemInfo());
    commands.push_back(new Zel::Sv::PictureDiagnostic());
    commands.push_back(new Zel::Sv::SoundDiagnostic());
    commands.push_back(new Zel::Sv::HDMIDiagnostic());
    commands.push_back(new Zel::Sv::TVDiagnostic());
    commands.push_back(new Zel::Sv::NetworkDiagnostic());
    commands.push_back(new Zel::Sv::BTDiagnostic());
    commands.push_back(new Zel::Sv::PictureDiagnoseTool());
    commands.push_back(new Zel::Sv::SoundDiagnoseTool());
    commands.push_back(new Zel::Sv::DTVDiagnoseTool());
    commands.push_back(new Zel::Sv::SourceChangeTool());
    commands.push_back(new Zel::Sv::NorvaneOTATool());
    commands.push_back(new Zel::Sv::PQAQRestoreTool());
    commands.push_back(new Zel::Sv::PQAQResetTool());
    commands.push_back(new Sv::GetDeviceConfig());
    commands.push_back(new Sv::RemoteButton());
    commands.push_back(new Sv::GetDeviceInfo());
    commands.push_back(new Sv::ResetFactoryDefaults());
    return commands;
}

}  // namespace norvane
