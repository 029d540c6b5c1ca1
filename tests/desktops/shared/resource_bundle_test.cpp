#include "desktops/shared/resource_bundle.h"

#include <gtest/gtest.h>

#include "support/environment.h"
#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

TEST(ResourceBundle, FindsThePicturesOfItsFolderAndNoOthers) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "inside/folder.png");
  for (const char* name : {"outside.png", "inside/both.png", "inside/both.svg", "inside/drawn.svg", "inside/text.txt"})
    writeFile(folder / name, "anything");
  const ResourceBundle bundle(folder / "inside");
  EXPECT_EQ(bundle.imageURL("both"), folder / "inside/both.png");
  EXPECT_EQ(bundle.imageURL("drawn"), folder / "inside/drawn.svg");
  for (const auto* name : {"../outside", "", "missing", "text", "folder", "/etc/passwd"})
    EXPECT_EQ(bundle.imageURL(name), std::nullopt) << name;
}

TEST(ResourceBundle, FindsTheTextsOfItsFolderAndNoOthers) {
  const TemporaryFolder folder;
  for (const char* name : {"outside.lproj", "inside/de.lproj", "inside/it.lproj", "inside/zh-Hans.lproj",
                           "inside/xx.lproj/Localizable.strings"})
    fs::create_directories(folder / name);
  const std::string noTexts = "a = (b); c = {d = e;}; f = <00>; g = \"\\0\"; \"h\\0\" = i;";
  for (const char* name : {"outside.lproj", "inside/de.lproj"})
    writeFile(folder / name / "Localizable.strings", "\"Off\" = \"Aus\";" + noTexts);
  writeFile(folder / "inside/it.lproj/Localizable.strings", "\"Off\" = \"No\"; \"On\"");
  writeFile(folder / "inside/ja.lproj", "no folder");
  const ResourceBundle bundle(folder / "inside");
  ASSERT_TRUE(bundle.localizedStrings("de"));
  EXPECT_EQ(*bundle.localizedStrings("de"), (platform::LocalizedStrings{{"Off", "Aus"}}));
  for (const auto* code : {"it", "zh-Hans", "xx"}) {
    ASSERT_TRUE(bundle.localizedStrings(code)) << code;
    EXPECT_TRUE(bundle.localizedStrings(code)->empty()) << code;
  }
  for (const auto& code : {"../outside"s, ""s, "fr"s, "ja"s, "DE"s, "de\0"s, std::string(10'000, 'd')})
    EXPECT_FALSE(bundle.localizedStrings(code)) << code;
}

TEST(ResourceFolder, IsNamedOrBesideTheBinaryOrBelowItsPrefix) {
  const TemporaryFolder folder;
  const auto found = [&](const char* named) {
    const Environment environment("HUSHPANE_RESOURCES", named);
    return resourceFolder(folder / "bin/hushpane");
  };
  EXPECT_EQ(found(nullptr), folder / "share/hushpane");
  fs::create_directories(folder / "bin/resources");
  EXPECT_EQ(found(nullptr), folder / "bin/resources");
  EXPECT_EQ(found(""), folder / "bin/resources");
  EXPECT_EQ(found("/named"), "/named");
}

}  // namespace
}  // namespace hushpane::desktops::tests
