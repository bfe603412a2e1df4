#include <dlfcn.h>
#include <elf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "support/SimulatedPlatform.h"
#include "zel/PluginApi.h"
#include "zel/core/DeviceValues.h"
#include "zel/sv/CommandBase.h"

namespace {

using testing::UnorderedElementsAre;
using testing_support::SimulatedPlatform;

std::string readFile(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// Names of the symbols a shared object defines in its dynamic symbol table.
template <typename Ehdr, typename Shdr, typename Sym>
std::set<std::string> definedDynamicSymbols(const std::string& image) {
    std::set<std::string> names;
    const auto* header = reinterpret_cast<const Ehdr*>(image.data());
    const auto* sections = reinterpret_cast<const Shdr*>(image.data() + header->e_shoff);
    for (int i = 0; i < header->e_shnum; ++i) {
        if (sections[i].sh_type != SHT_DYNSYM) {
            continue;
        }
        const char* strings = image.data() + sections[sections[i].sh_link].sh_offset;
        const auto* symbols = reinterpret_cast<const Sym*>(image.data() + sections[i].sh_offset);
        const size_t count = sections[i].sh_size / sizeof(Sym);
        for (size_t s = 1; s < count; ++s) {
            // Arm's linker also lists local section symbols; they are not exports.
            const bool local = ELF32_ST_BIND(symbols[s].st_info) == STB_LOCAL;  // same in ELF64
            if (symbols[s].st_shndx != SHN_UNDEF && !local) {
                names.insert(strings + symbols[s].st_name);
            }
        }
    }
    return names;
}

std::set<std::string> exportsOf(const char* path) {
    const std::string image = readFile(path);
    if (image.size() < EI_NIDENT || std::memcmp(image.data(), ELFMAG, SELFMAG) != 0) {
        ADD_FAILURE() << path << " is not an ELF file";
        return {};
    }
    if (image[EI_CLASS] == ELFCLASS32) {
        return definedDynamicSymbols<Elf32_Ehdr, Elf32_Shdr, Elf32_Sym>(image);
    }
    return definedDynamicSymbols<Elf64_Ehdr, Elf64_Shdr, Elf64_Sym>(image);
}

TEST(PluginLibrary, ExportsExactlyTheAgentsEntryPoints) {
    EXPECT_THAT(
        exportsOf(NORVANE_PLUGIN_PATH),
        UnorderedElementsAre("initialize", "createCommandsExt", "createDeviceValuesExt",
                             "GetZelPassword", "fillVideoBufferExt", "getVideoWidthExt",
                             "getVideoHeightExt", "getGstreamerPathExt", "NvCreateNewZelIdJson"));
}

template <typename Function>
Function resolve(void* library, const char* name) {
    void* symbol = dlsym(library, name);
    EXPECT_NE(symbol, nullptr) << name;
    return reinterpret_cast<Function>(symbol);
}

TEST(PluginLibrary, LoadsAndStartsLikeTheAgentDoesIt) {
    SimulatedPlatform platform;
    void* library = dlopen(NORVANE_PLUGIN_PATH, RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();

    auto initialize = resolve<ZelPlugin::InitializeFn>(library, "initialize");
    auto width = resolve<ZelPlugin::GetVideoDimensionFn>(library, "getVideoWidthExt");
    auto height = resolve<ZelPlugin::GetVideoDimensionFn>(library, "getVideoHeightExt");
    auto path = resolve<ZelPlugin::GetGstreamerPathFn>(library, "getGstreamerPathExt");
    auto fill = resolve<ZelPlugin::FillVideoBufferFn>(library, "fillVideoBufferExt");
    auto commands = resolve<ZelPlugin::CreateCommandsFn>(library, "createCommandsExt");
    auto values = resolve<ZelPlugin::CreateDeviceValuesFn>(library, "createDeviceValuesExt");
    auto password = resolve<ZelPlugin::GetPasswordFn>(library, "GetZelPassword");
    ASSERT_FALSE(testing::Test::HasFailure());

    initialize();

    const auto journal = platform.tv().takeJournal();
    ASSERT_FALSE(journal.empty());
    EXPECT_EQ(journal.back().key, "marlo.sl2.str.app.setting.zel.session.code");
    EXPECT_EQ(std::get<std::string>(journal.back().value), "sessionDefault");
    EXPECT_EQ(width(), 1920);
    EXPECT_EQ(height(), 1080);
    EXPECT_EQ(path(), "/3rd/ULI/lib/");
    EXPECT_EQ(fill(nullptr, 0), -1);
    for (Zel::Sv::CommandBase* command : commands()) {
        delete command;
    }
    delete values("television");
    EXPECT_EQ(password().size() % 17, 0u);
}

}  // namespace
