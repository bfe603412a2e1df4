#include "bridge/BizLanguages.h"

#include <algorithm>
#include <climits>
#include <sstream>

// Boost's JSON reader still pulls in the old global bind placeholders.
#ifndef BOOST_BIND_GLOBAL_PLACEHOLDERS
#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#endif
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include "bridge/BizSettingAccess.h"
#include "bridge/ZelBizClient.h"
#include "common/ConsoleLog.h"

namespace norvane {
namespace {

constexpr const char* kMenuLanguageKey = "marlo.sl2.i32.language.osd";
constexpr const char* kAudioLanguageKey = "marlo.sl2.i32.language.audio.favoured";
// The TV keeps the subtitle language under the alternative audio language.
constexpr const char* kSubtitleLanguageKey = "marlo.sl2.i32.language.audio.alternative";

// Track documents are a few levels deep; the reader recurses per level, so a pathological
// nesting would exhaust the stack before it could be reported as an error.
constexpr int kMaxJsonNesting = 64;

struct TrackDocument {
    const char* tracks;
    const char* language;
};
constexpr TrackDocument kSubtitleTracks = {"SubtitleInfo", "subtitleIso639"};
constexpr TrackDocument kAudioTracks = {"AudioLanguageInfo", "audioIso639"};

// Empty when the table does not know the number.
std::string languageName(int32_t number) {
    const auto& names = languageNames();
    const auto found = names.find(number);
    return found != names.end() ? found->second : std::string();
}

// -1 when no language has this exact name.
int32_t languageNumber(const std::string& name) {
    for (const auto& [number, known] : languageNames()) {
        if (known == name) {
            return number;
        }
    }
    return -1;
}

int32_t writeLanguage(const char* key, const std::string& name) {
    const int32_t number = languageNumber(name);
    if (number < 0) {
        return -1;
    }
    ZelBizClient::getInstance()->setIntValue(key, number);
    return 0;
}

bool nestedTooDeep(const std::string& json) {
    int depth = 0;
    bool inString = false;
    bool escaped = false;
    for (const char c : json) {
        if (inString) {
            if (escaped) {
                escaped = false;
            } else if (c == '\\') {
                escaped = true;
            } else if (c == '"') {
                inString = false;
            }
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > kMaxJsonNesting) {
                return true;
            }
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

// The decimal number right after the first "#" ("eng#12x" gives 12); 0 when there is none.
// Saturates rather than overflow on absurdly long digit runs.
int32_t trackLanguageNumber(const std::string& member) {
    const size_t hash = member.find('#');
    if (hash == std::string::npos) {
        return 0;
    }
    int64_t number = 0;
    for (size_t i = hash + 1; i < member.size() && member[i] >= '0' && member[i] <= '9'; ++i) {
        number = std::min<int64_t>(number * 10 + (member[i] - '0'), INT32_MAX);
    }
    return static_cast<int32_t>(number);
}

int32_t parseTracks(const std::string& json, const TrackDocument& document,
                    std::vector<int32_t>& languages) {
    languages.assign(1, 0);
    if (json.empty() || nestedTooDeep(json)) {
        return -1;
    }
    namespace pt = boost::property_tree;
    try {
        std::istringstream text(json);
        pt::ptree root;
        pt::read_json(text, root);
        for (const auto& track : root.get_child(document.tracks)) {
            languages.push_back(
                trackLanguageNumber(track.second.get<std::string>(document.language)));
        }
    } catch (const pt::ptree_error&) {
        return -1;
    }
    return 0;
}

}  // namespace

std::string BizGetSystemLanguage() {
    consoleLog(kLogInfo, "BizGetSystemLanguage called.");
    const std::string name = languageName(readIntSetting(kMenuLanguageKey));
    if (name.empty()) {
        consoleLog(kLogError, "Get System default Language.");
        return "English";
    }
    return name;
}

std::string BizGetCurrentAudioLanguage() {
    const std::string name = languageName(readIntSetting(kAudioLanguageKey));
    consoleLog(kLogInfo, "BizGetCurrentAudioLanguage strValue = %s.", name.c_str());
    return name;
}

int32_t BizSetAudioLanguage(const std::string& language) {
    if (writeLanguage(kAudioLanguageKey, language) != 0) {
        return -1;
    }
    consoleLog(kLogInfo, "BizSetAudioLanguage: %s.\n", language.c_str());
    return 0;
}

std::string BizGetCurrentSubtitle() {
    const std::string name = languageName(readIntSetting(kSubtitleLanguageKey));
    consoleLog(kLogInfo, "BizGetCurrentSubtitle: strValue = %s.", name.c_str());
    return name;
}

int32_t BizSetCurrentSubtitle(const std::string& language) {
    if (writeLanguage(kSubtitleLanguageKey, language) != 0) {
        return -1;
    }
    consoleLog(kLogInfo, "Set Current Subtitle to  %s.\n", language.c_str());
    return 0;
}

int32_t BizParseSubtitleInfo(const std::string& json, std::vector<int32_t>& languages) {
    return parseTracks(json, kSubtitleTracks, languages);
}

int32_t BizParseAudioLanguageInfo(const std::string& json, std::vector<int32_t>& languages) {
    return parseTracks(json, kAudioTracks, languages);
}

}  // namespace norvane
