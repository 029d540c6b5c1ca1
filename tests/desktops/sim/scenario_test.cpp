#include "desktops/sim/scenario.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>

#include "app/hushpane_app.h"
#include "desktops/sim/play_scenario.h"
#include "desktops/sim/sim_platform.h"
#include "support/environment.h"
#include "support/pictures.h"

namespace hushpane::sim {
namespace {

std::string firstError(std::string_view text) {
  const auto parsed = parseScenario(text);
  const auto* error = std::get_if<ScenarioError>(&parsed);
  return error ? std::to_string(error->line) + ": " + error->message : "";
}

TEST(ScenarioParserTest, TellsTheFirstBadLineAndWhy) {
  const std::pair<const char*, const char*> cases[] = {
      {"sheet card card bright", "1: expected 'scale' instead of 'bright'"},
      {"\n\n# comment\nfly away", "4: unknown command 'fly'"},
      {"wait", "1: missing seconds"},
      {"wait soon", "1: 'soon' is no number for seconds"},
      {"wait 3601", "1: seconds 3601 is out of range"},
      {"wait nan", "1: 'nan' is no number for seconds"},
      {"wait 1 2", "1: unexpected '2'"},
      {"app \"Two words", "1: a quoted text does not end"},
      {"screen 1 at 0 0 size 0 10", "1: width 0 is out of range"},
      {"screen -1 remove", "1: '-1' is no display id"},
      {"screen 1 at 0 0 size 10000 10000", "1: the screen has too many pixels"},
      {"window a of b on 1 1", "1: expected 'at' instead of 'on'"},
      {"window a of b at 1 1 size 2 2 color red", "1: 'red' is no colour of the form rrggbb"},
      {"window a of b at 1 1 size 2 2 contents music", "1: 'music' is no kind of contents"},
      {"window a of b at 1 1 size 2 2 sound on", "1: unexpected 'sound'"},
      {"key press alt", "1: 'alt' is no modifier key"},
      {"key type 128", "1: key code 128 is out of range"},
      {"key type 3 with", "1: missing modifier key"},
      {"key take 3 control", "1: expected 'with' instead of 'control'"},
      {"pointer jump", "1: expected 'move' instead of 'jump'"},
      {"languages", "1: missing a language"},
      {"languages de de_AT.UTF-8", "1: 'de_AT.UTF-8' is no language tag"},
      {"languages none de", "1: unexpected 'de'"},
      {"expect hot-keys -1", "1: number -1 is out of range"},
      {"set key {a}", "1: 'a' in a dictionary is no KEY=VALUE"},
      {"shot ../escape", "1: '../escape' is no name for a picture"},
      {"shot .hidden", "1: '.hidden' is no name for a picture"},
      {"expect overlay 1 blue", "1: expected 'alpha' instead of 'blue'"},
      {"expect pixel 1 1 ff00", "1: 'ff00' is no colour of the form rrggbb"},
  };
  for (const auto& [text, message] : cases) EXPECT_EQ(firstError(text), message) << text;
}

TEST(ScenarioParserTest, ReadsValuesOfEveryType) {
  using platform::Dictionary;
  using platform::Value;
  const std::pair<const char*, Value> cases[] = {
      {"true", true},
      {"12", 12},
      {"-0.5", -0.5},
      {"dim", "dim"},
      {"\"12\"", "12"},
      {"\"two words # not a comment\"", "two words # not a comment"},
      {"data [\"x\"]", platform::Data{'[', '"', 'x', '"', ']'}},
      {"data", "data"},
      {"{}", Dictionary{}},
      {"{2=false,x=1.5}", Dictionary{{"2", false}, {"x", 1.5}}},
  };
  for (const auto& [text, value] : cases) {
    const auto parsed = parseScenario("set key " + std::string(text) + " # comment\r");
    ASSERT_TRUE(std::holds_alternative<Scenario>(parsed)) << text;
    EXPECT_EQ(std::get<command::SetSetting>(std::get<Scenario>(parsed).at(0).command).value, value) << text;
  }
}

const std::filesystem::path tour = std::filesystem::path(HUSHPANE_SOURCE_DIR) / "resources/tour.scenario";

TEST(ScenarioParserTest, SurvivesRandomAndMutatedText) {
  std::mt19937 random(20260101);
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  const std::string seed = contentsOf(tour);
  ASSERT_FALSE(seed.empty());
  ASSERT_EQ(firstError(seed), "");
  std::size_t bad = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string text = round % 3 == 0 ? std::string(below(200), '\0') : seed;
    if (round % 3 == 0)
      for (char& byte : text) byte = static_cast<char>(below(256));
    for (std::size_t edits = 1 + below(8); edits > 0 && !text.empty(); --edits) {
      switch (below(3)) {
        case 0: text[below(text.size())] = static_cast<char>(below(256)); break;
        case 1: text.erase(below(text.size()), below(20)); break;
        default: text.insert(below(text.size()), text.substr(below(text.size()), below(30)));
      }
    }
    const auto message = firstError(text);
    bad += !message.empty();
    EXPECT_EQ(message.find('\n'), std::string::npos);
  }
  EXPECT_GT(bad, 1000u);
}

// Keeps one cover on every desktop that it is launched on, half black, and tells the number of its launches and the
// languages that it finds in settings.
struct SmallProgram {
  explicit SmallProgram(platform::Platform& platform)
      : cover(platform.windows().makeWindow({0, 0, 1440, 900}, {.isOpaque = false})) {
    auto& defaults = platform.userDefaults();
    defaults.set("launches", defaults.get<std::int64_t>("launches").value_or(0) + 1);
    std::string preferred;
    for (const auto& language : platform.locale().preferredLanguages()) preferred += language + ";";
    defaults.set("languages", preferred);
    cover->contentView().setLayerColor({0, 0, 0, 0.5});
    cover->orderFront();
    platform.application().setOpenUrlsHandler([this](const auto&) {
      cover->setAlpha(0);
      cover->animateAlpha(1, {1, platform::TimingFunction::linear});
    });
    request = platform.distributedNotificationCenter().addObserver("com.corvane.Hushpane.widgetModeChange",
                                                                   [this] { cover->orderOut(); });
  }
  std::unique_ptr<platform::Window> cover;
  platform::Token request;
};

class PlayScenarioTest : public testing::Test {
 protected:
  Storage folder;
  std::filesystem::path file = folder.folder() / "test.scenario";
  std::filesystem::path pictures = folder.folder() / "pictures";
  std::ostringstream out, err;

