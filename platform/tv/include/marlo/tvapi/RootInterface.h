// The TV settings service ("marlo.lm.interfaces.tvapi.RootInterface"). Every setting is named by
// a key; connecting a key yields a value handle whose operations depend on the setting's type.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tvmodelapi {
class Observer;
}

namespace marlo {
namespace lm {
namespace interfaces {
namespace tvapi {

// One element of an action's argument or reply list.
struct ParameterRecord {
    int32_t tag = 0;
    std::string value;
};
using ParameterList = std::vector<ParameterRecord>;

// Tag of the parameter at `position` (from 0) in an action list.
constexpr int32_t parameterTag(int32_t position) {
    return position * 65536;
}

class ValueHandle {
public:
    virtual ~ValueHandle() = default;

    // i32 settings
    virtual int32_t getInt32() = 0;
    virtual int32_t setInt32(int32_t value) = 0;
    // str settings
    virtual void getString(std::string& value) = 0;
    virtual int32_t setString(const std::string& value) = 0;
    // vstr settings (and str settings that hold a list)
    virtual void getStringVector(std::vector<std::string>& value) = 0;
    // vint32 settings
    virtual void getInt32Vector(std::vector<int32_t>& value) = 0;
    // action settings
    virtual int32_t onAction(ParameterList& reply, const ParameterList& arguments) = 0;
};

class RootInterface {
public:
    virtual ~RootInterface() = default;

    // Connects `key`; with an observer, the observer is told of every later change for as long
    // as the key stays connected. Returns 0 on success; `handle` is set when the status is 0 or
    // positive.
    virtual int32_t connect(const std::string& key, tvmodelapi::Observer* observer,
                            ValueHandle*& handle) = 0;
    // Releases a handle obtained from connect; `status` is what connect returned.
    virtual void disconnect(const std::string& key, int32_t status, ValueHandle* handle) = 0;
};

}  // namespace tvapi
}  // namespace interfaces
}  // namespace lm
}  // namespace marlo
