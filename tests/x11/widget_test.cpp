#include <algorithm>
#include <csignal>

#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

// Someone's home folder, a bus when asked for, and no display.
class WidgetAlone : public testing::Test {
 protected:
  using Words = std::vector<std::string>;

  WidgetAlone() {
    for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
      if (const char* value = std::getenv(name)) environment_[name] = value;
    environment_["HOME"] = home_ / "home";
    std::filesystem::create_directory(home_ / "logs");
    sharedFile_ =
        std::make_unique<SettingsFile>(home_ / "home/.local/share/group.com.corvane.Hushpane/hushpane-shared.plist");
  }

  std::unique_ptr<Process> start(Words words) const {
    words.insert(words.begin(), HUSHPANE_WIDGET_BINARY);
    return std::make_unique<Process>(words, environment_, home_ / "logs");
  }
  void startBus() {
    bus_ = std::make_unique<SessionBus>(environment_, home_ / "logs");
    environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_->address();
  }
  std::string run(const Words& words) const {
    const auto process = start(words);
    EXPECT_EQ(process->wait(), 0);
    EXPECT_EQ(process->errors(), "");
    return process->output();
  }
  void tell(const std::string& member) const {
    x11_tests::run(
        {"dbus-send", "--session", "--type=signal", "/com/corvane/Hushpane", "com.corvane.Hushpane." + member},
        environment_, home_ / "logs");
  }
  void store(const char* mode) const { sharedFile_->write({{"hushpane.userMode", xml(mode)}}); }
  static testing::AssertionResult prints(const Process& process, const std::string& text) {
    if (waitUntil([&] { return process.output() == text; })) return testing::AssertionSuccess();
    return testing::AssertionFailure() << process.output() << "instead of\n" << text;
  }

  TemporaryFolder home_;
  Environment environment_;
  std::unique_ptr<SettingsFile> sharedFile_;
  std::unique_ptr<SessionBus> bus_;
};

TEST_F(WidgetAlone, AnswersWithoutAProgramABusOrAFile) {
  const auto expectFailure = [this](const Words& words, int status) {
    const auto process = start(words);
    EXPECT_EQ(process->wait(), status);
    EXPECT_EQ(process->output(), "");
    const auto errors = process->errors();
    EXPECT_TRUE(errors.starts_with("hushpane-widget: ")) << errors;
    EXPECT_EQ(errors.find('\n'), errors.size() - 1) << errors;
  };
  EXPECT_EQ(run({}), "standard\n");
  EXPECT_EQ(run({"--json"}),
            "{\"text\":\"Standard\",\"alt\":\"standard\",\"class\":\"standard\",\"tooltip\":\"Hushpane: Standard\"}\n");
  EXPECT_TRUE(run({"--help"}).starts_with("Usage: hushpane-widget"));
  EXPECT_TRUE(run({"--version"}).starts_with("hushpane-widget "));
  expectFailure({"--nonsense"}, 2);
  EXPECT_FALSE(std::filesystem::exists(home_ / "home"));
  EXPECT_EQ(run({"--set", "focus"}), "");
  EXPECT_EQ(sharedFile_->value("hushpane.userMode"), "focus");
  EXPECT_EQ(run({}), "focus\n");
  std::filesystem::remove_all(home_ / "home");
  std::ofstream(home_ / "home") << "no folder";
  expectFailure({"--set", "focus"}, 1);
}

TEST_F(WidgetAlone, FollowsTheFileWithoutABus) {
  const auto widget = start({"--follow"});
  EXPECT_TRUE(prints(*widget, "standard\n"));
  EXPECT_FALSE(std::filesystem::exists(home_ / "home"));
  store("focus");
  EXPECT_TRUE(prints(*widget, "standard\nfocus\n")) << "the folder came later";
  sharedFile_->write({{"hushpane.userMode", xml("focus")}, {"hushpane.note", xml("mine")}});
  run({"--set", "cleanDesktop"});
  EXPECT_TRUE(prints(*widget, "standard\nfocus\ncleanDesktop\n")) << "the same mode is no news";
  std::filesystem::remove_all(sharedFile_->path().parent_path());
  EXPECT_TRUE(prints(*widget, "standard\nfocus\ncleanDesktop\nstandard\n"));
  store("focus");
  EXPECT_TRUE(prints(*widget, "standard\nfocus\ncleanDesktop\nstandard\nfocus\n")) << "the folder was made anew";
  EXPECT_EQ(widget->terminate(), 0);
  EXPECT_EQ(widget->errors(), "");
}

