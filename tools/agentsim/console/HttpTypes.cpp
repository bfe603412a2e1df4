#include "HttpTypes.h"

#include <json/value.h>

#include "JsonText.h"

namespace agentsim::console {

size_t Payload::size() const {
    size_t total = 0;
    for (const auto& piece : pieces) {
        total += piece.second;
    }
    return total;
}

Payload Payload::of(std::string text) {
    auto owned = std::make_shared<const std::string>(std::move(text));
    Payload payload;
    if (!owned->empty()) {
        payload.pieces.emplace_back(owned->data(), owned->size());
    }
    payload.owner = std::move(owned);
    return payload;
}

HttpReply HttpReply::json(int status, std::string text) {
    HttpReply reply;
    reply.status = status;
    reply.contentType = "application/json";
    reply.body = Payload::of(std::move(text));
    return reply;
}

HttpReply HttpReply::error(int status, std::string_view message) {
    Json::Value document(Json::objectValue);
    document["error"] = std::string(message);
    return json(status, simjson::compact(document));
}

}  // namespace agentsim::console
