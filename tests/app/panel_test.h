#pragma once

#include <cstdint>
#include <string>

#include "desktops/sim/shown_texts.h"
#include "support/simulated_program.h"

namespace hushpane::tests {

// The panel of the running program, used with a mouse and a keyboard.
class PanelTest : public SimulatedProgram {
 protected:
  using Point = platform::Point;
  using Rect = platform::Rect;
  using Bar = sim::SimStatusItem::Bar;

  static constexpr double barHeight = sim::SimStatusItem::barHeight;
  static constexpr std::uint16_t escapeKey = 53, tabKey = 48, spaceKey = 49, returnKey = 36, letterQ = 12;

  void SetUp() override {
    prepareDesktop();
    desktop->setStatusBar(Bar::top);
    store(storedKeys::hasSeenWelcome, true);
  }

  std::size_t panelCount() { return desktop->panels().shown().size(); }
  bool shows(const std::string& text) { return sim::findText(desktop->panels(), text).has_value(); }
  Point icon() {
    const Rect frame = *desktop->statusItem().frame();
    return {frame.x + frame.width / 2, frame.y + frame.height / 2};
  }
  void click(Point point) {
    desktop->pointer().click(point);
    desktop->drain();
  }
  // What is shown may still be moving.
  void settle() { desktop->advance(1); }
  Point middleOf(const std::string& text) {
    const auto found = sim::findText(desktop->panels(), text);
    if (!found) ADD_FAILURE() << "no panel shows " << text;
    return found ? Point{found->frame.x + found->frame.width / 2, found->frame.y + found->frame.height / 2} : Point{};
  }
  void click(const std::string& text) {
    click(middleOf(text));
    settle();
  }
  void open() {
    click(icon());
    settle();
  }
  void type(std::uint16_t key, platform::ModifierFlags modifiers = 0) {
    if (modifiers) desktop->eventMonitors().pressModifier(modifiers);
    desktop->typeKey(key);
    if (modifiers) desktop->eventMonitors().releaseModifier(modifiers);
    desktop->drain();
  }
  void relaunchWithIcon() {
    prepareDesktop();
    desktop->setStatusBar(Bar::top);
    launch();
    open();
  }
  // Of the panel in front, without its shadow.
  Rect outline() {
    const auto& panel = *desktop->panels().shown().front();
    const Rect inside = panel.outline().controlBounds();
    return {panel.frame().x + inside.x, panel.frame().y + inside.y, inside.width, inside.height};
  }
};

}  // namespace hushpane::tests
