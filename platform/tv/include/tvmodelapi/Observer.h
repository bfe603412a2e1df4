// Observers of TV settings. The settings service calls onChange on its own thread.
#pragma once

#include <cstdint>
#include <string>

namespace tvmodelapi {

class Observer {
public:
    virtual ~Observer() = default;
    // Told when the service drops the observer's connection.
    virtual void onDisconnected() = 0;
};

class ObserverNumericInteger : public Observer {
public:
    virtual void onChange(int32_t value) = 0;
};

class ObserverString : public Observer {
public:
    virtual void onChange(const std::string& value) = 0;
};

}  // namespace tvmodelapi