TEST_F(WidgetAlone, FollowsTheSignalAndSurvivesTheBus) {
  startBus();
  store("focus");
  const auto widget = start({"--follow", "--json"});
  const std::string line =
      "{\"text\":\"Focus\",\"alt\":\"focus\",\"class\":\"focus\",\"tooltip\":\"Hushpane: Focus\"}\n";
  EXPECT_TRUE(prints(*widget, line));
  EXPECT_TRUE(waitUntil([&] {
    tell("reloadAllTimelines");
    return widget->output().starts_with(line + line);
  })) << "each signal asks for a line";
  bus_->terminate();
  store("standard");
  EXPECT_TRUE(waitUntil([&] { return widget->output().ends_with("Hushpane: Standard\"}\n"); }));
  widget->signal(SIGHUP);
  EXPECT_EQ(widget->wait(), 0);
  EXPECT_EQ(widget->errors(), "");
}

TEST_F(WidgetAlone, EndsWithItsReader) {
  environment_["WIDGET"] = HUSHPANE_WIDGET_BINARY;
  Process shell({"bash", "-c", "timeout 5 \"$WIDGET\" --follow | head -n 1; echo ended with ${PIPESTATUS[0]}"},
                environment_, home_ / "logs");
  EXPECT_EQ(shell.wait(), 0);
  EXPECT_EQ(shell.output(), "standard\nended with 0\n");
}

// --- with the program ---

class WidgetOnADesktop : public Desktop {
 protected:
  std::unique_ptr<Process> startWidget(std::vector<std::string> words) {
    words.insert(words.begin(), HUSHPANE_WIDGET_BINARY);
    return std::make_unique<Process>(words, environment(), logs());
  }
  void set(const std::string& mode) {
    const auto widget = startWidget({"--set", mode});
    EXPECT_EQ(widget->wait(), 0);
    EXPECT_EQ(widget->output() + widget->errors(), "");
  }
};

TEST_F(WidgetOnADesktop, SwitchesTheModeAndFollowsIt) {
  startBus();
  Process monitor({"dbus-monitor", "--session", "--profile", "interface='com.corvane.Hushpane'"}, environment(),
                  logs());
  chooseMode("standard");
  sharedFile().write({{"hushpane.userMode", xml("focus")}, {"hushpane.note", xml("mine")}});
  const auto follower = startWidget({"--follow"});
  EXPECT_TRUE(waitUntil([&] { return follower->output() == "focus\n"; }));
  startHushpane();
  EXPECT_TRUE(entersMode("standard")) << "the program's own last mode holds";
  EXPECT_TRUE(waitUntil([&] { return follower->output().starts_with("focus\nstandard\n"); }));
  EXPECT_TRUE(waitUntil([this] {
    set("focus");
    return settings().value("hushpane.lastUserMode") == "focus";
  }));
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
  EXPECT_EQ(sharedFile().value("hushpane.userMode"), "focus");
  EXPECT_EQ(sharedFile().value("hushpane.note"), "mine") << "what others wrote there stays";
  set("focus");
  set("cleanDesktop");
  EXPECT_TRUE(shows(red_->spot(), red_->color()));
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  EXPECT_TRUE(waitUntil([this] { return settings().value("hushpane.reviewSwitchCount") == "2"; }));
  EXPECT_TRUE(waitUntil([&] { return follower->output().ends_with("cleanDesktop\n"); }));

  // The program's own switches: a line each, not one for the file and one for the signal.
  std::this_thread::sleep_for(500ms);
  const auto lines = [&] {
    const auto output = follower->output();
    return std::count(output.begin(), output.end(), '\n');
  };
  const auto before = lines();
  constexpr int switches = 6;
  for (int number = 0; number < switches; ++number) {
    keyboard("key", number % 2 == 0 ? "ctrl+alt+f" : "ctrl+alt+a");
    std::this_thread::sleep_for(300ms);
  }
  EXPECT_TRUE(waitUntil([&] { return lines() - before >= switches; }));
  EXPECT_LE(lines() - before, switches + 2) << "a busy machine may have been slow to tell";
  EXPECT_TRUE(waitUntil([&] { return monitor.output().find("reloadAllTimelines") != std::string::npos; }))
      << "widgets that read no file are told, too";
  EXPECT_EQ(stopHushpane(), 0);
  EXPECT_EQ(follower->terminate(), 0);
}

}  // namespace
}  // namespace hushpane::x11_tests
