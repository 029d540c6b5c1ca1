#include <glib.h>

#include <cmath>
#include <map>
#include <sstream>
#include <stdexcept>
#include <variant>

#include "contract/stage.h"
#include "desktops/shared/property_list.h"
#include "desktops/x11/x11_platform.h"
#include "tests/x11/session.h"

namespace hushpane::contract_tests {
namespace {

using namespace std::chrono_literals;
using x11_tests::Clock;

// The real desktop in this process, and other programs around it on an X server of their own.
class X11Stage : public Stage {
 public:
  X11Stage() {
    session_.startBus();
    for (const auto& [name, value] : session_.environment()) setenv(name.c_str(), value.c_str(), 1);
    auto start = x11::X11Platform::start({});
    auto* started = std::get_if<std::unique_ptr<x11::X11Platform>>(&start);
    if (!started) throw std::runtime_error("the X11 desktop does not start");
    platform_ = std::move(*started);
  }

  platform::Platform& platform() override { return *platform_; }

  bool waitUntil(const std::function<bool()>& condition, double limit) override {
    const auto end = Clock::now() + std::chrono::duration<double>(limit);
    while (!condition()) {
      if (Clock::now() > end) return false;
      if (!g_main_context_iteration(nullptr, FALSE)) std::this_thread::sleep_for(1ms);
    }
    return true;
  }
  void run(double seconds) override {
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    waitUntil([&] { return Clock::now() > end; }, 2 * seconds + 1);
  }

  AppWindow openWindow(int application, const platform::Rect& frame, std::uint32_t color) override {
    auto& program = programs_[application];
    if (!program) {
      program = std::make_unique<x11_tests::Process>(std::vector<std::string>{HUSHPANE_TEST_CLIENT},
                                                     session_.environment(), session_.logs());
    }
    std::ostringstream line;
    line << frame.x << ' ' << frame.y << ' ' << frame.width << ' ' << frame.height << ' ' << color;
    program->tell(line.str());
    const auto number = static_cast<platform::WindowNumber>(std::stoul(program->report()));
    activateWindow(number);
    return {program->pid(), number};
  }
  void activateWindow(platform::WindowNumber number) override { session_.activate(number); }
  void moveWindow(platform::WindowNumber number, const platform::Rect& frame) override {
    session_.x().setBounds(number, frame);
  }
  void closeWindow(platform::WindowNumber number) override {
    xcb_destroy_window(session_.x().get(), number);
    session_.x().sync();
  }
  std::uint32_t pixel(platform::Point point) override { return session_.x().pixel(point).value; }

  void plugInDisplay() override { session_.plugInRightMonitor(); }
  void unplugDisplay() override { session_.unplugRightMonitor(); }

  void pressModifier(platform::ModifierFlags modifier) override { session_.keyboard("keydown", nameOf(modifier)); }
  void releaseModifier(platform::ModifierFlags modifier) override { session_.keyboard("keyup", nameOf(modifier)); }
  void typeKey(std::uint16_t keyCode) override {
    constexpr std::uint16_t letterK = 40;
    if (keyCode != letterK) throw std::runtime_error("this stage has no name for the key");
    session_.keyboard("key", "k");
  }
  bool takeHotKey(std::uint16_t keyCode, platform::ModifierFlags modifiers) override {
    using namespace platform::modifier;
    constexpr std::uint16_t letterJ = 38, letterK = 40;
    const bool isKnown = (keyCode == letterJ || keyCode == letterK) && modifiers == (control | option);
    if (!isKnown) throw std::runtime_error("this stage cannot take that");
    const xcb_keycode_t keycode = (keyCode == letterJ) == areKeysSwapped_ ? placeOfK : placeOfJ;
    auto* server = session_.x().get();
    const auto cookie = xcb_grab_key_checked(server, 1, session_.x().root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1,
                                             keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    return !x11_tests::own(xcb_request_check(server, cookie));
  }
  void swapKeys() override {
    areKeysSwapped_ = !areKeysSwapped_;
    const std::string places = areKeysSwapped_ ? "s/(<AC08> =) 45/\\1 44/; s/(<AC07> =) 44/\\1 45/"
                                               : "s/(<AC08> =) 44/\\1 45/; s/(<AC07> =) 45/\\1 44/";
    session_.runTool({"sh", "-c", "xkbcomp $DISPLAY - 2>/dev/null | sed -E '" + places + "' | xkbcomp -w0 - $DISPLAY"});
  }
  void moveMouse(double points) override {
    session_.runTool({"xdotool", "mousemove_relative", "--", std::to_string(std::lround(points)), "0"});
  }

  void changeSetting(const std::string& key, const platform::Value& value) override {
    desktops::PropertyListFiles files;
    const auto file = session_.settings().path();
    auto settings = files.read(file).value_or(platform::Dictionary{});
    settings.insert_or_assign(key, value);
    files.writeXml(file, settings);
  }
  void postDistributed(const std::string& name) override {
    session_.runTool({"dbus-send", "--session", "--type=signal", "/com/corvane/Hushpane", name});
  }
  void openUrls(const std::vector<std::string>& urls) override {
    std::string list;
    for (const auto& url : urls) list += (list.empty() ? "'" : ", '") + url + "'";
    x11_tests::Process caller(
        {"gdbus", "call", "--session", "--dest", "com.corvane.Hushpane", "--object-path", "/com/corvane/Hushpane",
         "--method", "org.freedesktop.Application.Open", "[" + list + "]", "{}"},
        session_.environment(), session_.logs());
    waitUntil([&] { return !caller.isRunning(); }, 8);
  }

  void endPlatform() override { platform_.reset(); }

 private:
  static constexpr xcb_keycode_t placeOfJ = 44, placeOfK = 45;

  static std::string nameOf(platform::ModifierFlags modifier) {
    switch (modifier) {
      case platform::modifier::option: return "alt";
      case platform::modifier::shift: return "shift";
      case platform::modifier::control: return "ctrl";
      case platform::modifier::command: return "super";
    }
    throw std::runtime_error("this stage has no name for the modifier");
  }

  x11_tests::Session session_;
  std::map<int, std::unique_ptr<x11_tests::Process>> programs_;
  std::unique_ptr<x11::X11Platform> platform_;
  bool areKeysSwapped_ = false;
};

const StageFactory real{"X11Desktop", [] { return std::make_unique<X11Stage>(); }};

INSTANTIATE_TEST_SUITE_P(X11, ContractTest, testing::Values(real), nameOf);

}  // namespace
}  // namespace hushpane::contract_tests
