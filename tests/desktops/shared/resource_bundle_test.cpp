#include "desktops/shared/resource_bundle.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "desktops/shared/image_file.h"
#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;

void writePng(const fs::path& file, int width, int height, guint32 rgba) {
  auto* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, true, 8, width, height);
  gdk_pixbuf_fill(pixbuf, rgba);
  ASSERT_TRUE(gdk_pixbuf_save(pixbuf, file.c_str(), "png", nullptr, nullptr));
  g_object_unref(pixbuf);
}

TEST(ResourceBundle, GivesPremultipliedPicturesAndKeepsThemOnlyWhileTheyAreHeld) {
  const TemporaryFolder folder;
  writePng(folder / "half.png", 3, 2, 0xFF804080);
  ResourceBundle bundle(folder.path());
  auto image = bundle.image("half");
  ASSERT_TRUE(image);
  EXPECT_EQ(image->width, 3);
  EXPECT_EQ(image->height, 2);
  EXPECT_EQ(image->pixels, std::vector<std::uint32_t>(6, 0x80804020));
  EXPECT_EQ(bundle.image("half"), image);
  image.reset();
  writePng(folder / "half.png", 1, 1, 0xFFFFFFFF);
  EXPECT_EQ(bundle.image("half")->width, 1) << "read again, for nobody held it";
}

TEST(ResourceBundle, StaysInItsFolder) {
  const TemporaryFolder folder;
  writePng(folder / "outside.png", 1, 1, 0);
  fs::create_directory(folder / "inside");
  ResourceBundle bundle(folder / "inside");
  for (const auto* name : {"../outside", "", "missing", "/etc/passwd"}) EXPECT_EQ(bundle.image(name), nullptr) << name;
}

TEST(ImageFile, BrokenHugeAndForeignFilesAreNoPictures) {
  const TemporaryFolder folder;
  writePng(folder / "good.png", 40, 40, 0x11223344);
  const auto good = contentsOf(folder / "good.png");
  for (std::size_t size = 0; size < good.size(); size += 5) {
    writeFile(folder / "cut.png", good.substr(0, size));
    const auto cut = decodeImageFile(folder / "cut.png");
    EXPECT_TRUE(!cut || cut->pixels.size() == 1600u) << size;
  }
  writeFile(folder / "huge.pbm", "P4\n9000 9000\n");
  fs::resize_file(folder / "huge.pbm", 13 + 9000 * 9000 / 8);
  ASSERT_EQ(mkfifo((folder / "pipe.png").c_str(), 0600), 0);
  writeFile(folder / "text.png", "no picture");
  for (const auto* name : {"huge.pbm", "pipe.png", "text.png", "missing.png", "."})
    EXPECT_EQ(decodeImageFile(folder / name), nullptr) << name;
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
