// The agent's registry of identity values given to it at provisioning.
#pragma once

#include <string>

namespace Zel {
namespace Sv {

class CommandManager {
public:
    static CommandManager& Instance();

    std::string getOpid() const;
    std::string getId() const;
    std::string getEsn() const;
    std::string getBrand() const;

private:
    CommandManager() = default;
};

}  // namespace Sv
}  // namespace Zel
