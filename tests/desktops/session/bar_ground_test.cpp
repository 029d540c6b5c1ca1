#include "desktops/session/bar_ground.h"

#include <gtest/gtest.h>

#include "support/environment.h"
#include "support/temporary_folder.h"

namespace hushpane::session::tests {
namespace {

TEST(BarGround, IsKnownOfDesktopsWhoseBarsDoNotFollowTheirPrograms) {
  const TemporaryFolder settings;
  const Environment home("XDG_CONFIG_HOME", settings.path().c_str());
  const auto isDarkOn = [](const char* desktop) {
    const Environment inForce("XDG_CURRENT_DESKTOP", desktop);
    return isBarDark();
  };
  EXPECT_EQ(isDarkOn("ubuntu:GNOME"), true);
  for (const char* desktop : {"XFCE", "MATE", "KDE", static_cast<const char*>(nullptr)})
    EXPECT_EQ(isDarkOn(desktop), std::nullopt) << (desktop ? desktop : "none");

  std::filesystem::create_directory(settings / "kdedefaults");
  writeFile(settings / "kdedefaults/plasmarc", "[Theme]\nname=breeze-dark\n");
  EXPECT_EQ(isDarkOn("KDE"), true) << "of the looks";
  EXPECT_EQ(isDarkOn("XFCE"), std::nullopt);
  writeFile(settings / "plasmarc",
            "[Theme-plasma]\nname=oxygen\n\n[Wallpapers]\nusersWallpapers=/a/dark.png\nname=x\n");
  EXPECT_EQ(isDarkOn("KDE"), true) << "the user's own file tells nothing of it";
  writeFile(settings / "plasmarc", "[Wallpapers]\nname=x-dark\n[Theme]\nmode=\nname=default");
  EXPECT_EQ(isDarkOn("KDE"), std::nullopt) << "the user's own";
}

}  // namespace
}  // namespace hushpane::session::tests
