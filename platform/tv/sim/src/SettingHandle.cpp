#include "SettingHandle.h"

#include "Service.h"

namespace tvsim {

SettingHandle::SettingHandle(Service& service, std::string key)
    : service_(service), key_(std::move(key)), type_(keyType(key_)) {}

int32_t SettingHandle::getInt32() {
    return type_ == KeyType::Int32 ? std::get<int32_t>(read()) : 0;
}

int32_t SettingHandle::setInt32(int32_t value) {
    return service_.write(key_, value);
}

void SettingHandle::getString(std::string& value) {
    value = type_ == KeyType::String ? textOf(read()) : std::string();
}

int32_t SettingHandle::setString(const std::string& value) {
    return service_.write(key_, value);
}

void SettingHandle::getStringVector(std::vector<std::string>& value) {
    const bool readable = type_ == KeyType::StringList || type_ == KeyType::String;
    value = readable ? listOf(read()) : std::vector<std::string>();
}

void SettingHandle::getInt32Vector(std::vector<int32_t>& value) {
    value = type_ == KeyType::Int32List ? std::get<std::vector<int32_t>>(read())
                                        : std::vector<int32_t>();
}

int32_t SettingHandle::onAction(ParameterList& reply, const ParameterList& arguments) {
    return service_.act(key_, reply, arguments);
}

Value SettingHandle::read() const {
    return service_.store().get(key_);
}

}  // namespace tvsim
