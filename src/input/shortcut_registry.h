#pragma once

#include <cstdint>
#include <map>
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
// start() on, and turns each press into a call on the state controller, one turn of the main queue later. Stored data
// that cannot be read leaves the defaults in force and stays as it is until the next change; a hot key that cannot be
// had is absent, and is asked for again whenever the keyboard map changes.
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

  // Whether the action has a shortcut that is enabled, but whose hot key is somebody else's.
  bool isTaken(HushpaneShortcut::Action action) const;
  // Asks again for the hot keys that could not be had; nobody tells when another program lets go of them.
  void retry();

  // `id` is an action's place, counted from 1; others are nobody's.
  void handleHotKey(std::uint32_t id);

 private:
  void load();
  void save();
  void registerAll();
  void unregisterAll();
  void keyboardChanged(const std::vector<platform::HotKeyID>& lost);
  void dispatch(HushpaneShortcut::Action action);

  platform::Platform& platform_;
  StateController& state_;
  std::vector<HushpaneShortcut> shortcuts_ = defaultShortcuts();
  bool isStarted_ = false;
  std::map<HushpaneShortcut::Action, platform::Token> registeredRefs_;
  platform::Token eventHandlerRef_, changeHandlerRef_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane
