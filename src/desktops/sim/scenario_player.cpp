#include "desktops/sim/scenario_player.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "desktops/shared/cairo_canvas.h"
#include "desktops/sim/png.h"

namespace hushpane::sim {

namespace {

// Where the program stores the picture that the user picked, and what it shares with its widget.
constexpr std::string_view applicationGroup = "group.com.corvane.Hushpane";
constexpr std::string_view sharedFileName = "hushpane-shared.plist";
constexpr std::string_view wallpaperKey = "hushpane.customWallpaperBookmarkData";
constexpr std::string_view modeKey = "hushpane.userMode";
constexpr std::string_view modeChange = "com.corvane.Hushpane.widgetModeChange";

ScenarioPlayer::Failure badLine(std::string message) {
  return {ScenarioPlayer::Failure::Kind::badLine, std::move(message)};
}

ScenarioPlayer::Failure noScreen(platform::DisplayId id) {
  return badLine("there is no screen " + std::to_string(id));
}

platform::ModifierFlags flagsOf(const command::Combination& combination) {
  platform::ModifierFlags flags = 0;
  for (const auto modifier : combination.modifiers) flags |= modifier;
  return flags;
}

ScenarioPlayer::Failure noWindow(const std::string& name) {
  return badLine("there is no window '" + name + "'");
}

}  // namespace

ScenarioPlayer::ScenarioPlayer(std::filesystem::path sources, std::filesystem::path folder, Program program,
                               std::function<void(const std::filesystem::path&)> written)
    : sources_(std::move(sources)),
      folder_(std::move(folder)),
      program_(std::move(program)),
      written_(std::move(written)) {
  desktop_.taskQueue().setAutomatic(true);
}

ScenarioPlayer::Result ScenarioPlayer::play(const Command& command) {
  auto result = std::visit([this](const auto& actual) { return run(actual); }, command);
  desktop_.drain();
  return result;
}

const SimWindow* ScenarioPlayer::overlay(platform::DisplayId screen) {
  const auto* found = desktop_.screens().find(screen);
  return found ? desktop_.windows().ownWindow(found->frame) : nullptr;
}

std::optional<platform::WindowNumber> ScenarioPlayer::window(const std::string& name) {
  const auto found = windows_.find(name);
  const bool isThere = found != windows_.end() && desktop_.windows().find(found->second);
  return isThere ? std::optional(found->second) : std::nullopt;
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::SetScreen& command) {
  auto screens = desktop_.screens().screens();
  const auto found = std::ranges::find(screens, command.screen.displayId, &platform::Screen::displayId);
  if (found == screens.end())
    screens.push_back(command.screen);
  else
    *found = command.screen;
  desktop_.screens().set(std::move(screens));
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::RemoveScreen& command) {
  if (!desktop_.screens().remove(command.id)) return noScreen(command.id);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::StartApp& command) {
  if (apps_.contains(command.app)) return badLine("'" + command.app + "' is running already");
  apps_[command.app] = desktop_.workspace().launch(command.app);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::QuitApp& command) {
  const auto found = apps_.find(command.app);
  if (found == apps_.end()) return badLine("'" + command.app + "' is not running");
  desktop_.workspace().quit(found->second);
  apps_.erase(found);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::OpenWindow& command) {
  const auto owner = apps_.find(command.app);
  if (owner == apps_.end()) return badLine("'" + command.app + "' is not running");
  if (window(command.window)) return badLine("there is a window '" + command.window + "' already");
  auto description = command.description;
  description.ownerPid = owner->second;
  windows_[command.window] = desktop_.windows().add(std::move(description));
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::MoveWindow& command) {
  const auto number = window(command.window);
  if (!number) return noWindow(command.window);
  desktop_.windows().setFrame(*number, command.frame);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::CloseWindow& command) {
  const auto number = window(command.window);
  if (!number) return noWindow(command.window);
  desktop_.windows().close(*number);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Activate& command) {
  if (const auto app = apps_.find(command.name); app != apps_.end()) {
    desktop_.workspace().activate(app->second);
    return {};
  }
  const auto number = window(command.name);
  if (!number) return badLine("there is no application or window '" + command.name + "'");
  desktop_.workspace().activateWindow(*number);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ActivateSelf&) {
  desktop_.workspace().activateOwnProgram();
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ActivateNone&) {
  desktop_.workspace().deactivateAll();
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::PressModifier& command) {
  desktop_.eventMonitors().pressModifier(command.modifier);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ReleaseModifier& command) {
  desktop_.eventMonitors().releaseModifier(command.modifier);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::TypeKey& command) {
  auto& keyboard = desktop_.eventMonitors();
  for (const auto modifier : command.combination.modifiers) keyboard.pressModifier(modifier);
  desktop_.typeKey(command.combination.keyCode);
  for (const auto modifier : command.combination.modifiers) keyboard.releaseModifier(modifier);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::TakeHotKey& command) {
  const auto& combination = command.combination;
  if (!desktop_.hotKeys().take(combination.keyCode, flagsOf(combination)))
    return badLine("the hot key is taken already");
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::GiveBackHotKey& command) {
  desktop_.hotKeys().giveBack(command.combination.keyCode, flagsOf(command.combination));
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::MovePointer& command) {
  desktop_.eventMonitors().moveMouse(command.deltaX);
  return {};
}

// To and fro in half a second, in small steps, as a hand does it.
ScenarioPlayer::Result ScenarioPlayer::run(const command::ShakePointer&) {
  constexpr int strokes = 7, stepsOfAStroke = 5;
  constexpr double step = 20, secondsOfAStep = 0.015;
  for (int stroke = 0; stroke < strokes; ++stroke)
    for (int count = 0; count < stepsOfAStroke; ++count) {
      desktop_.eventMonitors().moveMouse(stroke % 2 == 0 ? step : -step);
      desktop_.advance(secondsOfAStep);
    }
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::OpenUrls& command) {
  desktop_.application().openUrls(command.urls);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::SetSetting& command) {
  desktop_.userDefaults().set(command.key, command.value);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::RemoveSetting& command) {
  desktop_.userDefaults().remove(command.key);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Wait& command) {
  desktop_.advance(command.seconds);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Launch&) {
  if (isLaunched_ && !desktop_.application().isTerminated()) return badLine("the program is running already");
  isLaunched_ = true;
  program_.launch(desktop_);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Quit&) {
  if (!isLaunched_) return badLine("the program is not running");
  isLaunched_ = false;
  desktop_.endProgram();
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Wake&) {
  desktop_.workspace().wake();
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::SwitchSpace& command) {
  desktop_.workspace().switchSpace(command.space);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::SetDesktopPicture& command) {
  desktop_.workspace().setDesktopImage({});
  if (!command.file) return {};
  desktop_.workspace().setDesktopImage(sources_ / *command.file);
  if (!desktop_.workspace().desktopImage()) return badLine("there is no picture '" + *command.file + "'");
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::PickWallpaper& command) {
  if (!command.file) {
    desktop_.userDefaults().remove(wallpaperKey);
    return {};
  }
  const auto bookmark = desktop_.bookmarks().create(sources_ / *command.file);
  if (!bookmark) return badLine("there is no file '" + *command.file + "'");
  desktop_.userDefaults().set(wallpaperKey, *bookmark);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::SetLanguages& command) {
  desktop_.locale().setPreferredLanguages(command.tags);
  return {};
}

std::optional<std::filesystem::path> ScenarioPlayer::sharedFile() {
  const auto folder = desktop_.sharedContainer().url(applicationGroup);
  return folder ? std::optional(*folder / sharedFileName) : std::nullopt;
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::AskByWidget& command) {
  const auto file = sharedFile();
  if (!file) return Failure{Failure::Kind::notWritten, "there is no folder for the shared file"};
  auto shared = desktop_.propertyLists().read(*file).value_or(platform::Dictionary());
  shared.insert_or_assign(std::string(modeKey), command.mode);
  if (!desktop_.propertyLists().writeXml(*file, shared))
    return Failure{Failure::Kind::notWritten, "cannot write " + file->string()};
  desktop_.distributedNotificationCenter().postFromOutside(modeChange);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Shot& command) {
  const auto* screen = command.screen ? desktop_.screens().find(*command.screen) : nullptr;
  if (command.screen && !screen) return noScreen(*command.screen);
  return writePicture(screen ? desktop_.render(*screen) : desktop_.renderAll(), command.name);
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Sheet& command) {
  const auto sheet = program_.openContactSheet ? program_.openContactSheet(desktop_, command.request) : nullptr;
  if (!sheet) return badLine("there is no sheet '" + command.request.name + "'");
  while (const auto seconds = sheet->next()) desktop_.advance(*seconds);
  const auto pixels = [&](double points) { return static_cast<int>(std::ceil(points * command.scale)); };
  platform::Image picture{pixels(sheet->size().width), pixels(sheet->size().height), {}};
  picture.pixels.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
  desktops::CairoCanvas canvas(picture, command.scale);
  sheet->paint(canvas);
  return writePicture(picture, command.name);
}

ScenarioPlayer::Result ScenarioPlayer::writePicture(const platform::Image& picture, const std::string& name) {
  const auto file = folder_ / (name + ".png");
  if (!writePng(picture, file)) return Failure{Failure::Kind::notWritten, "cannot write " + file.string()};
  written_(file);
  return {};
}

}  // namespace hushpane::sim
