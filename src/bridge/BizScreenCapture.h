// Screen capture: the frame size the agent reads, and (later) frames from the TV's screenshots.
#pragma once

#include <atomic>
#include <cstdint>

namespace norvane {

// The capture size, 1920x1080 until a probe finds another screen size. Relaxed atomics: the
// agent's frame thread reads what the session thread's probe wrote, with no ordering needed.
extern std::atomic<int32_t> videoWidth;
extern std::atomic<int32_t> videoHeight;

}  // namespace norvane
