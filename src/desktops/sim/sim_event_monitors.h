#pragma once

#include "desktops/sim/sim_main_queue.h"
#include "platform/event_monitors.h"
#include "platform/handler_list.h"

namespace hushpane::sim {

// A keyboard and a mouse used by script. What they do reaches the monitors with the next turn of the main queue; the
// modifier state changes at once.
class SimEventMonitors : public platform::EventMonitors {
 public:
  enum class KeyboardOwner { otherProgram, ownProgram };

  explicit SimEventMonitors(SimMainQueue& queue) : queue_(queue) {}

  platform::Token addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) override;
  platform::Token addLocalMonitor(platform::EventMask mask, LocalHandler handler) override;
  platform::ModifierFlags modifierFlags() const override { return flags_; }
  platform::Point mouseLocation() const override { return mouseLocation_; }

  void pressModifier(platform::ModifierFlags modifier) { changeFlags(flags_ | modifier); }
  void releaseModifier(platform::ModifierFlags modifier) { changeFlags(flags_ & ~modifier); }
  // A key of the same modifier a second time, such as the other option key: the flags stay as they are.
  void repeatModifier() { changeFlags(flags_); }
  void pressKey(std::uint16_t keyCode);
  void moveMouse(double deltaX);
  void setMouseLocation(platform::Point location) { mouseLocation_ = location; }
  // A mouse button goes down where the pointer is, over a window of that owner.
  void pressButton(platform::EventType button, KeyboardOwner owner);

  // Whose windows get the events from here on.
  void setKeyboardOwner(KeyboardOwner owner) { owner_ = owner; }
  // From here on no monitor can be installed, or it can again.
  void setRefusesMonitors(bool refuses) { refusesMonitors_ = refuses; }

  // The monitors installed now.
  std::size_t monitorCount() const { return *monitorCount_; }
  // Events that a local monitor has let through to the program's own windows.
  std::size_t deliveredLocally() const { return deliveredLocally_; }

 private:
  void changeFlags(platform::ModifierFlags flags);
  void inject(const platform::Event& event, KeyboardOwner owner);
  void deliverGlobally(const platform::Event& event);
  void deliverLocally(platform::Event event);
  platform::Token counted(platform::Token token);

  SimMainQueue& queue_;
  platform::ModifierFlags flags_ = 0;
  platform::Point mouseLocation_;
  KeyboardOwner owner_ = KeyboardOwner::otherProgram;
  bool refusesMonitors_ = false;
  std::size_t deliveredLocally_ = 0;
  std::shared_ptr<std::size_t> monitorCount_ = std::make_shared<std::size_t>(0);
  platform::HandlerList<void(const platform::Event&)> global_;
  platform::HandlerList<void(std::optional<platform::Event>&)> local_;
};

}  // namespace hushpane::sim
