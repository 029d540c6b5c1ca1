#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>

#include "tests/x11/session.h"

namespace hushpane::x11_tests {
namespace {

constexpr uid_t nobody = 65534;

// A Wayland session with an X server in it, drawing into memory.
class WaylandSession : public testing::Test {
 protected:
  WaylandSession() : environment_(homeEnvironment(home_.path())) {
    const auto configuration = home_ / "sway.conf";
    // Whoever runs the test may use the X server.
    writeFile(configuration,
              "xwayland enable\noutput HEADLESS-1 mode 640x400\n"
              "exec sh -c 'xhost +si:localuser:root >&2; echo \"$DISPLAY $WAYLAND_DISPLAY\" >&3'\n");
    std::vector<std::string> command{"sway", "-c", configuration};
    if (geteuid() == 0) {
      makeSocketFolder();
      for (const auto& path : {home_.path(), configuration, home_ / "runtime"})
        if (chown(path.c_str(), nobody, nobody) != 0) throw std::runtime_error("a folder cannot be given away");
      // It refuses root.
      const std::string id = std::to_string(nobody);
      command.insert(command.begin(),
                     {"setpriv", "--reuid", id, "--regid", id, "--clear-groups", "--pdeathsig", "KILL"});
    }
    auto headless = environment_;
    headless.insert({{"WLR_BACKENDS", "headless"}, {"WLR_RENDERER", "pixman"}, {"WLR_LIBINPUT_NO_DEVICES", "1"}});
    sway_ = std::make_unique<Process>(command, headless, home_ / "logs");
    std::istringstream displays(sway_->report());
    displays >> environment_["DISPLAY"] >> environment_["WAYLAND_DISPLAY"];
  }

  // X servers of several users share it; the first one makes it as its own.
  static void makeSocketFolder() {
    const std::filesystem::path folder = "/tmp/.X11-unix";
    if (std::filesystem::create_directory(folder))
      std::filesystem::permissions(folder, std::filesystem::perms::all | std::filesystem::perms::sticky_bit);
  }

  std::string screen() const { return run({"grim", "-t", "ppm", "-"}, environment_, home_ / "logs"); }

  TemporaryFolder home_;
  Environment environment_;
  std::unique_ptr<Process> sway_;
};

TEST_F(WaylandSession, IsLeftAloneWithALineThatSaysWhatIsMissing) {
  const SettingsFile settings(home_ / "config/hushpane/com.corvane.Hushpane.plist");
  settings.write({{"hasSeenWelcome", xml(true)}, {"hushpane.lastUserMode", xml("cleanDesktop")}});
  const auto before = screen();
  ASSERT_GT(before.size(), 640u * 400 * 3);
  Process hushpane({HUSHPANE_BINARY}, environment_, home_ / "logs");
  EXPECT_EQ(hushpane.wait(), 1);
  EXPECT_EQ(hushpane.errors(),
            "hushpane: XWayland cannot cover the windows of a Wayland session; an X11 session is needed for now\n");
  EXPECT_EQ(hushpane.output(), "");
  EXPECT_TRUE(screen() == before);
}

}  // namespace
}  // namespace hushpane::x11_tests
