#include "Options.h"

#include <stdexcept>

#include "JsonText.h"
#include "Plugin.h"
#include "tvsim/TvSim.h"

namespace agentsim {

static_assert(tvsim::kSlowestTimeScale == 0.01 && tvsim::kFastestTimeScale == 10000 &&
                  simjson::kDeepestNesting == 64,
              "the usage states these limits");

const char* const kUsage =
    "usage: agentsim [--plugin PATH] [--tv PROFILE.json|empty] [--root DIR] [--time-scale N]\n"
    "                COMMAND [ARGUMENTS]\n"
    "\n"
    "Loads the TV plug-in as the support agent does and drives it against a simulated TV.\n"
    "\n"
    "Options:\n"
    "  --plugin PATH      the plug-in library (default: the one built beside agentsim); a name\n"
    "                     without a slash is a file in the current folder\n"
    "  --tv PROFILE.json  the TV's initial state; 'empty' for a TV with no setting values\n"
    "                     (default: the built-in profile of a typical TV)\n"
    "  --root DIR         the folder that holds the TV's filesystem, kept at exit (default: a\n"
    "                     fresh temporary folder, removed at exit); the TV's shell tools take\n"
    "                     its name as it stands, so it may hold only letters, digits and\n"
    "                     / . _ - + , : @ % =\n"
    "  --time-scale N     simulated time runs N times faster, N from 0.01 to 10000 (default 1)\n"
    "\n"
    "Commands:\n"
    "  demo [FILE.png]    a guided tour of what the plug-in does\n"
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
    "Each command accepts --help. JSON documents (arguments, profiles, script lines) are one\n"
    "object or array each, with nothing after it, nested at most 64 deep.\n"
    "\n"
    "Exit status:\n"
    "  0        done; for describe, get and exec: the plug-in's result was 0; for run: every\n"
    "           line was answered (an answer may be an \"error\")\n"
    "  1        the plug-in's result was not 0 (describe, get, exec; printed first), or no\n"
    "           screen frame came (screen)\n"
    "  2        a usage error: options, command, arguments, profile or script file\n"
    "  3        agentsim failed: the plug-in cannot be loaded, the TV cannot be set up, or\n"
    "           the output cannot be written\n"
    "  128+N    stopped by signal N (SIGHUP, SIGINT, SIGPIPE, SIGTERM) after cleaning up\n"
    "Temporary folders and files are removed on every exit.\n";

Options parseOptions(int argc, char** argv) {
    Options options;
    options.pluginPath = defaultPluginPath();
    int index = 1;
    auto valueOf = [&](const std::string& option) {
        if (index + 1 >= argc || argv[index + 1][0] == '\0') {
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
            if (used != value.size() || !(options.tv.timeScale >= tvsim::kSlowestTimeScale &&
                                          options.tv.timeScale <= tvsim::kFastestTimeScale)) {
                throw std::invalid_argument(
                    "agentsim: --time-scale needs a number from 0.01 to 10000, not '" + value +
                    "'");
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
