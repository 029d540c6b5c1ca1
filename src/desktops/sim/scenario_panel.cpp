#include "desktops/sim/scenario_player.h"
#include "desktops/sim/shown_texts.h"

// The part of the player that deals with the program's icon and panels.
namespace hushpane::sim {

namespace {

using Failure = ScenarioPlayer::Failure;

std::optional<Failure> noText(const std::string& text) {
  return Failure{Failure::Kind::unexpected, "no panel shows '" + text + "'"};
}

platform::Point middleOf(const platform::Rect& rect) {
  return {rect.x + rect.width / 2, rect.y + rect.height / 2};
}

}  // namespace

ScenarioPlayer::Result ScenarioPlayer::run(const command::SetStatusBar& command) {
  desktop_.setStatusBar(command.bar);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::SetAppearance& command) {
  desktop_.appearance().setDark(command.isDark);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::PointAt& command) {
  desktop_.pointer().moveTo(command.point);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::PointAtText& command) {
  const auto found = findText(desktop_.panels(), command.text);
  if (!found) return noText(command.text);
  desktop_.pointer().moveTo(middleOf(found->frame));
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::TurnWheel& command) {
  desktop_.pointer().scroll(command.delta);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::Click& command) {
  desktop_.pointer().click(command.point);
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ClickIcon&) {
  const auto icon = desktop_.statusItem().frame();
  if (!icon) return Failure{Failure::Kind::unexpected, "there is no icon to be clicked"};
  desktop_.pointer().click(middleOf(*icon));
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ClickText& command) {
  const auto found = findText(desktop_.panels(), command.text);
  if (!found) return noText(command.text);
  desktop_.pointer().click(middleOf(found->frame));
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::StartAgain&) {
  if (!isLaunched_) return Failure{Failure::Kind::badLine, "the program is not running"};
  desktop_.application().reopen();
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ChooseFile& command) {
  auto* const panel = desktop_.openPanel();
  if (!panel || !panel->isOpen()) return Failure{Failure::Kind::unexpected, "nobody asks for a file"};
  if (command.file)
    panel->choose(sources_ / *command.file);
  else
    panel->cancel();
  return {};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectPanels& command) {
  const auto count = static_cast<int>(desktop_.panels().shown().size());
  if (count == command.count) return {};
  return Failure{Failure::Kind::unexpected,
                 "panels: expected " + std::to_string(command.count) + ", found " + std::to_string(count)};
}

ScenarioPlayer::Result ScenarioPlayer::run(const command::ExpectText& command) {
  const bool isShown = findText(desktop_.panels(), command.text).has_value();
  if (isShown == command.isShown) return {};
  return command.isShown ? noText(command.text)
                         : Failure{Failure::Kind::unexpected, "a panel shows '" + command.text + "'"};
}

}  // namespace hushpane::sim
