// How the TV itself reacts to what the plug-in does: its built-in action handlers and its
// reaction to some writes.
#pragma once

#include <string>

#include "tvsim/TvSim.h"

namespace tvsim {

class Service;

// The TV's own handler for an action key; empty when the TV does nothing but accept it.
ActionHandler builtInActionHandler(Service& service, const std::string& key);

// Runs after a write by the plug-in has been stored.
void reactToWrite(Service& service, const std::string& key, const Value& value);

}  // namespace tvsim
