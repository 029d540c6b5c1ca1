#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
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
    {"desktops/shared", {"platform", "declarative"}},
    {"desktops/session", {"platform", "declarative", "desktops/shared"}},
    {"desktops/sim", {"platform", "declarative", "desktops/shared"}},
    {"desktops/x11", {"platform", "declarative", "desktops/shared", "desktops/session"}},
    // The widget is a program of its own: it shares the desktop's libraries, but no display.
    {"widget", {"platform", "desktops/shared", "desktops/session"}},
    {"update", {"desktops/shared"}},
};

// All that the widget knows of the program's own subsystems, and what these files need.
const std::set<std::string> contract{"state/widget_bridge.h", "state/veil_mode.h", "state/stored_keys.h"};
const std::set<std::string> contractNeeds{"state/raw_text.h"};

// The desktops are told apart.
std::string folderOf(const fs::path& path) {
  const auto top = path.begin()->string();
  return top == "desktops" ? top + "/" + std::next(path.begin())->string() : top;
}

struct Include {
  std::string name;
  bool isOutside = false;  // in angle brackets
};

std::vector<Include> includesOf(const fs::path& relative) {
  constexpr std::string_view directive = "#include ";
  std::vector<Include> found;
  std::ifstream file(sources / relative);
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(directive)) continue;
    const auto name = line.substr(directive.size() + 1);
    found.push_back({name.substr(0, name.find_first_of(">\"")), line[directive.size()] == '<'});
  }
  return found;
}

bool isAllowed(const Include& include, const fs::path& file) {
  const std::string folder = folderOf(file);
  // What reads the network has libraries of its own. They are told from the standard one by the dot or the slash in
  // their names.
  if (include.isOutside)
    return folder.starts_with("desktops/") || folder == "update" ||
           include.name.find_first_of("./") == std::string::npos;
  const std::string target = folderOf(include.name);
  const bool picksTheDesktop = file == fs::path("app/main.cpp") && target.starts_with("desktops/");
  return target == folder || mayInclude.at(folder).contains(target) || picksTheDesktop ||
         (folder == "widget" && contract.contains(include.name));
}

TEST(HouseTest, EveryFolderIncludesOnlyWhatItMay) {
  std::size_t checked = 0;
  for (const auto& entry : fs::recursive_directory_iterator(sources)) {
    const auto extension = entry.path().extension();
    if (extension != ".h" && extension != ".cpp") continue;
    const auto relative = fs::relative(entry.path(), sources);
    ASSERT_TRUE(mayInclude.contains(folderOf(relative))) << relative << " lies in no room of the house";
    for (const auto& include : includesOf(relative))
      EXPECT_TRUE(isAllowed(include, relative)) << relative << " includes " << include.name;
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
      EXPECT_TRUE(include.isOutside || folderOf(include.name) == "platform" || headers.contains(include.name))
          << file << " includes " << include.name;
  }
}

}  // namespace
