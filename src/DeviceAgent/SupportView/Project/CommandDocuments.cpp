#include "DeviceAgent/SupportView/Project/CommandDocuments.h"

#include <cstring>

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace norvane {
namespace Sv {

InputBuilder::InputBuilder(const char* id, const char* name, const char* description, int32_t order,
                           const char* type)
    : id_(id), name_(name), description_(description), order_(order), type_(type) {}

InputBuilder& InputBuilder::range(int32_t minimum, int32_t maximum) {
    range_.emplace(minimum, maximum);
    return *this;
}

InputBuilder& InputBuilder::defaultValue(const ZelJson::Value& value) {
    default_ = value;
    return *this;
}

InputBuilder& InputBuilder::values(const std::vector<std::string>& labels) {
    values_ = labels;
    return *this;
}

InputBuilder& InputBuilder::flags(bool required, bool visible, bool readOnly) {
    flags_ = Flags{required, visible, readOnly};
    return *this;
}

InputBuilder& InputBuilder::shown(bool readOnly) {
    return flags(true, true, readOnly);
}

ZelJson::Value InputBuilder::build() const {
    ZelJson::Value input(ZelJson::objectValue);
    input["ID"] = id_;
    input["NAME"] = name_;
    input["DESCRIPTION"] = description_;
    input["ORDER"] = order_;
    input["TYPE"] = type_;
    if (range_) {
        input["MINIMUM_VALUE"] = range_->first;
        input["MAXIMUM_VALUE"] = range_->second;
    }
    if (default_) {
        input["DEFAULT"] = *default_;
    }
    if (values_) {
        ZelJson::Value& list = input["VALUES"] = emptyArray();
        for (const std::string& label : *values_) {
            list.append(label);
        }
    }
    if (flags_) {
        input["REQUIRED"] = flags_->required;
        input["VISIBILITY"] = flags_->visible;
        input["READONLY"] = flags_->readOnly;
    }
    return input;
}

ZelJson::Value yesNoInput(const char* id, const char* label, int32_t order) {
    return InputBuilder(id, label, label, order, kInputList)
        .defaultValue("No")
        .values({"No", "Yes"})
        .shown(false)
        .build();
}

void describeTool(ZelJson::Value& description, const char* name, const char* text, int32_t order,
                  const ZelJson::Value& inputs, const ZelJson::Value& outputs) {
    describeCommand(description, kToolCommands, name, text, order);
    description["INPUTS"] = inputs;
    description["OUTPUTS"] = outputs;
}

ZelJson::Value emptyArray() {
    return ZelJson::Value(ZelJson::arrayValue);
}

const ZelJson::Value* findMember(const ZelJson::Value& document, const char* key) {
    // find() only accepts objects (and null); anything else is a document without members.
    if (!document.isObject()) {
        return nullptr;
    }
    return document.find(key, key + std::strlen(key));
}

std::optional<std::string> stringMember(const ZelJson::Value& document, const char* key) {
    const ZelJson::Value* member = findMember(document, key);
    if (member == nullptr || !member->isString()) {
        return std::nullopt;
    }
    return member->asString();
}

std::optional<int32_t> intMember(const ZelJson::Value& document, const char* key) {
    const ZelJson::Value* member = findMember(document, key);
    if (member == nullptr || !member->isInt()) {
        return std::nullopt;
    }
    return member->asInt();
}

std::optional<bool> boolMember(const ZelJson::Value& document, const char* key) {
    const ZelJson::Value* member = findMember(document, key);
    if (member == nullptr || !member->isBool()) {
        return std::nullopt;
    }
    return member->asBool();
}

template <typename Value>
MemberReader& MemberReader::readWith(std::optional<Value> (*member)(const ZelJson::Value&,
                                                                    const char*),
                                     const char* key, Value& into) {
    if (complete_) {
        const std::optional<Value> value = member(document_, key);
        complete_ = value.has_value();
        if (complete_) {
            into = *value;
        }
    }
    return *this;
}

MemberReader& MemberReader::read(const char* key, std::string& into) {
    return readWith(stringMember, key, into);
}

MemberReader& MemberReader::read(const char* key, int32_t& into) {
    return readWith(intMember, key, into);
}

MemberReader& MemberReader::read(const char* key, bool& into) {
    return readWith(boolMember, key, into);
}

std::vector<std::string> labelList(int32_t (*query)(std::vector<std::string>&)) {
    std::vector<std::string> labels;
    query(labels);
    return labels;
}

bool isYes(const ZelJson::Value& document, const char* key) {
    return stringMember(document, key) == "Yes";
}

}  // namespace Sv
}  // namespace norvane
