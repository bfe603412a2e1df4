#include "Profile.h"

#include <boost/archive/iterators/binary_from_base64.hpp>
#include <boost/archive/iterators/transform_width.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <optional>

#include "JsonText.h"
#include "OnScreenTexts.h"

namespace tvsim {
namespace {

class Problems {
public:
    explicit Problems(const std::string& sourceName) : sourceName_(sourceName) {}

    [[noreturn]] void at(const std::string& place, const std::string& problem) const {
        throw ProfileError(sourceName_ + ": " + place + ": " + problem);
    }

private:
    const std::string& sourceName_;
};

std::string memberPlace(const std::string& section, const std::string& name) {
    return section + ".\"" + name + "\"";
}

bool isStringList(const Json::Value& value) {
    return value.isArray() && std::all_of(value.begin(), value.end(),
                                          [](const Json::Value& e) { return e.isString(); });
}

bool isIntegerList(const Json::Value& value) {
    return value.isArray() &&
           std::all_of(value.begin(), value.end(), [](const Json::Value& e) { return e.isInt(); });
}

std::vector<std::string> stringsOf(const Json::Value& list) {
    std::vector<std::string> strings;
    for (const Json::Value& element : list) {
        strings.push_back(element.asString());
    }
    return strings;
}

std::vector<int32_t> integersOf(const Json::Value& list) {
    std::vector<int32_t> integers;
    for (const Json::Value& element : list) {
        integers.push_back(element.asInt());
    }
    return integers;
}

// The value a JSON value gives a key of `type`, or nothing when it does not fit.
std::optional<Value> settingValue(KeyType type, const Json::Value& json) {
    switch (type) {
        case KeyType::Int32:
            if (json.isInt()) {
                return Value{static_cast<int32_t>(json.asInt())};
            }
            break;
        case KeyType::String:
            if (json.isString()) {
                return Value{json.asString()};
            }
            if (isStringList(json)) {
                return Value{stringsOf(json)};
            }
            break;
        case KeyType::StringList:
            if (isStringList(json)) {
                return Value{stringsOf(json)};
            }
            break;
        case KeyType::Int32List:
            if (isIntegerList(json)) {
                return Value{integersOf(json)};
            }
            break;
        default:
            break;
    }
    return std::nullopt;
}

const char* expectedFor(KeyType type) {
    switch (type) {
        case KeyType::Int32:
            return "expected an integer";
        case KeyType::String:
            return "expected a string or a list of strings";
        case KeyType::StringList:
            return "expected a list of strings";
        default:
            return "expected a list of integers";
    }
}

void requireObject(const Json::Value& value, const std::string& place, const Problems& problems) {
    if (!value.isObject()) {
        problems.at(place, "expected an object");
    }
}

void requireOnlyMembers(const Json::Value& object, const std::vector<std::string>& allowed,
                        const std::string& placePrefix, const Problems& problems) {
    for (const std::string& name : object.getMemberNames()) {
        if (std::find(allowed.begin(), allowed.end(), name) == allowed.end()) {
            problems.at(placePrefix + name, "unknown member");
        }
    }
}

SettingMap parseSettings(const Json::Value& settings, const Problems& problems) {
    requireObject(settings, "settings", problems);
    SettingMap parsed;
    for (const std::string& key : settings.getMemberNames()) {
        const std::string place = memberPlace("settings", key);
        const KeyType type = keyType(key);
        if (type == KeyType::Invalid) {
            problems.at(place, "not a setting key");
        }
        if (type == KeyType::Action) {
            problems.at(place, "an action key holds no value");
        }
        std::optional<Value> value = settingValue(type, settings[key]);
        if (!value) {
            problems.at(place, expectedFor(type));
        }
        parsed.emplace(key, std::move(*value));
    }
    return parsed;
}

std::optional<std::string> decodeBase64(const std::string& text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](char c) { return std::isspace(static_cast<unsigned char>(c)) == 0; });
    const size_t padding = digits.size() - digits.find_last_not_of('=') - 1;
    const bool wellFormed =
        digits.size() % 4 == 0 && padding <= 2 &&
        std::all_of(digits.begin(), digits.end() - padding, [](char c) {
            return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '/';
        });
    if (!wellFormed) {
        return std::nullopt;
    }
    // The decoder knows no padding: decode it as zero bits and drop the bytes it stands for.
    std::replace(digits.end() - padding, digits.end(), '=', 'A');
    using Decoder = boost::archive::iterators::transform_width<
        boost::archive::iterators::binary_from_base64<std::string::const_iterator>, 8, 6>;
    std::string bytes(Decoder(digits.cbegin()), Decoder(digits.cend()));
    bytes.resize(bytes.size() - padding);
    return bytes;
}

std::string fileBytes(const Json::Value& content, const std::string& place,
                      const Problems& problems) {
    if (content.isString()) {
        return content.asString();
    }
    if (!content.isObject() || !content.isMember("base64") || content.size() != 1 ||
        !content["base64"].isString()) {
        problems.at(place, "expected a text or {\"base64\": \"...\"}");
    }
    std::optional<std::string> bytes = decodeBase64(content["base64"].asString());
    if (!bytes) {
        problems.at(place + ".base64", "not valid base64");
    }
    return *bytes;
}

bool staysBelowRoot(const std::string& path) {
    const std::filesystem::path file(path);
    return file.is_absolute() && file.has_filename() &&
           std::none_of(file.begin(), file.end(),
                        [](const std::filesystem::path& part) { return part == ".."; });
}

