#include "DeviceAgent/SupportView/Project/InspectionReports.h"

namespace norvane {
namespace Sv {

const char* verdict(bool passed) {
    return passed ? "OK" : "NG";
}

}  // namespace Sv
}  // namespace norvane
