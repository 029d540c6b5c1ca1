#include "desktops/shared/group_container.h"

#include <gtest/gtest.h>

#include "desktops/shared/xdg_directories.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;

TEST(GroupContainer, MakesAPrivateFolderWhereThereCanBeOne) {
  const TemporaryFolder folder;
  GroupContainer container(folder / "data/home");
  const auto url = container.url("group.com.corvane.Hushpane");
  ASSERT_EQ(url, folder / "data/home/group.com.corvane.Hushpane");
  EXPECT_EQ(fs::status(*url).permissions(), fs::perms(0700));
  EXPECT_EQ(fs::status(folder / "data").permissions(), fs::perms(0700));
  EXPECT_EQ(container.url("group.com.corvane.Hushpane"), url);
  for (const auto* name : {"", "..", "a/b"}) EXPECT_EQ(container.url(name), std::nullopt) << name;

  writeFile(folder / "file", "");
  EXPECT_EQ(GroupContainer(folder / "file").url("group"), std::nullopt);
  EXPECT_EQ(GroupContainer(folder.path()).url("file"), std::nullopt);
  EXPECT_EQ(GroupContainer(std::nullopt).url("group"), std::nullopt);

  GroupContainer reader(folder.path(), GroupContainer::Missing::leave);
  EXPECT_EQ(reader.url("group"), std::nullopt);
  EXPECT_FALSE(fs::exists(folder / "group")) << "no trace is left when asked to";
  EXPECT_EQ(GroupContainer(folder.path()).url("group"), folder / "group");
  EXPECT_EQ(reader.url("group"), folder / "group");
}

TEST(XdgDirectories, AreTheVariablesWhenAbsoluteElseInTheHomeFolder) {
  const Environment home("HOME", "/home/someone");
  for (const char* ignored : {static_cast<const char*>(nullptr), "", "relative/path"}) {
    const Environment config("XDG_CONFIG_HOME", ignored);
    const Environment data("XDG_DATA_HOME", ignored);
    EXPECT_EQ(configHome(), "/home/someone/.config");
    EXPECT_EQ(dataHome(), "/home/someone/.local/share");
  }
  const Environment config("XDG_CONFIG_HOME", "/elsewhere");
  const Environment data("XDG_DATA_HOME", "/data");
  EXPECT_EQ(configHome(), "/elsewhere");
  EXPECT_EQ(dataHome(), "/data");
}

}  // namespace
}  // namespace hushpane::desktops::tests
