#include "JsonText.h"

#include <json/reader.h>
#include <json/writer.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace simjson {
namespace {

void placeOf(const std::string& text, size_t offset, ParseError& error) {
    error.line = 1;
    error.column = 1;
    for (size_t i = 0; i < offset && i < text.size(); ++i) {
        if (text[i] == '\n') {
            ++error.line;
            error.column = 1;
        } else {
            ++error.column;
        }
    }
}

// The offset of the bracket that opens one level too many, or npos. Looked for before parsing,
// so that no document is read deeper than the limit.
size_t tooDeep(const std::string& text) {
    int depth = 0;
    bool inString = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') {
                ++i;
            } else if (c == '"') {
                inString = false;
            }
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > kDeepestNesting) {
                return i;
            }
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return std::string::npos;
}

// The reader reports "* Line L, Column C\n  message\n"; its first problem is the one to show.
void takeFirstProblem(const std::string& report, ParseError& error) {
    int line = 0;
    int column = 0;
    const size_t messageStart = report.find("\n  ");
    if (std::sscanf(report.c_str(), "* Line %d, Column %d", &line, &column) != 2 ||
        messageStart == std::string::npos) {
        error.line = 1;
        error.column = 1;
        error.message = report.empty() ? "not a JSON document" : report;
        return;
    }
    error.line = line;
    error.column = column;
    error.message =
        report.substr(messageStart + 3, report.find('\n', messageStart + 3) - (messageStart + 3));
}

// Length of the well-formed UTF-8 sequence at `at` (no overlong forms, no surrogates, nothing
// beyond U+10FFFF), or 0.
size_t sequenceLength(const std::string& text, size_t at) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) {
        return 1;
    }
    size_t length = 0;
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        lowest = lead == 0xE0 ? 0xA0 : 0x80;
        highest = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        lowest = lead == 0xF0 ? 0x90 : 0x80;
        highest = lead == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (at + length > text.size() || byte(at + 1) < lowest || byte(at + 1) > highest) {
        return 0;
    }
    for (size_t i = 2; i < length; ++i) {
        if (byte(at + i) < 0x80 || byte(at + i) > 0xBF) {
            return 0;
        }
    }
    return length;
}

bool isValidUtf8(const std::string& text) {
    for (size_t at = 0; at < text.size();) {
        const size_t length = sequenceLength(text, at);
        if (length == 0) {
            return false;
        }
        at += length;
    }
    return true;
}

std::string withStrayBytesEscaped(const std::string& text) {
    std::string escaped;
    for (size_t at = 0; at < text.size();) {
        const size_t length = sequenceLength(text, at);
        if (length > 0) {
            escaped.append(text, at, length);
            at += length;
        } else {
            char hex[5];
            std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned char>(text[at]));
            escaped += hex;
            ++at;
        }
    }
    return escaped;
}

bool holdsInvalidUtf8(const Json::Value& value) {
    if (value.isString()) {
        return !isValidUtf8(value.asString());
    }
    if (value.isObject()) {
        for (auto member = value.begin(); member != value.end(); ++member) {
            if (!isValidUtf8(member.name()) || holdsInvalidUtf8(*member)) {
                return true;
            }
        }
    } else if (value.isArray()) {
        for (const Json::Value& element : value) {
            if (holdsInvalidUtf8(element)) {
                return true;
            }
        }
    }
    return false;
}

Json::Value withValidUtf8(const Json::Value& value) {
    if (value.isString()) {
        return withStrayBytesEscaped(value.asString());
    }
    if (value.isObject()) {
        Json::Value copy(Json::objectValue);
        for (auto member = value.begin(); member != value.end(); ++member) {
            copy[withStrayBytesEscaped(member.name())] = withValidUtf8(*member);
        }
        return copy;
    }
    if (value.isArray()) {
        Json::Value copy(Json::arrayValue);
        for (const Json::Value& element : value) {
            copy.append(withValidUtf8(element));
        }
        return copy;
    }
    return value;
}

std::string written(const Json::Value& value, const char* indentation) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = indentation;
    builder["emitUTF8"] = true;
    return Json::writeString(builder, holdsInvalidUtf8(value) ? withValidUtf8(value) : value);
}

}  // namespace

bool parse(const std::string& text, Json::Value& root, ParseError& error) {
    const size_t deep = tooDeep(text);
    if (deep != std::string::npos) {
        placeOf(text, deep, error);
        error.message =
            "arrays and objects nested deeper than " + std::to_string(kDeepestNesting) + " levels";
        return false;
    }
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    // The reader counts the values on its way down, one more than the levels of nesting.
    builder["stackLimit"] = kDeepestNesting + 1;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value parsed;
    std::string report;
    if (!reader->parse(text.data(), text.data() + text.size(), &parsed, &report)) {
        takeFirstProblem(report, error);
        return false;
    }
    root = parsed;
    return true;
}

std::string compact(const Json::Value& value) {
    return written(value, "");
}

std::string pretty(const Json::Value& value) {
    return written(value, "  ");
}

}  // namespace simjson
