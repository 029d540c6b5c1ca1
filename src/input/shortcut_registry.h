#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "input/hushpane_shortcut.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/observable_object.h"
#include "state/stored_keys.h"

namespace hushpane {

class StateController;

// The global keyboard shortcuts that switch modes. Stores them as JSON, holds the hot keys of the enabled ones from
// start() on, and turns each press into a call on the state controller, one turn of the main queue later. Nothing is
// ever reported: stored data that cannot be read leaves the defaults in force and stays as it is until the next change;
// a hot key that cannot be had is absent.
class ShortcutRegistry : public ObservableObject {
 public:
  static constexpr std::string_view storageKey = storedKeys::shortcuts;
  static constexpr std::uint32_t hotKeySignature = 0x4D495345;  // 'MISE'

  static ShortcutRegistry& shared();
  ShortcutRegistry(platform::Platform& platform, StateController& state);

  // Always one for each action, in the order of the actions.
  const std::vector<HushpaneShortcut>& shortcuts() const { return shortcuts_; }
  // Null when there is none for the action.
  const HushpaneShortcut* shortcut(HushpaneShortcut::Action action) const;
  // Saves them and, once started, registers all hot keys anew, those that did not change too.
  void setShortcuts(std::vector<HushpaneShortcut> shortcuts);

  // Does nothing when there is none for the action.
  void setEnabled(bool enabled, HushpaneShortcut::Action action);

  // Takes effect once.
  void start();
  bool isStarted() const { return isStarted_; }

  // `id` is an action's place, counted from 1; others are nobody's.
  void handleHotKey(std::uint32_t id);

 private:
  void load();
  void save();
  void registerAll();
  void unregisterAll();
  void dispatch(HushpaneShortcut::Action action);

  platform::Platform& platform_;
  StateController& state_;
  std::vector<HushpaneShortcut> shortcuts_ = defaultShortcuts();
  bool isStarted_ = false;
  std::vector<platform::Token> registeredRefs_;
  platform::Token eventHandlerRef_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane
