#include "Plugin.h"

#include <dlfcn.h>
#include <unistd.h>

#include <filesystem>

namespace agentsim {
namespace {

template <typename Function>
Function resolve(void* library, const std::string& path, const char* name, bool required) {
    void* symbol = dlsym(library, name);
    if (symbol == nullptr && required) {
        throw LoadError("agentsim: " + path + " is not a plug-in: it lacks the entry point " +
                        name);
    }
    return reinterpret_cast<Function>(symbol);
}

}  // namespace

PluginEntryPoints loadPlugin(const std::string& path) {
    if (!std::filesystem::exists(path)) {
        throw LoadError("agentsim: no plug-in at " + path);
    }
    void* library = dlopen(path.c_str(), RTLD_NOW);
    if (library == nullptr) {
        const char* reason = dlerror();
        throw LoadError("agentsim: cannot load " + path + ": " + (reason ? reason : "unknown"));
    }
    PluginEntryPoints entry;
    entry.initialize = resolve<ZelPlugin::InitializeFn>(library, path, "initialize", true);
    entry.createCommands =
        resolve<ZelPlugin::CreateCommandsFn>(library, path, "createCommandsExt", true);
    entry.createDeviceValues =
        resolve<ZelPlugin::CreateDeviceValuesFn>(library, path, "createDeviceValuesExt", true);
    entry.getPassword = resolve<ZelPlugin::GetPasswordFn>(library, path, "GetZelPassword", true);
    entry.fillVideoBuffer =
        resolve<ZelPlugin::FillVideoBufferFn>(library, path, "fillVideoBufferExt", true);
    entry.getVideoWidth =
        resolve<ZelPlugin::GetVideoDimensionFn>(library, path, "getVideoWidthExt", true);
    entry.getVideoHeight =
        resolve<ZelPlugin::GetVideoDimensionFn>(library, path, "getVideoHeightExt", true);
    entry.getGstreamerPath =
        resolve<ZelPlugin::GetGstreamerPathFn>(library, path, "getGstreamerPathExt", true);
    entry.createIdJson =
        resolve<ZelPlugin::CreateIdJsonFn>(library, path, "NvCreateNewZelIdJson", false);
    return entry;
}

std::string defaultPluginPath() {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        const auto beside = self.parent_path() / "libnorvane_zel.so";
        if (std::filesystem::exists(beside)) {
            return beside.string();
        }
    }
    return AGENTSIM_BUILT_PLUGIN;
}

}  // namespace agentsim
