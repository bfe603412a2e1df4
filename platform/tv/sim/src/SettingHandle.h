// The value handle of one connected key. Operations that do not match the key's type read as
// empty or are refused with status::kWrongType.
#pragma once

#include <string>

#include "marlo/tvapi/RootInterface.h"
#include "tvsim/TvSim.h"

namespace tvsim {

class Service;

class SettingHandle : public marlo::lm::interfaces::tvapi::ValueHandle {
public:
    SettingHandle(Service& service, std::string key);

    int32_t getInt32() override;
    int32_t setInt32(int32_t value) override;
    void getString(std::string& value) override;
    int32_t setString(const std::string& value) override;
    void getStringVector(std::vector<std::string>& value) override;
    void getInt32Vector(std::vector<int32_t>& value) override;
    int32_t onAction(ParameterList& reply, const ParameterList& arguments) override;

private:
    Value read() const;

    Service& service_;
    const std::string key_;
    const KeyType type_;
};

}  // namespace tvsim
