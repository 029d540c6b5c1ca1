#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/value.h"

namespace hushpane::platform {

struct Json;
struct JsonMember;

using JsonArray = std::vector<Json>;
// Members in the order of the text; of members with the same name the last one counts.
using JsonObject = std::vector<JsonMember>;

// A JSON value (RFC 8259). A number without fraction and exponent is an integer where one of the two types can hold it,
// unsigned unless it is negative; every other number is a double.
struct Json {
  std::variant<std::nullptr_t, bool, std::uint64_t, std::int64_t, double, std::string, JsonArray, JsonObject> storage;

  bool operator==(const Json&) const;
};

struct JsonMember {
  std::string name;
  Json value;

  bool operator==(const JsonMember&) const;
};

// Reads and writes JSON texts.
class JsonCoder {
 public:
  virtual ~JsonCoder() = default;

  // Nothing when the bytes are no JSON text in UTF-8, or are nested beyond reason.
  virtual std::optional<Json> decode(const Data& text) const = 0;
  // Without blanks. Nothing when a text in the value is not UTF-8.
  virtual std::optional<Data> encode(const Json& value) const = 0;
};

}  // namespace hushpane::platform
