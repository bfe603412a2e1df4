// Key typing: the type of a setting is part of its name.
#include <cctype>
#include <string>

#include "tvsim/TvSim.h"

namespace tvsim {
namespace {

constexpr char kKeyPrefix[] = "marlo.sl2.";
constexpr size_t kKeyPrefixLength = sizeof(kKeyPrefix) - 1;

struct NamedType {
    const char* name;
    KeyType type;
};

constexpr NamedType kTypeWords[] = {
    {"i32", KeyType::Int32},        {"str", KeyType::String},    {"vstr", KeyType::StringList},
    {"vint32", KeyType::Int32List}, {"action", KeyType::Action},
};

// Keys older than the typed naming scheme, kept by the middleware under their first names.
constexpr NamedType kIrregularKeys[] = {
    {"marlo.sl2.system.action.send.key", KeyType::Action},
    {"marlo.sl2.cec.input.names", KeyType::StringList},
};

bool isPathCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-';
}

// One or more non-empty segments joined by dots, from `from` to the end of `key`.
bool isDottedPath(const std::string& key, size_t from) {
    bool segmentEmpty = true;
    for (size_t i = from; i < key.size(); ++i) {
        if (key[i] == '.') {
            if (segmentEmpty) {
                return false;
            }
            segmentEmpty = true;
        } else if (isPathCharacter(key[i])) {
            segmentEmpty = false;
        } else {
            return false;
        }
    }
    return !segmentEmpty;
}

}  // namespace

KeyType keyType(const std::string& key) {
    for (const NamedType& irregular : kIrregularKeys) {
        if (key == irregular.name) {
            return irregular.type;
        }
    }
    if (key.compare(0, kKeyPrefixLength, kKeyPrefix) != 0) {
        return KeyType::Invalid;
    }
    const size_t typeEnd = key.find('.', kKeyPrefixLength);
    if (typeEnd == std::string::npos || !isDottedPath(key, typeEnd + 1)) {
        return KeyType::Invalid;
    }
    const std::string word = key.substr(kKeyPrefixLength, typeEnd - kKeyPrefixLength);
    for (const NamedType& typeWord : kTypeWords) {
        if (word == typeWord.name) {
            return typeWord.type;
        }
    }
    return KeyType::Invalid;
}

const char* keyTypeName(KeyType type) {
    for (const NamedType& typeWord : kTypeWords) {
        if (typeWord.type == type) {
            return typeWord.name;
        }
    }
    return "invalid";
}

Value defaultValue(KeyType type) {
    switch (type) {
        case KeyType::String:
            return std::string();
        case KeyType::StringList:
            return std::vector<std::string>();
        case KeyType::Int32List:
            return std::vector<int32_t>();
        default:
            return int32_t{0};
    }
}

bool fits(KeyType type, const Value& value) {
    switch (type) {
        case KeyType::Int32:
            return std::holds_alternative<int32_t>(value);
        case KeyType::String:
            return std::holds_alternative<std::string>(value) ||
                   std::holds_alternative<std::vector<std::string>>(value);
        case KeyType::StringList:
            return std::holds_alternative<std::vector<std::string>>(value);
        case KeyType::Int32List:
            return std::holds_alternative<std::vector<int32_t>>(value);
        default:
            return false;
    }
}

}  // namespace tvsim
