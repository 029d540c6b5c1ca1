#include "desktops/shared/resource_bundle.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>

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
