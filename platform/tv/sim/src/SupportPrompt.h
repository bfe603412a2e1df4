// What the TV shows the viewer about remote support: the dialog with the session code or what
// went wrong, and whether an engineer is connected now.
#pragma once

#include <optional>
#include <string>

#include "OnScreenTexts.h"
#include "ScreenView.h"

namespace tvsim {

class SupportPrompt {
public:
    // The session-code setting now reads `value`: asking for a code opens the dialog to wait
    // for it; a code or an error word put there opens it to show that.
    void sessionCodeChanged(const std::string& value);
    void engineerConnected();
    void sessionEnded() { connected_ = false; }
    void supportSwitchedOff();
    // The viewer closes the dialog.
    void dismiss();

    // The dialog for what the session-code setting reads now, if it is open.
    std::optional<DialogView> dialog(const std::string& sessionCode,
                                     const OnScreenTexts& texts) const;
    bool isOpen(const std::string& sessionCode) const;
    bool connected() const { return connected_; }

private:
    bool open_ = false;
    bool waiting_ = false;
    bool connected_ = false;
};

}  // namespace tvsim
