#include <array>
#include <utility>

#include "desktops/sim/scenario.h"
#include "desktops/sim/scenario_reader.h"

namespace hushpane::sim {

namespace {

using namespace command;

constexpr double longestWait = 3600;     // seconds; some ten ticks a second at most
constexpr double largestPicture = 40e6;  // pixels of one screen
constexpr int highestLayer = 1000;
constexpr int highestSpace = 100;
constexpr int highestKeyCode = 127;
constexpr int mostHotKeys = 100;
constexpr int mostPanels = 10;
constexpr double longestMovement = 10'000;  // points

template <class Type>
using Names = std::initializer_list<std::pair<std::string_view, Type>>;

// What the next word stands for, among those of a table.
template <class Type>
Type choice(ScenarioReader& reader, std::string_view what, const Names<Type>& names) {
  const auto text = reader.word(what);
  for (const auto& [name, value] : names)
    if (name == text) return value;
  throw BadScenarioLine{"'" + text + "' is no " + std::string(what)};
}

Command readScreen(ScenarioReader& reader) {
  platform::Screen screen;
  screen.displayId = reader.displayId();
  if (reader.accept("remove")) return RemoveScreen{*screen.displayId};
  screen.frame = reader.frame();
  screen.localizedName = "Display " + std::to_string(*screen.displayId);
  while (!reader.atEnd()) {
    if (reader.accept("scale")) {
      screen.scale = reader.number("scale", 0.5, 4);
    } else {
      reader.expect("name");
      screen.localizedName = reader.word("a name");
    }
  }
  if (screen.frame.area() * screen.scale * screen.scale > largestPicture)
    throw BadScenarioLine{"the screen has too many pixels"};
  return SetScreen{std::move(screen)};
}

Command readApp(ScenarioReader& reader) {
  const auto app = reader.word("a name");
  if (reader.accept("quit")) return QuitApp{app};
  return StartApp{app};
}

AppContents readContents(ScenarioReader& reader) {
  return choice<AppContents>(reader, "kind of contents",
                             {{"plain", AppContents::plain},
                              {"text", AppContents::text},
                              {"code", AppContents::code},
                              {"terminal", AppContents::terminal},
                              {"page", AppContents::page},
                              {"bar", AppContents::bar}});
}

void readWindowOption(ScenarioReader& reader, AppWindow& window) {
  if (reader.accept("title")) {
    window.title = reader.word("a title");
  } else if (reader.accept("color")) {
    window.color = reader.color();
  } else if (reader.accept("contents")) {
    window.contents = readContents(reader);
  } else if (reader.accept("layer")) {
    window.layer = reader.integer("layer", -highestLayer, highestLayer);
  } else if (reader.accept("alpha")) {
    window.alpha = reader.number("alpha", 0, 1);
  } else if (reader.accept("space")) {
    window.space = reader.integer("space", 0, highestSpace);
  } else {
    reader.expectEnd();
  }
}

Command readWindow(ScenarioReader& reader) {
  const auto name = reader.word("a name");
  if (reader.accept("close")) return CloseWindow{name};
  if (!reader.accept("of")) return MoveWindow{name, reader.frame()};
  OpenWindow open{name, reader.word("an application"), {}};
  open.description.title = name;
  open.description.frame = reader.frame();
  while (!reader.atEnd()) readWindowOption(reader, open.description);
  return open;
}

Command readActivate(ScenarioReader& reader) {
  if (reader.accept("self")) return ActivateSelf{};
  if (reader.accept("none")) return ActivateNone{};
  return Activate{reader.word("an application or a window")};
}

platform::ModifierFlags readModifier(ScenarioReader& reader) {
  namespace modifier = platform::modifier;
  return choice<platform::ModifierFlags>(reader, "modifier key",
                                         {{"option", modifier::option},
                                          {"shift", modifier::shift},
                                          {"control", modifier::control},
                                          {"command", modifier::command},
                                          {"capsLock", modifier::capsLock},
                                          {"function", modifier::function}});
}

Combination readCombination(ScenarioReader& reader) {
  Combination combination{static_cast<std::uint16_t>(reader.integer("key code", 0, highestKeyCode)), {}};
  if (reader.atEnd()) return combination;
  reader.expect("with");
  do combination.modifiers.push_back(readModifier(reader));
  while (!reader.atEnd());
  return combination;
}

Command readKey(ScenarioReader& reader) {
  if (reader.accept("press")) return PressModifier{readModifier(reader)};
  if (reader.accept("release")) return ReleaseModifier{readModifier(reader)};
  if (reader.accept("take")) return TakeHotKey{readCombination(reader)};
  if (reader.accept("give-back")) return GiveBackHotKey{readCombination(reader)};
  reader.expect("type");
  return TypeKey{readCombination(reader)};
}

Command readPointer(ScenarioReader& reader) {
  if (reader.accept("shake")) return ShakePointer{};
  if (reader.accept("at")) {
    if (reader.accept("text")) return PointAtText{reader.word("a text")};
    return PointAt{reader.point()};
  }
  if (reader.accept("wheel")) return TurnWheel{reader.number("distance", -longestMovement, longestMovement)};
  reader.expect("move");
  return MovePointer{reader.number("distance", -longestMovement, longestMovement)};
}

Command readClick(ScenarioReader& reader) {
  if (reader.accept("icon")) return ClickIcon{};
  if (reader.accept("text")) return ClickText{reader.word("a text")};
  return Click{reader.point()};
}

Command readStatusBar(ScenarioReader& reader) {
  using Bar = SimStatusItem::Bar;
  return SetStatusBar{choice<Bar>(reader, "place", {{"top", Bar::top}, {"bottom", Bar::bottom}, {"none", Bar::none}})};
}

Command readAppearance(ScenarioReader& reader) {
  return SetAppearance{choice<bool>(reader, "appearance", {{"light", false}, {"dark", true}})};
}

Command readLaunch(ScenarioReader& reader) {
  if (reader.accept("again")) return StartAgain{};
  return Launch{};
}

Command readChoose(ScenarioReader& reader) {
  if (reader.accept("none")) return ChooseFile{};
  return ChooseFile{reader.word("a file")};
}

Command readOpen(ScenarioReader& reader) {
  OpenUrls open{{reader.word("a URL")}};
  while (!reader.atEnd()) open.urls.push_back(reader.word("a URL"));
  return open;
}

Command readSet(ScenarioReader& reader) {
  const auto key = reader.word("a key");
  if (reader.accept("absent")) return RemoveSetting{key};
  return SetSetting{key, reader.value()};
}

Command readWallpaper(ScenarioReader& reader) {
  if (reader.accept("none")) return PickWallpaper{};
  return PickWallpaper{reader.word("a file")};
}

Command readDesktopPicture(ScenarioReader& reader) {
  if (reader.accept("none")) return SetDesktopPicture{};
  return SetDesktopPicture{reader.word("a file")};
}

bool isLanguageTag(std::string_view text) {
  constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-";
  constexpr std::size_t longest = 35;  // BCP 47, section 4.4.1
  return !text.empty() && text.size() <= longest && text.front() != '-' &&
         text.find_first_not_of(allowed) == std::string_view::npos;
}

Command readLanguages(ScenarioReader& reader) {
  if (reader.accept("none")) return SetLanguages{};
  SetLanguages languages;
  do {
    languages.tags.push_back(reader.word("a language"));
    if (!isLanguageTag(languages.tags.back()))
      throw BadScenarioLine{"'" + languages.tags.back() + "' is no language tag"};
  } while (!reader.atEnd());
  return languages;
}

bool isFileName(std::string_view text) {
  constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.";
  constexpr std::size_t longest = 100;
  return !text.empty() && text.size() <= longest && text.front() != '.' &&
         text.find_first_not_of(allowed) == std::string_view::npos;
}

std::string readPictureName(ScenarioReader& reader) {
  auto name = reader.word("a name");
  if (!isFileName(name)) throw BadScenarioLine{"'" + name + "' is no name for a picture"};
  return name;
}

Command readShot(ScenarioReader& reader) {
  Shot shot{readPictureName(reader), {}};
  if (!reader.atEnd()) shot.screen = reader.displayId();
  return shot;
}

Command readSheet(ScenarioReader& reader) {
  Sheet sheet;
  sheet.request.name = reader.word("a sheet");
  sheet.name = readPictureName(reader);
  while (!reader.atEnd()) {
    if (reader.accept("dark")) {
      sheet.request.isDark = true;
    } else if (reader.accept("language")) {
      sheet.request.language = reader.word("a language");
    } else {
      reader.expect("scale");
      sheet.scale = reader.number("scale", 0.5, 4);
    }
  }
  return sheet;
}

Command readExpectOverlay(ScenarioReader& reader) {
  const auto screen = reader.displayId();
  if (reader.accept("shown")) return ExpectShown{screen, true};
  if (reader.accept("hidden")) return ExpectShown{screen, false};
  if (reader.accept("level")) return ExpectLevel{screen, reader.integer("level", -highestLayer, highestLayer)};
  if (reader.accept("below")) return ExpectBelow{screen, reader.word("a window")};
  reader.expect("alpha");
  ExpectAlpha alpha{screen, reader.number("alpha", 0, 1), 0.001};
  if (reader.accept("within")) alpha.tolerance = reader.number("tolerance", 0, 1);
  return alpha;
}

Command readExpect(ScenarioReader& reader) {
  if (reader.accept("overlay")) return readExpectOverlay(reader);
  if (reader.accept("hot-keys")) return ExpectHotKeys{reader.integer("number", 0, mostHotKeys)};
  if (reader.accept("setting")) {
    const auto key = reader.word("a key");
    return ExpectSetting{key, reader.valueOrAbsent()};
  }
  if (reader.accept("shared")) {
    const auto key = reader.word("a key");
    return ExpectShared{key, reader.valueOrAbsent()};
  }
  if (reader.accept("panels")) return ExpectPanels{reader.integer("number", 0, mostPanels)};
  if (reader.accept("text")) {
    const auto text = reader.word("a text");
    return ExpectText{text, !reader.accept("absent")};
  }
  reader.expect("pixel");
  const auto point = reader.point();
  ExpectPixel pixel{point, reader.color(), 2};
  if (reader.accept("within")) pixel.tolerance = reader.integer("tolerance", 0, 255);
  return pixel;
}

using Read = Command (*)(ScenarioReader&);

constexpr std::array<std::pair<std::string_view, Read>, 24> commands{{
    {"screen", readScreen},
    {"app", readApp},
    {"window", readWindow},
    {"activate", readActivate},
    {"key", readKey},
    {"pointer", readPointer},
    {"click", readClick},
    {"status-bar", readStatusBar},
    {"appearance", readAppearance},
    {"choose", readChoose},
    {"open", readOpen},
    {"set", readSet},
    {"wait", [](ScenarioReader& reader) -> Command { return Wait{reader.number("seconds", 0, longestWait)}; }},
    {"launch", readLaunch},
    {"quit", [](ScenarioReader&) -> Command { return Quit{}; }},
    {"wake", [](ScenarioReader&) -> Command { return Wake{}; }},
    {"space", [](ScenarioReader& reader) -> Command { return SwitchSpace{reader.integer("space", 0, highestSpace)}; }},
    {"desktop-picture", readDesktopPicture},
    {"wallpaper", readWallpaper},
    {"languages", readLanguages},
    {"widget", [](ScenarioReader& reader) -> Command { return AskByWidget{reader.word("a mode")}; }},
    {"shot", readShot},
    {"sheet", readSheet},
    {"expect", readExpect},
}};

Command readCommand(ScenarioReader& reader) {
  const auto name = reader.word("a command");
  for (const auto& [known, read] : commands) {
    if (known != name) continue;
    auto command = read(reader);
    reader.expectEnd();
    return command;
  }
  throw BadScenarioLine{"unknown command '" + name + "'"};
}

}  // namespace

std::variant<Scenario, ScenarioError> parseScenario(std::string_view text) {
  Scenario scenario;
  for (int number = 1; !text.empty(); ++number) {
    const auto end = text.find('\n');
    try {
      ScenarioReader reader(text.substr(0, end));
      if (!reader.atEnd()) scenario.push_back({number, readCommand(reader)});
    } catch (const BadScenarioLine& bad) {
      return ScenarioError{number, bad.message};
    }
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
  return scenario;
}

}  // namespace hushpane::sim
