// Conversions between the runner's JSON and the simulated TV's values and journal.
#pragma once

#include <json/value.h>

#include <optional>
#include <string>

#include "Agent.h"
#include "tvsim/TvSim.h"

namespace agentsim {

// A setting value as a script writes it: integer (i32), string (str), array of strings (vstr,
// or str holding a list), array of integers (vint32). An empty array takes the key's list type.
// Returns nothing when the value cannot be stored under the key.
std::optional<tvsim::Value> settingFromJson(const std::string& key, const Json::Value& value);
Json::Value settingToJson(const tvsim::Value& value);

// A catalogue entry's number, id, kind, timeout and handler mask.
Json::Value commandSummaryToJson(const CommandSummary& summary);

// {"key":K,"set":V} or {"key":K,"action":[[tag,text],...]}
Json::Value journalEntryToJson(const tvsim::JournalEntry& entry);

// Lower-case hex SHA-256 of `size` bytes.
std::string sha256Hex(const void* data, size_t size);
std::string base64(const std::string& bytes);

}  // namespace agentsim
