// Building the commands' descriptor documents and reading their input documents. Input documents
// come from the agent's server and may be anything (arrays, strings, wrongly typed members): they
// are only read through the typed accessors here, which never create or change a member.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "zel/json/ZelJson.h"

namespace norvane {
namespace Sv {

// Input types of the descriptor schema.
constexpr const char* kInputString = "STRING";
constexpr const char* kInputList = "LIST";
constexpr const char* kInputBool = "BOOL";
constexpr const char* kInputNumeric = "NUMERIC";
constexpr const char* kInputJson = "JSON";
constexpr const char* kInputText = "TEXT";

// One input (or output) object of a descriptor. The members that are given are written in the
// schema's order whatever order they were given in: ID, NAME, DESCRIPTION, ORDER, TYPE, then
// MINIMUM_VALUE and MAXIMUM_VALUE, DEFAULT, VALUES, REQUIRED, VISIBILITY, READONLY.
class InputBuilder {
public:
    InputBuilder(const char* id, const char* name, const char* description, int32_t order,
                 const char* type);

    InputBuilder& range(int32_t minimum, int32_t maximum);
    InputBuilder& defaultValue(const ZelJson::Value& value);
    InputBuilder& values(const std::vector<std::string>& labels);
    InputBuilder& flags(bool required, bool visible, bool readOnly);
    // Required and visible, and read-only as given: what most inputs are.
    InputBuilder& shown(bool readOnly);

    ZelJson::Value build() const;

private:
    struct Flags {
        bool required;
        bool visible;
        bool readOnly;
    };

    const char* id_;
    const char* name_;
    const char* description_;
    int32_t order_;
    const char* type_;
    std::optional<std::pair<int32_t, int32_t>> range_;
    std::optional<ZelJson::Value> default_;
    std::optional<std::vector<std::string>> values_;
    std::optional<Flags> flags_;
};

// A required, visible, writable "LIST" input offering "No" (the default) and "Yes", its name
// and description both `label`.
ZelJson::Value yesNoInput(const char* id, const char* label, int32_t order);

// What the reset and restore tools act on, as the platform numbers it.
constexpr int32_t kPictureSettingsPart = 2;  // PQ
constexpr int32_t kSoundSettingsPart = 1;    // AQ

// Writes a tool's descriptor: "TYPE" "TOOL_COMMANDS", "NAME", "DESCRIPTION", "ORDER", "INPUTS"
// and "OUTPUTS", in that order.
void describeTool(ZelJson::Value& description, const char* name, const char* text, int32_t order,
                  const ZelJson::Value& inputs, const ZelJson::Value& outputs);

ZelJson::Value emptyArray();

// The member `key` of an input document when the document is an object holding it with that
// type; nothing otherwise (missing, null, wrong type, or a document that is no object).
std::optional<std::string> stringMember(const ZelJson::Value& document, const char* key);
std::optional<int32_t> intMember(const ZelJson::Value& document, const char* key);
std::optional<bool> boolMember(const ZelJson::Value& document, const char* key);
// The member whatever its value (null included); null when absent or the document is no object.
const ZelJson::Value* findMember(const ZelJson::Value& document, const char* key);

// Reads typed members of an input document in turn into the caller's variables, stopping at the
// first that is missing or of another type (the variables after it keep their values).
class MemberReader {
public:
    explicit MemberReader(const ZelJson::Value& document) : document_(document) {}

    MemberReader& read(const char* key, std::string& into);
    MemberReader& read(const char* key, int32_t& into);
    MemberReader& read(const char* key, bool& into);
    // Whether every member read so far was there with its type.
    bool complete() const { return complete_; }

private:
    template <typename Value>
    MemberReader& readWith(std::optional<Value> (*member)(const ZelJson::Value&, const char*),
                           const char* key, Value& into);

    const ZelJson::Value& document_;
    bool complete_ = true;
};

// A label list of the platform, as a list wrapper fills it.
std::vector<std::string> labelList(int32_t (*query)(std::vector<std::string>&));

// Logged (as an error) when an input document is rejected.
constexpr const char* kInvalidParameterMessage = "Error Invalid Parameter.";

// Whether the member is the string "Yes", exactly.
bool isYes(const ZelJson::Value& document, const char* key);

}  // namespace Sv
}  // namespace norvane
