#include "zel/sv/CommandBase.h"

namespace Zel {
namespace Sv {

CommandBase::~CommandBase() = default;

CommandHandler::CommandHandler(CommandBase& command) : command_(command) {}

CommandHandler::~CommandHandler() = default;

}  // namespace Sv
}  // namespace Zel
