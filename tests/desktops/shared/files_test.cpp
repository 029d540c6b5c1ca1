#include "desktops/shared/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;

TEST(Files, AReplacedFileKeepsItsPermissionsAndItsLinksAndLeavesNothingBehind) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "real");
  writeFile(folder / "real/file", "old");
  fs::permissions(folder / "real/file", fs::perms(0640));
  fs::create_symlink("real/file", folder / "link");
  fs::create_symlink(folder / "link", folder / "second");
  const auto stamp = replaceFile(folder / "second", "new");
  EXPECT_EQ(stamp, stampOf(folder / "real/file"));
  EXPECT_EQ(contentsOf(folder / "real/file"), "new");
  EXPECT_EQ(fs::status(folder / "real/file").permissions(), fs::perms(0640));
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(folder.names(), (std::set<std::string>{"link", "real", "second"}));

  fs::create_symlink("real/later", folder / "dangling");
  EXPECT_TRUE(replaceFile(folder / "dangling", "made"));
  EXPECT_EQ(contentsOf(folder / "real/later"), "made");
  EXPECT_EQ(fs::status(folder / "real/later").permissions(), fs::perms(0600)) << "a new file is private";
}

TEST(Files, WhatCannotBeReplacedStaysAndNothingIsLeftBehind) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "folder");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  fs::create_symlink("loop", folder / "loop");
  writeFile(folder / "file", "old");
  const auto before = folder.names();
  for (const auto* name : {"folder", "pipe", "loop", "file/below", "missing/below", ""})
    EXPECT_FALSE(replaceFile(folder / name, "new")) << name;
  EXPECT_FALSE(replaceFile({}, "new"));
  EXPECT_EQ(folder.names(), before);
  EXPECT_EQ(contentsOf(folder / "file"), "old");
}

TEST(Files, OnlyRegularFilesOfBoundedSizeAreReadAndNothingIsWaitedFor) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  writeFile(folder / "file", "12345");
  fs::create_symlink("file", folder / "link");
  for (const auto& path : {folder / "pipe", folder.path(), folder / "missing", fs::path("/dev/zero"), fs::path()})
    EXPECT_FALSE(readFile(path, 5)) << path;
  EXPECT_EQ(readFile(folder / "link", 5)->bytes, "12345");
  EXPECT_FALSE(readFile(folder / "file", 4));
}

TEST(Files, AStampTellsReplacedAndRewrittenFilesFromTheOldOne) {
  const TemporaryFolder folder;
  writeFile(folder / "file", "first");
  const auto first = stampOf(folder / "file");
  ASSERT_TRUE(first);
  EXPECT_EQ(stampOf(folder / "file"), first);
  fs::last_write_time(folder / "file", fs::last_write_time(folder / "file") + std::chrono::milliseconds(1));
  EXPECT_NE(stampOf(folder / "file"), first);
  const auto second = stampOf(folder / "file");
  ASSERT_TRUE(replaceFile(folder / "file", "other"));
  EXPECT_NE(stampOf(folder / "file"), second);
}

}  // namespace
}  // namespace hushpane::desktops::tests
