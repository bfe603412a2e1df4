#include "DeviceAgent/SupportView/Project/DiagnosticReports.h"

namespace norvane {
namespace Sv {

const char* verdict(bool passed) {
    return passed ? "OK" : "NG";
}

}  // namespace Sv
}  // namespace norvane
