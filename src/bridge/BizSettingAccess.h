// What the Biz functions of every area share: reads with their failure values, actions whose
// reply nobody needs, the two-write notification of the TV's application, and the tables that
// translate between the middleware's numbers and the agent's labels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace norvane {

// A failed read counts as 0.
int32_t readIntSetting(const char* key);
// A failed read leaves `initial`.
std::string readStringSetting(const char* key, const std::string& initial = std::string());
// A failed read gives an empty list.
std::vector<std::string> readStringList(const char* key);
std::vector<int32_t> readIntList(const char* key);

// Runs an action with its arguments tagged by position; the reply is dropped. Returns the
// action's status (-1 when the service cannot be reached).
int32_t runAction(const char* key, const std::vector<std::string>& arguments);

// Writes 0 and then `code` to the application's notify setting, so that a repeated code is
// still a change the TV's application hears.
void notifyTvApplication(int32_t code);

// The middleware calls the composite input "AVS"; the agent knows it as "AV".
std::string displaySourceName(const std::string& name);

// One row of a number/label table.
struct Label {
    int32_t number;
    const char* text;
};

// The first row's label for `number`, or `otherwise`.
template <size_t N>
std::string labelFor(const Label (&table)[N], int32_t number, const char* otherwise) {
    for (const Label& row : table) {
        if (row.number == number) {
            return row.text;
        }
    }
    return otherwise;
}

// The first row's number for `text` (exact comparison), or `otherwise`.
template <size_t N>
int32_t numberFor(const Label (&table)[N], const std::string& text, int32_t otherwise) {
    for (const Label& row : table) {
        if (text == row.text) {
            return row.number;
        }
    }
    return otherwise;
}

template <size_t N>
void appendLabels(std::vector<std::string>& list, const char* const (&labels)[N]) {
    list.insert(list.end(), labels, labels + N);
}

}  // namespace norvane
