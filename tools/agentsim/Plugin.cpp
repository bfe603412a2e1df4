#include "Plugin.h"

#include <dlfcn.h>
#include <elf.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

namespace agentsim {
namespace {

namespace fs = std::filesystem;

template <typename Function>
Function resolve(void* library, const std::string& path, const char* name, bool required) {
    void* symbol = dlsym(library, name);
    if (symbol == nullptr && required) {
        throw LoadError("agentsim: " + path + " is not a plug-in: it lacks the entry point " +
                        name);
    }
    return reinterpret_cast<Function>(symbol);
}

// What an ELF file's header says about the machine it is built for.
struct ElfTarget {
    unsigned char wordSize;   // ELFCLASS32 or ELFCLASS64
    unsigned char byteOrder;  // ELFDATA2LSB or ELFDATA2MSB
    uint16_t machine;         // EM_...
    uint16_t type;            // ET_...
};

// Nothing when the file does not start with an ELF header.
std::optional<ElfTarget> elfTargetOf(const std::string& path) {
    // e_type and e_machine follow the identification bytes at the same place in both classes.
    unsigned char header[EI_NIDENT + 4] = {};
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(header), sizeof header) ||
        std::memcmp(header, ELFMAG, SELFMAG) != 0) {
        return std::nullopt;
    }
    const bool bigEndian = header[EI_DATA] == ELFDATA2MSB;
    const auto half = [&](size_t at) {
        return static_cast<uint16_t>(bigEndian ? header[at] << 8 | header[at + 1]
                                               : header[at + 1] << 8 | header[at]);
    };
    return ElfTarget{header[EI_CLASS], header[EI_DATA], half(EI_NIDENT + 2), half(EI_NIDENT)};
}

std::string machineName(const ElfTarget& target) {
    const bool wide = target.wordSize == ELFCLASS64;
    switch (target.machine) {
        case EM_386:
            return "32-bit x86";
        case EM_X86_64:
            return wide ? "x86-64" : "x86-64 with 32-bit pointers (x32)";
        case EM_ARM:
            return "32-bit Arm";
        case EM_AARCH64:
            return wide ? "64-bit Arm" : "64-bit Arm with 32-bit pointers";
        case EM_RISCV:
            return wide ? "64-bit RISC-V" : "32-bit RISC-V";
        case EM_MIPS:
            return wide ? "64-bit MIPS" : "32-bit MIPS";
        case EM_PPC:
            return "32-bit PowerPC";
        case EM_PPC64:
            return "64-bit PowerPC";
        case EM_S390:
            return "IBM Z";
        default:
            return std::string(wide ? "64" : "32") + "-bit ELF machine " +
                   std::to_string(target.machine);
    }
}

std::string describe(const ElfTarget& target) {
    const std::string order = target.byteOrder == ELFDATA2MSB ? ", big-endian" : "";
    return machineName(target) + order;
}

bool sameMachine(const ElfTarget& a, const ElfTarget& b) {
    return a.wordSize == b.wordSize && a.byteOrder == b.byteOrder && a.machine == b.machine;
}

// Refuses, naming the reason, a file that cannot be a plug-in for the machine agentsim runs on.
void requirePluginForThisMachine(const std::string& path) {
    if (fs::is_directory(path)) {
        throw LoadError("agentsim: " + path + " is a folder, not a plug-in");
    }
    const std::optional<ElfTarget> target = elfTargetOf(path);
    if (!target) {
        throw LoadError("agentsim: " + path +
                        " is not a plug-in for this machine: it is not an ELF shared library");
    }
    const std::optional<ElfTarget> self = elfTargetOf("/proc/self/exe");
    if (self && !sameMachine(*target, *self)) {
        throw LoadError("agentsim: " + path + " is not a plug-in for this machine: it is built " +
                        "for " + describe(*target) + ", and agentsim runs on " + describe(*self));
    }
    if (target->type != ET_DYN) {
        throw LoadError("agentsim: " + path +
                        " is not a plug-in for this machine: it is an ELF file but no shared "
                        "library");
    }
}

}  // namespace

PluginEntryPoints loadPlugin(const std::string& path) {
    if (!fs::exists(path)) {
        throw LoadError("agentsim: no plug-in at " + path);
    }
    requirePluginForThisMachine(path);
    // Without a slash, dlopen would search the system's library folders instead.
    const std::string loadable = path.find('/') == std::string::npos ? "./" + path : path;
    void* library = dlopen(loadable.c_str(), RTLD_NOW);
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
