// Menu, audio and subtitle languages by English name, and the readers of the JSON track
// descriptions that list a programme's audio and subtitle languages by number.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace norvane {

// "English" when the TV's number names no known language.
std::string BizGetSystemLanguage();
// Empty when the TV's number names no known language.
std::string BizGetCurrentAudioLanguage();
// -1 for a name that is not a known language (nothing is written).
int32_t BizSetAudioLanguage(const std::string& language);
std::string BizGetCurrentSubtitle();
int32_t BizSetCurrentSubtitle(const std::string& language);

// Fill `languages` with 0 followed by the language number of each track (the digits after "#"
// in members such as "eng#1"). 0 when the document was read completely, -1 otherwise; tracks
// read before an error stay in the list. Never throw.
int32_t BizParseSubtitleInfo(const std::string& json, std::vector<int32_t>& languages);
int32_t BizParseAudioLanguageInfo(const std::string& json, std::vector<int32_t>& languages);

}  // namespace norvane
