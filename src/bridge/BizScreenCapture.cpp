#include "bridge/BizScreenCapture.h"

namespace norvane {

std::atomic<int32_t> videoWidth{1920};
std::atomic<int32_t> videoHeight{1080};

}  // namespace norvane
