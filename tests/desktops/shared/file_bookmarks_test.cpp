#include "desktops/shared/file_bookmarks.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;

std::string found(const platform::Data& bookmark) {
  const auto resolved = FileBookmarks().resolve(bookmark);
  return resolved ? resolved->path.filename().string() + (resolved->isStale ? ", stale" : "") : "nothing";
}

TEST(FileBookmarks, FindAFileByWhatItIsBeforeWhereItWas) {
  const TemporaryFolder folder;
  const FileBookmarks bookmarks;
  writeFile(folder / "picture", "a");
  writeFile(folder / "bystander", "b");
  const auto bookmark = bookmarks.create(folder / "picture");
  ASSERT_TRUE(bookmark);
  EXPECT_EQ(found(*bookmark), "picture");
  writeFile(folder / "picture", "changed");
  EXPECT_EQ(found(*bookmark), "picture") << "it is the same file";
  fs::rename(folder / "picture", folder / "renamed");
  EXPECT_EQ(found(*bookmark), "renamed, stale");
  writeFile(folder / "picture", "another one");
  EXPECT_EQ(found(*bookmark), "renamed, stale");
  fs::remove(folder / "renamed");
  EXPECT_EQ(found(*bookmark), "picture, stale") << "saved by replacing";
  fs::remove(folder / "picture");
  EXPECT_EQ(found(*bookmark), "nothing");
  for (int file = 0; file < 20; ++file) writeFile(folder / std::to_string(file), "may inherit the inode");
  EXPECT_EQ(found(*bookmark), "nothing");
}

TEST(FileBookmarks, MayBePathsThatPeopleWrote) {
  const TemporaryFolder folder;
  writeFile(folder / "a b.png", "");
  const auto written = [](const std::string& text) { return found(platform::Data(text.begin(), text.end())); };
  const std::string path = (folder / "a b.png").string();
  EXPECT_EQ(written(path), "a b.png, stale");
  EXPECT_EQ(written(path + "\n"), "a b.png, stale");
  for (const std::string& other : {path + "x", path.substr(1), path + '\0', folder.path().string(), std::string("/")})
    EXPECT_EQ(written(other), "nothing") << other;
}

TEST(FileBookmarks, AreMadeOfRegularFilesOnly) {
  const TemporaryFolder folder;
  const FileBookmarks bookmarks;
  EXPECT_FALSE(bookmarks.create(folder.path()));
  EXPECT_FALSE(bookmarks.create(folder / "missing"));
  EXPECT_FALSE(bookmarks.create({}));
  writeFile(folder / "file", "");
  const auto bookmark = bookmarks.create(folder / "file");
  fs::remove(folder / "file");
  fs::create_directory(folder / "file");
  EXPECT_EQ(found(*bookmark), "nothing");
}

TEST(FileBookmarks, ForeignAndDamagedBytesLeadNowhere) {
  const TemporaryFolder folder;
  const FileBookmarks bookmarks;
  writeFile(folder / "file", "");
  const auto bookmark = *bookmarks.create(folder / "file");
  const auto pathSize = folder.path().string().size() + sizeof "/file" - 1;
  for (std::size_t size = 0; size <= bookmark.size() - pathSize; ++size)
    EXPECT_FALSE(bookmarks.resolve({bookmark.begin(), bookmark.begin() + static_cast<std::ptrdiff_t>(size)})) << size;
  for (std::size_t at = 0; at < 5; ++at) {
    auto changed = bookmark;
    changed[at] ^= 1;
    EXPECT_FALSE(bookmarks.resolve(changed)) << at;
  }
  auto relative = bookmark;
  relative.erase(relative.end() - static_cast<std::ptrdiff_t>(pathSize), relative.end() - 4);
  const auto before = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_FALSE(bookmarks.resolve(relative)) << "depends on where the program happens to run";
  fs::current_path(before);
}

}  // namespace
}  // namespace hushpane::desktops::tests
