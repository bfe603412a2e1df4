#include "zel/json/ZelJson.h"

#include <json/reader.h>

#include <memory>

namespace ZelJson {

bool Reader::parse(const std::string& document, Value& root, bool collectComments) {
    Json::CharReaderBuilder builder;
    builder["collectComments"] = collectComments;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    errors_.clear();
    const char* begin = document.data();
    return reader->parse(begin, begin + document.size(), &root, &errors_);
}

}  // namespace ZelJson
