// Each part of the simulated agent puts its own state back; reset() calls them all.
#pragma once

namespace zelsim {
namespace detail {

void resetLogging();
void resetIdentity();
void resetSession();

}  // namespace detail
}  // namespace zelsim
