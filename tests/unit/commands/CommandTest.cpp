#include "CommandTest.h"

#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "NorvaneExports.h"

namespace norvane {
namespace {

// Commands write numbers and run actions; a text write is shown quoted.
std::string entryText(const tvsim::JournalEntry& entry) {
    if (entry.kind == tvsim::JournalEntry::Kind::Write) {
        const auto* number = std::get_if<int32_t>(&entry.value);
        const auto* text = std::get_if<std::string>(&entry.value);
        return entry.key + "=" +
               (number ? std::to_string(*number) : "\"" + (text ? *text : "?") + "\"");
    }
    std::string text = entry.key + "(";
    for (size_t at = 0; at < entry.arguments.size(); ++at) {
        text += (at == 0 ? "" : ", ") + entry.arguments[at].value;
    }
    return text + ")";
}

using Operation = int32_t (*)(Zel::Sv::CommandHandler&, const ZelJson::Value&, ZelJson::Value&);

Outcome run(Zel::Sv::CommandBase& command, const ZelJson::Value& input, Operation operation) {
    const std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    Outcome outcome{0, ZelJson::Value(ZelJson::objectValue)};
    outcome.result = operation(*handler, input, outcome.document);
    return outcome;
}

}  // namespace

ZelJson::Value commandDataFile(const std::string& name) {
    const std::string path = std::string(NORVANE_TEST_DATA_DIR) + "/commands/" + name;
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::stringstream text;
    text << file.rdbuf();
    return parseJson(text.str());
}

void CommandTest::SetUp() {
    tv().loadDefaultProfile();
    initialize();
    tv().waitUntilDelivered();
    tv().takeJournal();
    platform.takeHostLogTexts();
    console.take();
}

Outcome CommandTest::describe(Zel::Sv::CommandBase& command) {
    return run(command, ZelJson::Value(),
               [](Zel::Sv::CommandHandler& handler, const ZelJson::Value&, ZelJson::Value& output) {
                   return handler.descriptionHandler(output);
               });
}

Outcome CommandTest::get(Zel::Sv::CommandBase& command, const ZelJson::Value& request) {
    return run(command, request,
               [](Zel::Sv::CommandHandler& handler, const ZelJson::Value& input,
                  ZelJson::Value& output) { return handler.getHandler(input, output); });
}

Outcome CommandTest::execute(Zel::Sv::CommandBase& command, const ZelJson::Value& input) {
    return run(command, input,
               [](Zel::Sv::CommandHandler& handler, const ZelJson::Value& document,
                  ZelJson::Value& output) { return handler.executeHandler(document, output); });
}

std::vector<std::string> CommandTest::takeJournal() {
    std::vector<std::string> lines;
    for (const tvsim::JournalEntry& entry : tv().takeJournal()) {
        lines.push_back(entryText(entry));
    }
    return lines;
}

std::vector<zelsim::LogLine> CommandTest::takeLogLines() {
    return zelsim::takeLogLines();
}

}  // namespace norvane
