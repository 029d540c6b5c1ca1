#include "input/hushpane_shortcut.h"

#include <limits>
#include <string>
#include <utility>

namespace hushpane {

namespace {

using platform::Json;
using platform::JsonArray;
using platform::JsonObject;

constexpr std::string_view actionMember = "action";
constexpr std::string_view enabledMember = "enabled";
constexpr std::string_view keyCodeMember = "keyCode";
constexpr std::string_view modifiersMember = "modifiersRaw";

constexpr std::uint64_t controlOption = platform::modifier::control | platform::modifier::option;

Json encode(const HushpaneShortcut& shortcut) {
  const auto member = [](std::string_view name, Json value) {
    return platform::JsonMember{std::string(name), std::move(value)};
  };
  return {JsonObject{
      member(actionMember, {std::string(rawValue(shortcut.action))}), member(enabledMember, {shortcut.enabled}),
      member(keyCodeMember, {std::uint64_t{shortcut.keyCode}}), member(modifiersMember, {shortcut.modifiersRaw})}};
}

template <class Type>
const Type* member(const JsonObject& object, std::string_view name) {
  for (auto entry = object.rbegin(); entry != object.rend(); ++entry)
    if (entry->name == name) return std::get_if<Type>(&entry->value.storage);
  return nullptr;
}

std::optional<HushpaneShortcut> decode(const Json& json) {
  const auto* object = std::get_if<JsonObject>(&json.storage);
  if (!object) return std::nullopt;
  const auto* actionText = member<std::string>(*object, actionMember);
  const auto* enabled = member<bool>(*object, enabledMember);
  const auto* keyCode = member<std::uint64_t>(*object, keyCodeMember);
  const auto* modifiersRaw = member<std::uint64_t>(*object, modifiersMember);
  if (!actionText || !enabled || !keyCode || !modifiersRaw) return std::nullopt;
  const auto action = fromRawValue<HushpaneShortcut::Action>(*actionText);
  if (!action || *keyCode > std::numeric_limits<std::uint16_t>::max()) return std::nullopt;
  return HushpaneShortcut{*action, *enabled, static_cast<std::uint16_t>(*keyCode), *modifiersRaw};
}

}  // namespace

platform::ModifierFlags HushpaneShortcut::modifiers() const {
  using namespace platform::modifier;
  return static_cast<platform::ModifierFlags>(modifiersRaw & (shift | control | option | command));
}

const std::vector<HushpaneShortcut>& defaultShortcuts() {
  using Action = HushpaneShortcut::Action;
  static const std::vector<HushpaneShortcut> shortcuts{{Action::setStandard, true, 1, controlOption},
                                                       {Action::toggleCleanDesktop, true, 0, controlOption},
                                                       {Action::toggleFocus, true, 3, controlOption}};
  return shortcuts;
}

Json encodeShortcuts(const std::vector<HushpaneShortcut>& shortcuts) {
  JsonArray records;
  for (const auto& shortcut : shortcuts) records.push_back(encode(shortcut));
  return {std::move(records)};
}

std::optional<std::vector<HushpaneShortcut>> decodeShortcuts(const Json& json) {
  const auto* records = std::get_if<JsonArray>(&json.storage);
  if (!records) return std::nullopt;
  std::vector<HushpaneShortcut> shortcuts;
  for (const auto& record : *records) {
    const auto shortcut = decode(record);
    if (!shortcut) return std::nullopt;
    shortcuts.push_back(*shortcut);
  }
  return shortcuts;
}

}  // namespace hushpane
