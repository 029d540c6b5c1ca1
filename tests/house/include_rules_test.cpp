#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path sources = fs::path(HUSHPANE_SOURCE_DIR) / "src";

using Folders = std::set<std::string>;

const Folders subsystems{"state", "overlay", "input", "localization", "platform"};

// Which folders a folder's files may include besides its own.
const std::map<std::string, Folders> mayInclude{
    {"platform", {}},
    {"declarative", {"platform"}},
    {"state", subsystems},
    {"overlay", subsystems},
    {"input", subsystems},
    {"localization", subsystems},
    {"ui", {"state", "overlay", "input", "localization", "platform", "declarative"}},
    {"app", {"state", "overlay", "input", "localization", "platform", "declarative", "ui"}},
    {"desktops", {"platform", "declarative"}},
    {"widget", {"platform"}},
    {"update", {}},
};

// What reads the network has libraries of its own.
const std::set<std::string> usesLibraries{"desktops", "update"};

// All that the widget knows of the program's own subsystems, and what these files need.
const std::set<std::string> contract{"state/widget_bridge.h", "state/veil_mode.h", "state/stored_keys.h"};
const std::set<std::string> contractNeeds{"state/raw_text.h"};

std::string topFolder(const fs::path& path) {
  return path.begin()->string();
}

struct Include {
  std::string name;
  bool isOutside = false;  // in angle brackets
};

std::optional<Include> includeIn(const std::string& line) {
  constexpr std::string_view directive = "#include ";
  if (!line.starts_with(directive) || line.size() < directive.size() + 2) return std::nullopt;
  const bool isOutside = line[directive.size()] == '<';
  const auto first = directive.size() + 1;
  return Include{line.substr(first, line.find(isOutside ? '>' : '"', first) - first), isOutside};
}

// The widget is a program of its own: it shares the desktop's libraries, but no display.
bool isAllowedInWidget(const std::string& name) {
  return contract.contains(name) || name.starts_with("desktops/shared/") || name.starts_with("desktops/session/");
}

bool isAllowed(const Include& include, const fs::path& file) {
  const std::string folder = topFolder(file);
  // Outside libraries are told from the standard one by the dot or the slash in their names.
  if (include.isOutside) return usesLibraries.contains(folder) || include.name.find_first_of("./") == std::string::npos;
  const std::string target = topFolder(include.name);
  const bool picksTheDesktop = file == fs::path("app/main.cpp") && target == "desktops";
  return target == folder || mayInclude.at(folder).contains(target) || picksTheDesktop ||
         (folder == "widget" && isAllowedInWidget(include.name)) ||
         (folder == "update" && include.name.starts_with("desktops/shared/"));
}

std::vector<Include> includesOf(const fs::path& relative) {
  std::vector<Include> found;
  std::ifstream file(sources / relative);
  for (std::string line; std::getline(file, line);)
    if (const auto include = includeIn(line)) found.push_back(*include);
  return found;
}

std::set<std::string> forbiddenIncludes(const fs::path& relative) {
  std::set<std::string> found;
  for (const auto& include : includesOf(relative))
    if (!isAllowed(include, relative)) found.insert(include.name);
  return found;
}

TEST(HouseTest, EveryFolderIncludesOnlyWhatItMay) {
  std::size_t checked = 0;
  for (const auto& entry : fs::recursive_directory_iterator(sources)) {
    const auto extension = entry.path().extension();
    if (extension != ".h" && extension != ".cpp") continue;
    const auto relative = fs::relative(entry.path(), sources);
    ASSERT_TRUE(mayInclude.contains(topFolder(relative))) << relative << " lies in no room of the house";
    EXPECT_EQ(forbiddenIncludes(relative), std::set<std::string>{}) << relative;
    ++checked;
  }
  EXPECT_GT(checked, 50u);
}

TEST(HouseTest, TheContractWithTheWidgetNeedsNothingElseOfTheProgram) {
  auto files = contract;
  files.insert(contractNeeds.begin(), contractNeeds.end());
  const auto headers = files;
  files.insert("state/widget_bridge.cpp");
  for (const auto& file : files) {
    ASSERT_TRUE(fs::exists(sources / file)) << file;
    for (const auto& include : includesOf(file))
      EXPECT_TRUE(include.isOutside || topFolder(include.name) == "platform" || headers.contains(include.name))
          << file << " includes " << include.name;
  }
}

TEST(HouseTest, TheDesktopsKnowNothingOfEachOther) {
  for (const auto& [folder, other] : {std::pair{"sim", "desktops/x11"},
                                      {"sim", "desktops/session"},
                                      {"x11", "desktops/sim"},
                                      {"session", "desktops/sim"},
                                      {"session", "desktops/x11"}})
    for (const auto& entry : fs::directory_iterator(sources / "desktops" / folder)) {
      std::ifstream file(entry.path());
      const std::string text{std::istreambuf_iterator<char>(file), {}};
      EXPECT_EQ(text.find(std::string("\"") + other), std::string::npos) << entry.path();
    }
}

}  // namespace
