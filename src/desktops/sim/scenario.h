#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "desktops/sim/sim_status_item.h"
#include "desktops/sim/sim_window_server.h"
#include "platform/contact_sheet.h"
#include "platform/event_monitors.h"
#include "platform/screen.h"
#include "platform/value.h"

namespace hushpane::sim {

// The commands of a scenario, one type for each form of a line; docs/scenarios.md tells what they do.
namespace command {

struct SetScreen {
  platform::Screen screen;
};
struct RemoveScreen {
  platform::DisplayId id;
};
struct StartApp {
  std::string app;
};
struct QuitApp {
  std::string app;
};
struct OpenWindow {
  std::string window;
  std::string app;
  AppWindow description;  // its owner is known only when the scenario is played
};
struct MoveWindow {
  std::string window;
  platform::Rect frame;
};
struct CloseWindow {
  std::string window;
};
struct Activate {
  std::string name;  // of an application or of a window
};
struct ActivateSelf {};
struct ActivateNone {};
struct PressModifier {
  platform::ModifierFlags modifier;
};
struct ReleaseModifier {
  platform::ModifierFlags modifier;
};
// A key with the modifiers that go down before it and up after it.
struct Combination {
  std::uint16_t keyCode = 0;
  std::vector<platform::ModifierFlags> modifiers;
};
struct TypeKey {
  Combination combination;
};
struct TakeHotKey {  // by another program
  Combination combination;
};
struct GiveBackHotKey {
  Combination combination;
};
struct MovePointer {
  double deltaX;  // points
};
struct ShakePointer {};
struct OpenUrls {
  std::vector<std::string> urls;
};
struct SetSetting {
  std::string key;
  platform::Value value;
};
struct RemoveSetting {
  std::string key;
};
struct Wait {
  double seconds;
};
struct Launch {};
struct Quit {};
struct Wake {};
struct SwitchSpace {
  int space;
};
struct PickWallpaper {
  std::optional<std::string> file;  // nothing: none is picked any more
};
struct SetDesktopPicture {
  std::optional<std::string> file;  // beside the scenario; nothing: the desktop draws its own
};
struct SetLanguages {
  std::vector<std::string> tags;  // the best first
};
struct AskByWidget {
  std::string mode;
};
struct Shot {
  std::string name;
  std::optional<platform::DisplayId> screen;  // nothing: all screens in one picture
};
struct Sheet {
  platform::ContactSheetRequest request;
  std::string name;  // of the picture
  double scale = 1;  // pixels per point
};
struct SetStatusBar {
  SimStatusItem::Bar bar;
};
struct SetAppearance {
  bool isDark;
};
struct PointAt {
  platform::Point point;
};
struct PointAtText {
  std::string text;
};
struct TurnWheel {
  double delta;  // points
};
struct Click {
  platform::Point point;
};
struct ClickIcon {};
struct ClickText {
  std::string text;
};
struct StartAgain {};
struct ChooseFile {
  std::optional<std::string> file;  // beside the scenario; nothing: the user thinks better of it
};
struct ExpectPanels {
  int count;
};
struct ExpectText {
  std::string text;
  bool isShown;
};
struct ExpectPixel {
  platform::Point point;
  platform::Color color;
  int tolerance;  // of each channel, in 255ths
};
struct ExpectShown {
  platform::DisplayId screen;
  bool isShown;
};
struct ExpectLevel {
  platform::DisplayId screen;
  int level;
};
struct ExpectAlpha {
  platform::DisplayId screen;
  double alpha;
  double tolerance;
};
struct ExpectBelow {
  platform::DisplayId screen;
  std::string window;
};
struct ExpectHotKeys {
  int count;
};
struct ExpectSetting {
  std::string key;
  std::optional<platform::Value> value;  // nothing: absent
};
struct ExpectShared {
  std::string key;
  std::optional<platform::Value> value;  // nothing: absent
};

}  // namespace command

using Command = std::variant<
    command::SetScreen, command::RemoveScreen, command::StartApp, command::QuitApp, command::OpenWindow,
    command::MoveWindow, command::CloseWindow, command::Activate, command::ActivateSelf, command::ActivateNone,
    command::PressModifier, command::ReleaseModifier, command::TypeKey, command::TakeHotKey, command::GiveBackHotKey,
    command::MovePointer, command::ShakePointer, command::OpenUrls, command::SetSetting, command::RemoveSetting,
    command::Wait, command::Launch, command::Quit, command::Wake, command::SwitchSpace, command::SetDesktopPicture,
    command::PickWallpaper, command::SetLanguages, command::AskByWidget, command::Shot, command::Sheet,
    command::SetStatusBar, command::SetAppearance, command::PointAt, command::PointAtText, command::TurnWheel,
    command::Click, command::ClickIcon, command::ClickText, command::StartAgain, command::ChooseFile,
    command::ExpectPanels, command::ExpectText, command::ExpectPixel, command::ExpectShown, command::ExpectLevel,
    command::ExpectAlpha, command::ExpectBelow, command::ExpectHotKeys, command::ExpectSetting, command::ExpectShared>;

struct ScenarioLine {
  int number = 0;  // from 1
  Command command;
};

using Scenario = std::vector<ScenarioLine>;

struct ScenarioError {
  int line = 0;
  std::string message;
};

// The commands of a scenario text, or the first line that is none.
std::variant<Scenario, ScenarioError> parseScenario(std::string_view text);

}  // namespace hushpane::sim