  int play(const std::string& text) {
    std::ofstream(file) << text;
    return playFile(file);
  }
  int playFile(const std::filesystem::path& scenario) {
    out.str("");
    err.str("");
    return playScenario(scenario, pictures, {[](platform::Platform& platform) { platform.instance<SmallProgram>(); }},
                        out, err);
  }
  std::string error() const {
    const std::string text = err.str();
    const auto prefix = file.string() + ":";
    return text.starts_with(prefix) ? text.substr(prefix.size()) : text;
  }
};

constexpr const char* twoWindows =
    "app Editor\n"
    "window code of Editor at 100 100 size 300 300 color ffffff\n"
    "window notes of Editor at 600 100 size 300 300 color 204060\n";

TEST_F(PlayScenarioTest, PlaysAWholeDay) {
  EXPECT_EQ(play(std::string(twoWindows) + "expect pixel 200 300 ffffff\n"
                                           "launch\n"
                                           "expect pixel 200 300 808080\n"
                                           "expect pixel 700 300 102030 within 1\n"
                                           "expect overlay 1 shown\n"
                                           "expect overlay 1 level 0\n"
                                           "shot covered\n"
                                           "open anything\n"
                                           "wait 0.5\n"
                                           "expect overlay 1 alpha 0.5 within 0.02\n"
                                           "widget focus\n"
                                           "expect overlay 1 hidden\n"
                                           "expect shared hushpane.userMode focus\n"
                                           "expect shared other absent\n"
                                           "quit\n"
                                           "expect pixel 200 300 ffffff\n"
                                           "launch\n"
                                           "expect setting launches 2\n"
                                           "expect setting languages en;\n"
                                           "quit\n"
                                           "languages de-AT zh-Hans\n"
                                           "launch\n"
                                           "expect setting languages de-AT;zh-Hans;\n"
                                           "quit\n"
                                           "languages none\n"
                                           "launch\n"
                                           "expect setting languages \"\"\n"
                                           "set launches absent\n"
                                           "expect setting launches absent\n"
                                           "window code close\n"
                                           "screen 2 at 1440 0 size 100 100 scale 2\n"
                                           "shot second 2\n"
                                           "shot both\n"),
            0)
      << err.str();
  EXPECT_EQ(err.str(), "");
  const auto listed = [&](const char* name) { return (pictures / name).string() + "\n"; };
  EXPECT_EQ(out.str(), listed("covered.png") + listed("second.png") + listed("both.png"));
  EXPECT_EQ(contentsOf(pictures / "both.png").substr(1, 3), "PNG");
}

TEST_F(PlayScenarioTest, PlaysTheTourToItsEndAndTakesEveryPicture) {
  const Environment own("HUSHPANE_RESOURCES", tour.parent_path().c_str());
  EXPECT_EQ(playScenario(tour, pictures, {HushpaneApp::launch}, out, err), 0);
  EXPECT_EQ(err.str(), "");
  const auto text = out.str();
  EXPECT_EQ(std::ranges::count(text, '\n'), 25);
}

TEST_F(PlayScenarioTest, EveryScreenShowsTheDesktopPictureInAspectFill) {
  const auto color = [](int, int y) { return y < 10 ? 0xff0000ff : y < 60 ? 0x0000ffff : 0x00ff00ff; };
  writePicture(folder.folder() / "square.png", "png", 90, 90, color);
  EXPECT_EQ(play("screen 2 at 1440 0 size 300 600\n"
                 "desktop-picture square.png\n"
                 "expect pixel 5 5 0000ff\n"
                 "expect pixel 5 895 00ff00\n"
                 "expect pixel 1445 5 ff0000\n"
                 "expect pixel 1445 595 00ff00\n"
                 "desktop-picture none\n"
                 "expect pixel 5 5 5d88a9 within 30"),
            0)
      << err.str();
}

TEST_F(PlayScenarioTest, ExpectationsFailWhereTheyDoNotHold) {
  const std::pair<const char*, const char*> cases[] = {
      {"expect pixel 200 300 808080", "5: pixel: expected 808080, found ffffff\n"},
      {"expect overlay 1 shown", "5: there is no overlay on screen 1\n"},
      {"launch\nexpect overlay 1 hidden", "6: overlay: expected hidden, found shown\n"},
      {"launch\nexpect overlay 1 level -1", "6: level: expected -1, found 0\n"},
      {"launch\nexpect overlay 1 alpha 0.5", "6: alpha: expected 0.5, found 1\n"},
      {"launch\nexpect overlay 1 below code",
       "6: order: expected the overlay below 'code', found it above, or the window not on screen\n"},
      {"set k {1=true}\nexpect setting k {1=false}", "6: setting k: expected {1=false}, found {1=true}\n"},
      {"expect shared k v", "5: shared k: expected \"v\", found nothing\n"},
  };
  for (const auto& [text, message] : cases) {
    EXPECT_EQ(play(std::string(twoWindows) + "wait 1\n" + text), 1) << text;
    EXPECT_EQ(error(), message);
  }
}

TEST_F(PlayScenarioTest, ABadLineIsNamedAndWhy) {
  const std::pair<const char*, const char*> cases[] = {
      {"activate Nobody", "1: there is no application or window 'Nobody'\n"},
      {"window a of Nobody at 0 0 size 9 9", "1: 'Nobody' is not running\n"},
      {"window a close", "1: there is no window 'a'\n"},
      {"window a at 0 0 size 9 9", "1: there is no window 'a'\n"},
      {"app A\napp A", "2: 'A' is running already\n"},
      {"app A quit", "1: 'A' is not running\n"},
      {"app A\nwindow w of A at 0 0 size 9 9\napp A quit\nwindow w close", "4: there is no window 'w'\n"},
      {"screen 4 remove", "1: there is no screen 4\n"},
      {"shot name 4", "1: there is no screen 4\n"},
      {"expect pixel 9999 0 000000", "1: there is no screen at that point\n"},
      {"wallpaper missing.png", "1: there is no file 'missing.png'\n"},
      {"desktop-picture test.scenario", "1: there is no picture 'test.scenario'\n"},
      {"quit", "1: the program is not running\n"},
      {"launch\nlaunch", "2: the program is running already\n"},
      {"shot first\nfly", "2: unknown command 'fly'\n"},
  };
  for (const auto& [text, message] : cases) {
    EXPECT_EQ(play(text), 2) << text;
    EXPECT_EQ(error(), message);
  }
  EXPECT_FALSE(std::filesystem::exists(pictures / "first.png")) << "lines are read before any is played";
}

TEST_F(PlayScenarioTest, FilesThatCannotBeReadOrWrittenAreTold) {
  EXPECT_EQ(playFile(folder.folder() / "missing.scenario"), 2);
  EXPECT_EQ(err.str(), (folder.folder() / "missing.scenario").string() + ": cannot be read\n");
  EXPECT_EQ(playFile(folder.folder()), 2) << "a folder";
  EXPECT_EQ(play("screen 1 remove\nshot nothing"), 1) << "no picture without a screen";
  std::filesystem::remove_all(pictures);
  std::ofstream(pictures) << "a file where the folder should be";
  EXPECT_EQ(play("shot name"), 1);
  EXPECT_EQ(error(), "1: cannot write " + (pictures / "name.png").string() + "\n");
}

}  // namespace
}  // namespace hushpane::sim
