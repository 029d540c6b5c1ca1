#include "input/shortcut_registry.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "state/state_controller.h"

namespace hushpane {

ShortcutRegistry& ShortcutRegistry::shared() {
  return platform::Platform::current().instance<ShortcutRegistry>([](platform::Platform& platform) {
    return std::make_shared<ShortcutRegistry>(platform, StateController::shared());
  });
}

ShortcutRegistry::ShortcutRegistry(platform::Platform& platform, StateController& state)
    : platform_(platform), state_(state) {
  load();
}

void ShortcutRegistry::setShortcuts(std::vector<HushpaneShortcut> shortcuts) {
  objectWillChange();
  shortcuts_ = std::move(shortcuts);
  save();
  if (!isStarted_) return;
  unregisterAll();
  registerAll();
}

const HushpaneShortcut* ShortcutRegistry::shortcut(HushpaneShortcut::Action action) const {
  const auto found = std::ranges::find(shortcuts_, action, &HushpaneShortcut::action);
  return found == shortcuts_.end() ? nullptr : &*found;
}

void ShortcutRegistry::setEnabled(bool enabled, HushpaneShortcut::Action action) {
  auto changed = shortcuts_;
  const auto found = std::ranges::find(changed, action, &HushpaneShortcut::action);
  if (found == changed.end()) return;
  found->enabled = enabled;
  setShortcuts(std::move(changed));
}

void ShortcutRegistry::start() {
  if (std::exchange(isStarted_, true)) return;
  eventHandlerRef_ =
      platform_.hotKeys().installHandler(lifetime_.weak([this](platform::HotKeyID id) { handleHotKey(id.id); }));
  changeHandlerRef_ = platform_.hotKeys().installChangeHandler(
      lifetime_.weak([this](const std::vector<platform::HotKeyID>& lost) { keyboardChanged(lost); }));
  registerAll();
}

// Of two stored records for an action the later one counts; an action without a record keeps its default.
void ShortcutRegistry::load() {
  const auto data = platform_.userDefaults().get<platform::Data>(storageKey);
  const auto json = data ? platform_.jsonCoder().decode(*data) : std::nullopt;
  const auto stored = json ? decodeShortcuts(*json) : std::nullopt;
  if (!stored) return;
  auto merged = defaultShortcuts();
  for (const auto& record : *stored) *std::ranges::find(merged, record.action, &HushpaneShortcut::action) = record;
  setShortcuts(std::move(merged));
}

void ShortcutRegistry::save() {
  if (auto text = platform_.jsonCoder().encode(encodeShortcuts(shortcuts_)))
    platform_.userDefaults().set(storageKey, std::move(*text));
}

void ShortcutRegistry::registerAll() {
  for (const auto& shortcut : shortcuts_) {
    if (!shortcut.enabled || registeredRefs_.contains(shortcut.action)) continue;
    const auto id = static_cast<std::uint32_t>(shortcut.action) + 1;
    auto reference = platform_.hotKeys().registerHotKey(shortcut.keyCode, shortcut.modifiers(), {hotKeySignature, id});
    if (reference) registeredRefs_.emplace(shortcut.action, std::move(reference));
  }
}

void ShortcutRegistry::unregisterAll() {
  registeredRefs_.clear();
}

bool ShortcutRegistry::isTaken(HushpaneShortcut::Action action) const {
  const auto* wanted = shortcut(action);
  return isStarted_ && wanted && wanted->enabled && !registeredRefs_.contains(action);
}

void ShortcutRegistry::retry() {
  if (std::ranges::none_of(shortcuts_, [this](const auto& shortcut) { return isTaken(shortcut.action); })) return;
  objectWillChange();
  registerAll();
}

void ShortcutRegistry::keyboardChanged(const std::vector<platform::HotKeyID>& lost) {
  for (const auto& id : lost) registeredRefs_.erase(static_cast<HushpaneShortcut::Action>(id.id - 1));
  retry();
}

void ShortcutRegistry::handleHotKey(std::uint32_t id) {
  if (id < 1 || id > rawTexts<HushpaneShortcut::Action>.size()) return;
  const auto action = static_cast<HushpaneShortcut::Action>(id - 1);
  platform_.mainQueue().async(lifetime_.weak([this, action] { dispatch(action); }));
}

void ShortcutRegistry::dispatch(HushpaneShortcut::Action action) {
  switch (action) {
    case HushpaneShortcut::Action::setStandard: return state_.setStandard();
    case HushpaneShortcut::Action::toggleCleanDesktop: return state_.toggleCleanDesktop();
    case HushpaneShortcut::Action::toggleFocus: return state_.toggleFocus();
  }
}

}  // namespace hushpane
