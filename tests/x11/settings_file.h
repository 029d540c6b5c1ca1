#pragma once

#include <plist/plist.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "tests/x11/process.h"

namespace hushpane::x11_tests {

// A property list as people edit it: keys with values in XML.
using SettingsValues = std::map<std::string, std::string>;

inline std::string xml(const char* text) {
  return "<string>" + std::string(text) + "</string>";
}
inline std::string xml(bool value) {
  return value ? "<true/>" : "<false/>";
}

// A property-list file of the program, read and written from outside it.
class SettingsFile {
 public:
  explicit SettingsFile(std::filesystem::path path) : path_(std::move(path)) {}

  const std::filesystem::path& path() const { return path_; }

  void write(const SettingsValues& values) const {
    std::ostringstream text;
    text << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>\n";
    for (const auto& [key, value] : values) text << "<key>" << key << "</key>" << value << '\n';
    text << "</dict></plist>\n";
    writeBytes(text.str());
  }

  // Replaces the file in one step, as editors do.
  void writeBytes(const std::string& bytes) const {
    std::filesystem::create_directories(path_.parent_path());
    const std::filesystem::path fresh = path_.string() + ".edited";
    std::ofstream(fresh, std::ios::binary) << bytes;
    std::filesystem::rename(fresh, path_);
  }

  std::string bytes() const { return contents(path_); }

  // The text or the decimal number under a key; nothing when there is none.
  std::optional<std::string> value(const std::string& key) const {
    const auto root = parsed();
    const plist_t node = root ? plist_dict_get_item(root.get(), key.c_str()) : nullptr;
    if (node && plist_get_node_type(node) == PLIST_UINT) {
      std::uint64_t number = 0;
      plist_get_uint_val(node, &number);
      return std::to_string(number);
    }
    if (!node || plist_get_node_type(node) != PLIST_STRING) return {};
    return plist_get_string_ptr(node, nullptr);
  }

  // The data under a key; empty when there is none.
  std::string data(const std::string& key) const {
    const auto root = parsed();
    const plist_t node = root ? plist_dict_get_item(root.get(), key.c_str()) : nullptr;
    if (!node || plist_get_node_type(node) != PLIST_DATA) return {};
    std::uint64_t length = 0;
    const char* held = plist_get_data_ptr(node, &length);
    return {held, static_cast<std::size_t>(length)};
  }

 private:
  // Null when the file is no dictionary.
  std::unique_ptr<void, decltype(&plist_free)> parsed() const {
    const std::string file = bytes();
    plist_t read = nullptr;
    plist_from_memory(file.data(), static_cast<std::uint32_t>(file.size()), &read);
    std::unique_ptr<void, decltype(&plist_free)> root(read, &plist_free);
    if (root && plist_get_node_type(root.get()) != PLIST_DICT) root.reset();
    return root;
  }

  std::filesystem::path path_;
};

}  // namespace hushpane::x11_tests
