#include "desktops/shared/resource_bundle.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;

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
