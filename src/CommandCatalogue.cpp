#include "CommandCatalogue.h"

namespace norvane {

std::vector<Zel::Sv::CommandBase*> createCommandCatalogue() {
    std::vector<Zel::Sv::CommandBase*> commands;
    return commands;
}

}  // namespace norvane
