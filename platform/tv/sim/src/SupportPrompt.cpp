#include "SupportPrompt.h"

#include "SettingKeys.h"

namespace tvsim {
namespace {

// The session-code setting holds something to show: neither a request nor the idle value.
bool isAnswer(const std::string& value) {
    return !value.empty() && value != kAskForSessionCode && value != kNoSessionCode;
}

// The error words the plug-in answers a request with, and what they tell the viewer.
std::optional<Text> problemOf(const std::string& answer) {
    if (answer == "networkError") {
        return Text::NetworkError;
    }
    if (answer == "serverError") {
        return Text::ServerError;
    }
    if (answer == "connectedAlready") {
        return Text::ConnectedAlready;
    }
    return std::nullopt;
}

}  // namespace

void SupportPrompt::sessionCodeChanged(const std::string& value) {
    if (value == kAskForSessionCode) {
        open_ = true;
        waiting_ = true;
    } else if (isAnswer(value)) {
        open_ = true;
        waiting_ = false;
    }
}

void SupportPrompt::engineerConnected() {
    connected_ = true;
    dismiss();  // the code has done its work
}

void SupportPrompt::supportSwitchedOff() {
    connected_ = false;
    dismiss();
}

void SupportPrompt::dismiss() {
    open_ = false;
    waiting_ = false;
}

bool SupportPrompt::isOpen(const std::string& sessionCode) const {
    return open_ && (waiting_ || isAnswer(sessionCode));
}

std::optional<DialogView> SupportPrompt::dialog(const std::string& sessionCode,
                                                const OnScreenTexts& texts) const {
    if (!isOpen(sessionCode)) {
        return std::nullopt;
    }
    DialogView dialog;
    dialog.title = texts(Text::RemoteSupport);
    dialog.hint = texts(Text::DialogHint);
    if (waiting_) {
        dialog.paragraphs = {texts(Text::GettingSessionCode)};
    } else if (const std::optional<Text> problem = problemOf(sessionCode)) {
        dialog.paragraphs = {texts(*problem)};
    } else {
        dialog.paragraphs = {texts(Text::SessionCodeIntro)};
        dialog.code = sessionCode;
        dialog.footnote = texts(Text::SessionCodeHint);
    }
    return dialog;
}

}  // namespace tvsim
