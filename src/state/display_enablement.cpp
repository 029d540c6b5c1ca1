#include "state/display_enablement.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace hushpane {

namespace {

std::optional<platform::DisplayId> parseDisplayId(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  platform::DisplayId id = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  if (negative && id != 0) return std::nullopt;
  return id;
}

}  // namespace

DisplayEnablement decodeDisplayEnablement(const platform::Dictionary& stored) {
  DisplayEnablement enablement;
  for (const auto& [key, value] : stored) {
    const auto isOn = value.as<bool>();
    if (!isOn) return {};
    if (const auto id = parseDisplayId(key)) enablement[*id] = *isOn;
  }
  return enablement;
}

platform::Dictionary encodeDisplayEnablement(const DisplayEnablement& enablement) {
  platform::Dictionary stored;
  for (const auto& [id, isOn] : enablement) stored.emplace(std::to_string(id), isOn);
  return stored;
}

}  // namespace hushpane
