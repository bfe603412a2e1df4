#include "Presentation.h"

#include <unistd.h>

#include "zelsim/HostSim.h"

namespace agentsim {
namespace {

bool isTerminal(std::FILE* out) {
    return isatty(fileno(out)) != 0;
}

}  // namespace

std::string readable(const std::string& framed) {
    std::string text;
    for (char c : framed) {
        if (c == '\n') {
            text += "\\n";
        } else if (c != '\t') {
            text += c;
        }
    }
    if (text.size() >= 2 && text.compare(text.size() - 2, 2, "\\n") == 0) {
        text.resize(text.size() - 2);
    }
    return text;
}

void printHeading(std::FILE* out, const std::string& title) {
    if (isTerminal(out)) {
        std::fprintf(out, "\n\033[1m== %s ==\033[0m\n", title.c_str());
    } else {
        std::fprintf(out, "\n== %s ==\n", title.c_str());
    }
}

void printCatalogue(std::FILE* out, const std::vector<CommandSummary>& catalogue) {
    if (catalogue.empty()) {
        std::fprintf(out, "  (the plug-in offers no commands yet)\n");
        return;
    }
    std::fprintf(out, "  %-3s %-50s %4s %7s %4s  %-19s %s\n", "#", "id", "kind", "timeout", "mask",
                 "category", "name");
    for (const CommandSummary& command : catalogue) {
        std::fprintf(out, "  %-3d %-50s %4d %7d %4d  %-19s %s\n", command.index, command.id.c_str(),
                     command.kind, command.timeoutMs, command.mask,
                     command.category.empty() ? "-" : command.category.c_str(),
                     command.name.empty() ? "-" : command.name.c_str());
    }
}

void printPluginLogs(std::FILE* out, Agent& agent) {
    for (const std::string& line : agent.takeConsoleLines()) {
        std::fprintf(out, "  console  %s\n", readable(line).c_str());
    }
    for (const zelsim::LogLine& line : zelsim::takeLogLines()) {
        std::fprintf(out, "  agent    [%d] %s: %s\n", line.severity, line.function.c_str(),
                     readable(line.text).c_str());
    }
}

}  // namespace agentsim
