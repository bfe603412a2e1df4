#include "ScriptValues.h"

#include <openssl/evp.h>

#include <climits>
#include <cstdlib>

#include "zel/core/Base64Util.h"

namespace agentsim {
namespace {

bool isInt32(const Json::Value& value) {
    return value.isInt() && value.asInt64() >= INT32_MIN && value.asInt64() <= INT32_MAX;
}

template <typename Element, typename Check, typename Convert>
std::optional<std::vector<Element>> listOf(const Json::Value& array, Check check, Convert convert) {
    std::vector<Element> list;
    for (const Json::Value& element : array) {
        if (!check(element)) {
            return std::nullopt;
        }
        list.push_back(convert(element));
    }
    return list;
}

}  // namespace

std::optional<tvsim::Value> settingFromJson(const std::string& key, const Json::Value& value) {
    const tvsim::KeyType type = tvsim::keyType(key);
    std::optional<tvsim::Value> converted;
    if (isInt32(value)) {
        converted = static_cast<int32_t>(value.asInt());
    } else if (value.isString()) {
        converted = value.asString();
    } else if (value.isArray()) {
        const bool integers =
            type == tvsim::KeyType::Int32List || (!value.empty() && value[0].isInt());
        if (integers) {
            if (auto list = listOf<int32_t>(value, isInt32, [](const Json::Value& v) {
                    return static_cast<int32_t>(v.asInt());
                })) {
                converted = *list;
            }
        } else if (auto list = listOf<std::string>(
                       value, [](const Json::Value& v) { return v.isString(); },
                       [](const Json::Value& v) { return v.asString(); })) {
            converted = *list;
        }
    }
    if (converted && !tvsim::fits(type, *converted)) {
        return std::nullopt;
    }
    return converted;
}

Json::Value settingToJson(const tvsim::Value& value) {
    Json::Value json;
    if (const auto* number = std::get_if<int32_t>(&value)) {
        json = *number;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        json = *text;
    } else if (const auto* texts = std::get_if<std::vector<std::string>>(&value)) {
        json = Json::Value(Json::arrayValue);
        for (const std::string& element : *texts)
            json.append(element);
    } else if (const auto* numbers = std::get_if<std::vector<int32_t>>(&value)) {
        json = Json::Value(Json::arrayValue);
        for (int32_t element : *numbers)
            json.append(element);
    }
    return json;
}

Json::Value commandSummaryToJson(const CommandSummary& summary) {
    Json::Value json(Json::objectValue);
    json["index"] = summary.index;
    json["id"] = summary.id;
    json["kind"] = summary.kind;
    json["timeoutMs"] = summary.timeoutMs;
    json["mask"] = summary.mask;
    return json;
}

Json::Value journalEntryToJson(const tvsim::JournalEntry& entry) {
    Json::Value json(Json::objectValue);
    json["key"] = entry.key;
    if (entry.kind == tvsim::JournalEntry::Kind::Write) {
        json["set"] = settingToJson(entry.value);
        return json;
    }
    Json::Value arguments(Json::arrayValue);
    for (const tvsim::ParameterRecord& record : entry.arguments) {
        Json::Value pair(Json::arrayValue);
        pair.append(record.tag);
        pair.append(record.value);
        arguments.append(pair);
    }
    json["action"] = arguments;
    return json;
}

std::string sha256Hex(const void* data, size_t size) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    EVP_Digest(data, size, digest, &length, EVP_sha256(), nullptr);
    static const char kHex[] = "0123456789abcdef";
    std::string hex;
    for (unsigned int i = 0; i < length; ++i) {
        hex += kHex[digest[i] >> 4];
        hex += kHex[digest[i] & 0xF];
    }
    return hex;
}

std::string base64(const std::string& bytes) {
    char* encoded = Zel::Core::Base64Util::Encode(bytes);
    std::string text = encoded != nullptr ? encoded : "";
    std::free(encoded);
    return text;
}

}  // namespace agentsim