std::vector<ProfileFile> parseFiles(const Json::Value& files, const Problems& problems) {
    requireObject(files, "files", problems);
    std::vector<ProfileFile> parsed;
    for (const std::string& path : files.getMemberNames()) {
        const std::string place = memberPlace("files", path);
        if (!staysBelowRoot(path)) {
            problems.at(place, "expected an absolute file path without \"..\"");
        }
        parsed.push_back({path, fileBytes(files[path], place, problems)});
    }
    return parsed;
}

int32_t screenSide(const Json::Value& screen, const std::string& name, const Problems& problems) {
    const Json::Value& side = screen[name];
    if (!side.isInt() || side.asInt() < 1 || side.asInt() > kLargestScreenSide) {
        problems.at("screen." + name,
                    "expected an integer from 1 to " + std::to_string(kLargestScreenSide));
    }
    return side.asInt();
}

constexpr int32_t kHighestChannel = 9999;
constexpr size_t kLongestChannelName = 40;
constexpr size_t kLongestProgramme = 80;

struct LookName {
    const char* name;
    ChannelLook look;
};

constexpr LookName kLooks[] = {{"studio", ChannelLook::Studio},
                               {"landscape", ChannelLook::Landscape},
                               {"pitch", ChannelLook::Pitch},
                               {"city", ChannelLook::City},
                               {"bars", ChannelLook::Bars}};

// The member `name` of `object`, a text; `place` names the member.
std::string textMember(const Json::Value& object, const std::string& name, size_t longest,
                       const std::string& place, const Problems& problems) {
    const Json::Value& text = object[name];
    if (!text.isString() || text.asString().size() > longest) {
        problems.at(place, "expected a text of at most " + std::to_string(longest) + " bytes");
    }
    return text.asString();
}

ChannelLook lookMember(const Json::Value& channel, const std::string& place,
                       const Problems& problems) {
    const Json::Value& picture = channel["picture"];
    for (const LookName& look : kLooks) {
        if (picture.isString() && picture.asString() == look.name) {
            return look.look;
        }
    }
    problems.at(place + ".picture",
                "expected \"studio\", \"landscape\", \"pitch\", \"city\" or \"bars\"");
}

// Channels without a picture of their own take the looks in turn.
std::vector<Channel> parseChannels(const Json::Value& channels, const Problems& problems) {
    if (!channels.isArray()) {
        problems.at("channels", "expected a list of channels");
    }
    std::vector<Channel> parsed;
    for (Json::ArrayIndex i = 0; i < channels.size(); ++i) {
        const std::string place = "channels[" + std::to_string(i) + "]";
        const Json::Value& entry = channels[i];
        requireObject(entry, place, problems);
        requireOnlyMembers(entry, {"number", "name", "programme", "picture"}, place + ".",
                           problems);
        Channel channel;
        const Json::Value& number = entry["number"];
        if (!number.isInt() || number.asInt() < 1 || number.asInt() > kHighestChannel) {
            problems.at(place + ".number",
                        "expected an integer from 1 to " + std::to_string(kHighestChannel));
        }
        channel.number = number.asInt();
        if (std::any_of(parsed.begin(), parsed.end(),
                        [&](const Channel& other) { return other.number == channel.number; })) {
            problems.at(place + ".number", "a second channel with this number");
        }
        channel.name = textMember(entry, "name", kLongestChannelName, place + ".name", problems);
        if (entry.isMember("programme")) {
            channel.programme =
                textMember(entry, "programme", kLongestProgramme, place + ".programme", problems);
        }
        channel.look = entry.isMember("picture") ? lookMember(entry, place, problems)
                                                 : kLooks[i % std::size(kLooks)].look;
        parsed.push_back(std::move(channel));
    }
    return parsed;
}

std::map<std::string, std::string> parseTexts(const Json::Value& texts, const Problems& problems) {
    requireObject(texts, "texts", problems);
    std::map<std::string, std::string> parsed;
    for (const std::string& name : texts.getMemberNames()) {
        const std::string place = memberPlace("texts", name);
        if (!OnScreenTexts::isName(name)) {
            problems.at(place, "not an on-screen text");
        }
        parsed[name] = textMember(texts, name, OnScreenTexts::kLongestText, place, problems);
    }
    return parsed;
}

}  // namespace

Profile parseProfile(const std::string& text, const std::string& sourceName) {
    Json::Value document;
    simjson::ParseError error;
    if (!simjson::parse(text, document, error)) {
        throw ProfileError(sourceName + ":" + std::to_string(error.line) + ":" +
                           std::to_string(error.column) + ": " + error.message);
    }
    const Problems problems(sourceName);
    requireObject(document, "the profile", problems);
    requireOnlyMembers(document,
                       {"description", "settings", "files", "screen", "channels", "texts"}, "",
                       problems);
    if (document.isMember("description") && !document["description"].isString()) {
        problems.at("description", "expected a string");
    }

    Profile profile;
    if (document.isMember("settings")) {
        profile.settings = parseSettings(document["settings"], problems);
    }
    if (document.isMember("files")) {
        profile.files = parseFiles(document["files"], problems);
    }
    if (document.isMember("screen")) {
        const Json::Value& screen = document["screen"];
        requireObject(screen, "screen", problems);
        requireOnlyMembers(screen, {"width", "height"}, "screen.", problems);
        profile.screenWidth = screenSide(screen, "width", problems);
        profile.screenHeight = screenSide(screen, "height", problems);
    }
    if (document.isMember("channels")) {
        profile.channels = parseChannels(document["channels"], problems);
    }
    if (document.isMember("texts")) {
        profile.texts = parseTexts(document["texts"], problems);
    }
    return profile;
}

}  // namespace tvsim
