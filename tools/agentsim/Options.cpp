#include "Options.h"

#include <stdexcept>

#include "Plugin.h"

namespace agentsim {

const char* const kUsage =
    "usage: agentsim [--plugin PATH] [--tv PROFILE.json|empty] [--root DIR] [--time-scale N]\n"
    "                COMMAND [ARGUMENTS]\n"
    "\n"
    "Loads the TV plug-in as the support agent does and drives it against a simulated TV.\n"
    "\n"
    "Options:\n"
    "  --plugin PATH      the plug-in library (default: the one built beside agentsim)\n"
    "  --tv PROFILE.json  the TV's initial state; 'empty' for a TV with no setting values\n"
    "                     (default: the built-in profile of a typical TV)\n"
    "  --root DIR         the folder that holds the TV's filesystem (default: a fresh\n"
    "                     temporary folder, removed at exit)\n"
    "  --time-scale N     simulated time runs N times faster (default 1)\n"
    "\n"
    "Commands:\n"
    "  demo               a guided tour of what the plug-in does\n"
    "  list               the command catalogue\n"
    "  password           the agent access password\n"
    "  device-values      the device values the plug-in reports\n"
    "  describe ID        a command's descriptor\n"
    "  get ID [JSON]      a command's current values\n"
    "  exec ID [JSON]     executes a command\n"
    "  screen FILE.png    saves a screen frame\n"
    "  run FILE|-         the scripted runner (JSON lines)\n"
    "  console            the support console, a web page (--port N, --listen ADDRESS)\n"
    "\n"
    "Each command accepts --help.\n";

Options parseOptions(int argc, char** argv) {
    Options options;
    options.pluginPath = defaultPluginPath();
    int index = 1;
    auto valueOf = [&](const std::string& option) {
        if (index + 1 >= argc) {
            throw std::invalid_argument("agentsim: " + option + " needs a value");
        }
        return std::string(argv[++index]);
    };
    for (; index < argc; ++index) {
        const std::string word = argv[index];
        if (word == "--plugin") {
            options.pluginPath = valueOf(word);
        } else if (word == "--tv") {
            options.tv.profile = valueOf(word);
        } else if (word == "--root") {
            options.tv.root = valueOf(word);
        } else if (word == "--time-scale") {
            const std::string value = valueOf(word);
            size_t used = 0;
            try {
                options.tv.timeScale = std::stod(value, &used);
            } catch (const std::exception&) {
                used = 0;
            }
            if (used != value.size() || !(options.tv.timeScale > 0)) {
                throw std::invalid_argument(
                    "agentsim: --time-scale needs a positive number, not '" + value + "'");
            }
        } else if (word == "--help" || word == "-h") {
            options.help = true;
        } else if (!word.empty() && word[0] == '-') {
            throw std::invalid_argument("agentsim: unknown option " + word);
        } else {
            break;
        }
    }
    if (index < argc) {
        options.command = argv[index++];
    }
    for (; index < argc; ++index) {
        const std::string word = argv[index];
        if (word == "--help" || word == "-h") {
            options.help = true;
        } else {
            options.arguments.push_back(word);
        }
    }
    return options;
}

}  // namespace agentsim
