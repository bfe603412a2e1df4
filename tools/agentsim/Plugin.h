// The plug-in as the agent sees it: a loaded library and its resolved entry points.
#pragma once

#include <stdexcept>
#include <string>

#include "zel/PluginApi.h"

namespace agentsim {

class LoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct PluginEntryPoints {
    ZelPlugin::InitializeFn initialize = nullptr;
    ZelPlugin::CreateCommandsFn createCommands = nullptr;
    ZelPlugin::CreateDeviceValuesFn createDeviceValues = nullptr;
    ZelPlugin::GetPasswordFn getPassword = nullptr;
    ZelPlugin::FillVideoBufferFn fillVideoBuffer = nullptr;
    ZelPlugin::GetVideoDimensionFn getVideoWidth = nullptr;
    ZelPlugin::GetVideoDimensionFn getVideoHeight = nullptr;
    ZelPlugin::GetGstreamerPathFn getGstreamerPath = nullptr;
    // Provisioning entry point; null when the plug-in does not offer it.
    ZelPlugin::CreateIdJsonFn createIdJson = nullptr;
};

// Loads the library with RTLD_NOW, as the agent does, and resolves the eight entry points.
// Throws LoadError (one line) when the file cannot be loaded or an entry point is missing.
// The library stays loaded for the life of the process.
PluginEntryPoints loadPlugin(const std::string& path);

// The plug-in built next to this program.
std::string defaultPluginPath();

}  // namespace agentsim
