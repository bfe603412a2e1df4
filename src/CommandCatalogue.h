// The support-view commands, in the order the agent shows and numbers them.
#pragma once

#include <vector>

#include "zel/sv/CommandBase.h"

namespace norvane {

// New objects, owned by the caller from then on.
std::vector<Zel::Sv::CommandBase*> createCommandCatalogue();

}  // namespace norvane
