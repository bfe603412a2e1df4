// The middleware's process framework: starts the application's proxies and hands out
// references to published service interfaces. Handles are cheap; take one per use.
#pragma once

#include <boost/shared_ptr.hpp>

#include <string>

#include "frame/Interface.h"

namespace frame {

using MemberFactory = void** (*)();

class Process {
public:
    static Process getInstance();
    ~Process();

    // Starts the application's members made by `factory` and waits until they run; 0 on success.
    int startAppMembersSync(MemberFactory factory);

    // Looks up a published interface by name; 0 on success.
    int getInterfaceReference(boost::shared_ptr<Interface>& reference, const std::string& name);

private:
    Process() = default;
};

}  // namespace frame

// The business-proxy factory that applications pass to startAppMembersSync.
extern "C" void** CreateBizProxy();
