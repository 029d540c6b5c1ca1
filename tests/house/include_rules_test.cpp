#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

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
};

std::string topFolder(const fs::path& path) {
  return path.begin()->string();
}

// The includes of a file that break the rules.
std::set<std::string> forbiddenIncludes(const fs::path& relative) {
  std::set<std::string> found;
  const std::string folder = topFolder(relative);
  const auto& allowed = mayInclude.at(folder);
  const bool picksTheDesktop = relative == fs::path("app/main.cpp");
  const std::regex include(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
  std::ifstream file(sources / relative);
  std::smatch match;
  for (std::string line; std::getline(file, line);) {
    if (!std::regex_search(line, match, include)) continue;
    const std::string name = match[2];
    const bool isOutside = match[1] == "<" && name.find_first_of("./") != std::string::npos;
    if (isOutside && folder != "desktops") found.insert(name);
    if (match[1] == "<") continue;
    const std::string target = topFolder(name);
    const bool isAllowed = target == folder || allowed.contains(target) || (picksTheDesktop && target == "desktops");
    if (!isAllowed) found.insert(name);
  }
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

TEST(HouseTest, TheTwoDesktopsDoNotKnowEachOther) {
  for (const auto& [folder, other] : {std::pair{"sim", "desktops/x11"}, {"x11", "desktops/sim"}})
    for (const auto& entry : fs::directory_iterator(sources / "desktops" / folder)) {
      std::ifstream file(entry.path());
      const std::string text{std::istreambuf_iterator<char>(file), {}};
      EXPECT_EQ(text.find(std::string("\"") + other), std::string::npos) << entry.path();
    }
}

}  // namespace
