#include <array>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "desktops/sim/scenario_player.h"

// The part of the player that looks at the desktop.
namespace hushpane::sim {

namespace {

using Failure = ScenarioPlayer::Failure;

template <class Expected, class Found>
Failure unexpected(std::string_view what, const Expected& expected, const Found& found) {
  std::ostringstream message;
  message << what << ": expected " << expected << ", found " << found;
  return {Failure::Kind::unexpected, message.str()};
}

Failure noOverlay(platform::DisplayId screen) {
  return {Failure::Kind::unexpected, "there is no overlay on screen " + std::to_string(screen)};
}

std::string describe(const platform::Value& value);

struct Describe {
  std::string operator()(bool value) const { return value ? "true" : "false"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  std::string operator()(double value) const {
    std::ostringstream text;
    text << value;
    return text.str();
  }
  std::string operator()(const std::string& value) const { return '"' + value + '"'; }
  std::string operator()(const platform::Data& value) const { return std::to_string(value.size()) + " bytes"; }
  std::string operator()(const platform::Date&) const { return "a date"; }
  std::string operator()(const platform::Array& value) const { return "an array of " + std::to_string(value.size()); }
  std::string operator()(const platform::Dictionary& value) const {
    std::string text;
    for (const auto& [key, entry] : value) text += (text.empty() ? "" : ",") + key + "=" + describe(entry);
    return "{" + text + "}";
  }
};

std::string describe(const platform::Value& value) {
  return std::visit(Describe(), value.storage);
}

std::string describe(const std::optional<platform::Value>& value) {
  return value ? describe(*value) : "nothing";
}

std::string hex(const std::array<int, 3>& channels) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const int channel : channels) {
    text += digits[static_cast<std::size_t>(channel / 16)];
    text += digits[static_cast<std::size_t>(channel % 16)];
  }
  return text;
}

std::array<int, 3> channelsOf(std::uint32_t pixel) {
  return {static_cast<int>(pixel >> 16 & 0xff), static_cast<int>(pixel >> 8 & 0xff), static_cast<int>(pixel & 0xff)};
}

std::array<int, 3> channelsOf(const platform::Color& color) {
  const auto channel = [](double value) { return static_cast<int>(std::lround(value * 255)); };
  return {channel(color.red), channel(color.green), channel(color.blue)};
}

std::optional<Failure> compare(std::string_view what, const std::string& key,
                               const std::optional<platform::Value>& expected,
                               const std::optional<platform::Value>& found) {
  if (expected == found) return {};
  return unexpected(std::string(what) + " " + key, describe(expected), describe(found));
}

}  // namespace

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectPixel& command) {
  const auto pixel = desktop_.pixel(command.point);
  if (!pixel) return Failure{Failure::Kind::badLine, "there is no screen at that point"};
  const auto expected = channelsOf(command.color);
  const auto found = channelsOf(*pixel);
  for (std::size_t channel = 0; channel < expected.size(); ++channel)
    if (std::abs(expected[channel] - found[channel]) > command.tolerance)
      return unexpected("pixel", hex(expected), hex(found));
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectShown& command) {
  const auto* window = overlay(command.screen);
  if (!window) return noOverlay(command.screen);
  if (window->isOnScreen() == command.isShown) return {};
  return unexpected("overlay", command.isShown ? "shown" : "hidden", command.isShown ? "hidden" : "shown");
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectLevel& command) {
  const auto* window = overlay(command.screen);
  if (!window) return noOverlay(command.screen);
  const auto level = window->shownLevel();
  if (level == command.level) return {};
  return unexpected("level", command.level, level ? std::to_string(*level) : "a hidden overlay");
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectAlpha& command) {
  const auto* window = overlay(command.screen);
  if (!window) return noOverlay(command.screen);
  const double found = window->presentationAlpha();
  if (std::abs(found - command.alpha) <= command.tolerance) return {};
  return unexpected("alpha", command.alpha, found);
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectBelow& command) {
  const auto* overlayWindow = overlay(command.screen);
  if (!overlayWindow) return noOverlay(command.screen);
  const auto number = window(command.window);
  if (!number) return Failure{Failure::Kind::badLine, "there is no window '" + command.window + "'"};
  for (const auto& shown : desktop_.windows().stack()) {
    if (shown.number == *number) return {};
    if (shown.own == overlayWindow) break;
  }
  return unexpected("order", "the overlay below '" + command.window + "'", "it above, or the window not on screen");
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectHotKeys& command) {
  const auto count = static_cast<int>(desktop_.hotKeys().registeredCount());
  if (count != command.count) return unexpected("hot keys", command.count, count);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectSetting& command) {
  return compare("setting", command.key, command.value, desktop_.userDefaults().value(command.key));
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectShared& command) {
  const auto file = sharedFile();
  const auto shared = file ? desktop_.propertyLists().read(*file) : std::nullopt;
  std::optional<platform::Value> found;
  if (shared && shared->contains(command.key)) found = shared->at(command.key);
  return compare("shared", command.key, command.value, found);
}

}  // namespace hushpane::sim
