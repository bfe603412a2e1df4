// The console's page: the files of web/, compiled into the program (see CMakeLists.txt).
#pragma once

#include <optional>
#include <string_view>

namespace agentsim::console {

struct WebAsset {
    std::string_view content;
    std::string_view contentType;
};

// `path` as the page asks for it, from the web folder: "/index.html", "/js/main.js".
std::optional<WebAsset> findWebAsset(std::string_view path);

}  // namespace agentsim::console
