#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace hushpane::desktops::tests {

// A property list in the binary form, put together from encoded objects; the first one is the root.
struct BinaryList {
  std::vector<std::string> objects;
  unsigned referenceSize = 1;

  static std::string number(std::uint64_t value, unsigned size) {
    std::string bytes;
    for (unsigned byte = size; byte > 0; --byte) bytes += static_cast<char>(value >> (8 * (byte - 1)));
    return bytes;
  }

  std::string bytes() const {
    constexpr unsigned offsetSize = 4;
    std::string result = "bplist00";
    std::string table;
    for (const auto& object : objects) {
      table += number(result.size(), offsetSize);
      result += object;
    }
    const auto tableAt = result.size();
    return result + table + std::string(6, '\0') + number(offsetSize, 1) + number(referenceSize, 1) +
           number(objects.size(), 8) + number(0, 8) + number(tableAt, 8);
  }
};

// An object with a short text in ASCII.
inline std::string asciiObject(const std::string& text) {
  return static_cast<char>(0x50 | text.size()) + text;
}

// A list whose root dictionary has the encoded objects under one-letter keys from "a" on.
inline BinaryList binaryDictionary(std::vector<std::string> values) {
  const auto count = values.size();
  std::string root(1, static_cast<char>(0xD0 | count));
  for (std::size_t index = 0; index < 2 * count; ++index) root += static_cast<char>(1 + index);
  BinaryList list{{root}};
  for (std::size_t index = 0; index < count; ++index)
    list.objects.push_back(asciiObject(std::string(1, static_cast<char>('a' + index))));
  for (auto& value : values) list.objects.push_back(std::move(value));
  return list;
}

}  // namespace hushpane::desktops::tests
