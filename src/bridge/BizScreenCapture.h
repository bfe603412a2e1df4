// Screen capture: the frame size the agent reads, and frames from the TV's raw screenshots.
// Capture is asynchronous, so two files are used in turn: each frame call asks the TV for the
// next screenshot and reads the one the previous call asked for.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace norvane {

// The capture size, 1920x1080 until a probe finds another screen size. Relaxed atomics: the
// agent's frame thread reads what the session thread's probe wrote, with no ordering needed.
extern std::atomic<int32_t> videoWidth;
extern std::atomic<int32_t> videoHeight;

// Asks the TV to write a screenshot; parts are [folder, file name], sent as they are. Does not
// wait for the file. -1 with fewer than two parts, else 0.
int32_t BizActionCaptureScreen(const std::vector<std::string>& parts);

// Fills the agent's buffer with one frame as R,G,B,A pixels (the screenshot holds B,G,R,A):
// 0 when a whole frame was delivered (or the screenshot could not be opened), -1 otherwise.
// After 8 calls in a row find no screenshot, no more captures are requested.
int32_t BizFillVideoFrameBuffer(unsigned char* buffer, uint32_t size);

// Probes the screen size from the size of one screenshot (1280x720 or 1920x1080) and creates
// the screenshot folder if needed. -1 when the folder cannot be created or the screenshot
// opened, else 0.
int32_t BizInitScreenSize();

}  // namespace norvane
