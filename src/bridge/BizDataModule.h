// Support-tool requests the TV carries out on its own: backing up, restoring and resetting the
// picture (PQ) and sound (AQ) data, factory reset, the software update notice and remote-control
// keys. Each issues its request and returns at once.
#pragma once

#include <cstdint>
#include <string>

namespace norvane {

// Saves the picture and sound data so that a session's changes can be undone.
int32_t ZelBackupAQPQ();
// Mode 1 or 2 names the data to restore; any other mode is -1 and restores nothing.
int32_t BizRestoreAQPQ(int32_t mode);
// Mode 1 resets the sound settings, mode 2 the picture settings; others do nothing. Always 0.
int32_t BizResetAQPQ(int32_t mode);
int32_t BizFactoryReset();
// Tells the TV's application to look for a software update.
int32_t BizActionOTA();
// Presses a TV key such as "KEY_HOME".
int32_t BizSendKey(const std::string& keyName);

}  // namespace norvane
