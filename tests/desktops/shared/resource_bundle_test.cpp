#include "desktops/shared/resource_bundle.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

TEST(ResourceBundle, FindsThePicturesOfItsFolderAndNoOthers) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "inside/folder.png");
  for (const char* name : {"outside.png", "inside/both.png", "inside/both.svg", "inside/drawn.svg", "inside/text.txt"})
    std::ofstream(folder / name) << "anything";
  const ResourceBundle bundle(folder / "inside");
  EXPECT_EQ(bundle.imageURL("both"), folder / "inside/both.png");
  EXPECT_EQ(bundle.imageURL("drawn"), folder / "inside/drawn.svg");
  for (const auto* name : {"../outside", "", "missing", "text", "folder", "/etc/passwd"})
    EXPECT_EQ(bundle.imageURL(name), std::nullopt) << name;
}

TEST(ResourceBundle, FindsTheTextsOfItsFolderAndNoOthers) {
  const TemporaryFolder folder;
  for (const char* name :
       {"outside.lproj", "inside/de.lproj", "inside/zh-Hans.lproj", "inside/xx.lproj/Localizable.strings"})
    fs::create_directories(folder / name);
  for (const char* name : {"outside.lproj", "inside/de.lproj"})
    writeFile(folder / name / "Localizable.strings", "\"Off\" = \"Aus\";");
  writeFile(folder / "inside/ja.lproj", "no folder");
  const ResourceBundle bundle(folder / "inside");
  ASSERT_TRUE(bundle.localizedStrings("de"));
  EXPECT_EQ(*bundle.localizedStrings("de"), (platform::LocalizedStrings{{"Off", "Aus"}}));
  for (const auto* code : {"zh-Hans", "xx"}) {
    ASSERT_TRUE(bundle.localizedStrings(code)) << code;
    EXPECT_TRUE(bundle.localizedStrings(code)->empty()) << code;
  }
  for (const auto& code : {"../outside"s, ""s, "fr"s, "ja"s, "DE"s, "de\0"s, std::string(10'000, 'd')})
    EXPECT_FALSE(bundle.localizedStrings(code)) << code;
}

TEST(ResourceFolder, IsNamedOrBesideTheBinaryOrBelowItsPrefix) {
  const TemporaryFolder folder;
  unsetenv("HUSHPANE_RESOURCES");
  EXPECT_EQ(resourceFolder(folder / "bin/hushpane"), folder / "share/hushpane");
  fs::create_directories(folder / "bin/resources");
  EXPECT_EQ(resourceFolder(folder / "bin/hushpane"), folder / "bin/resources");
  setenv("HUSHPANE_RESOURCES", "", 1);
  EXPECT_EQ(resourceFolder(folder / "bin/hushpane"), folder / "bin/resources");
  setenv("HUSHPANE_RESOURCES", "/named", 1);
  EXPECT_EQ(resourceFolder(folder / "bin/hushpane"), "/named");
  unsetenv("HUSHPANE_RESOURCES");
}

}  // namespace
}  // namespace hushpane::desktops::tests
