#include "JsonText.h"

#include <json/reader.h>
#include <json/writer.h>

#include <memory>

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

}  // namespace

bool parse(const std::string& text, Json::Value& root, ParseError& error) {
    // The structured errors (with offsets) are only offered by the classic reader.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    Json::Reader reader(Json::Features::strictMode());
    Json::Value parsed;
    if (reader.parse(text, parsed, false)) {
        root = parsed;
        return true;
    }
    const auto problems = reader.getStructuredErrors();
#pragma GCC diagnostic pop
    if (problems.empty()) {
        placeOf(text, 0, error);
        error.message = "not a JSON document";
    } else {
        placeOf(text, static_cast<size_t>(problems.front().offset_start), error);
        error.message = problems.front().message;
    }
    return false;
}

std::string compact(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return Json::writeString(builder, value);
}

std::string pretty(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    builder["emitUTF8"] = true;
    return Json::writeString(builder, value);
}

}  // namespace simjson
