#include "desktops/session/portal_appearance.h"

#include <giomm/init.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "desktops/session/main_queue.h"
#include "desktops/session/played_service.h"
#include "desktops/session/portal.h"

namespace hushpane::session::tests {
namespace {

constexpr const char* settings = R"(<node><interface name="org.freedesktop.portal.Settings">
  <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
</interface></node>)";
constexpr const char* appearance = "org.freedesktop.appearance";

class PortalAppearanceTest : public testing::Test {
 protected:
  std::optional<PrivateBus> bus;
  std::optional<PlayedService> portal;
  std::optional<MainQueue> queue;
  std::optional<DbusSession> session;
  std::optional<BusService> service;
  std::optional<PortalAppearance> looks;
  const char* answer = "{}";         // of the portal, in the text form of values
  std::optional<std::string> theme;  // as the windowing system tells it
  platform::HandlerList<void()> themeChanges;
  int asked = 0;

  PortalAppearanceTest() {
    Gio::init();
    bus.emplace();
  }

  void startPortal() {
    portal.emplace(portal::name, portal::path, settings, [this](const auto&, GVariant*, const auto&) {
      ++asked;
      GVariant* all = g_variant_parse(G_VARIANT_TYPE("a{sa{sv}}"), answer, nullptr, nullptr, nullptr);
      return g_variant_new("(@a{sa{sv}})", all);
    });
  }

  void startLooks() {
    queue.emplace();
    session.emplace(*queue);
    service.emplace(*session, portal::name);
    looks.emplace(*service, ThemeSource{.name = [this] { return theme; },
                                        .observe = [this](auto changed) { return themeChanges.add(changed); }});
  }

  void changeTheme(const char* name) {
    theme = name;
    themeChanges.forEach([](const auto& changed) { changed(); });
  }
  void change(const char* space, const char* key, const char* value) {
    portal->emit(portal::path, "org.freedesktop.portal.Settings", "SettingChanged",
                 g_variant_new("(ssv)", space, key, g_variant_parse(nullptr, value, nullptr, nullptr, nullptr)));
  }
};

TEST_F(PortalAppearanceTest, FollowsThePortalFromItsFirstAnswerOn) {
  answer = "{'org.freedesktop.appearance': {'color-scheme': <uint32 1>, 'accent-color': <(0.25, 0.5, 1.0)>}}";
  startPortal();
  startLooks();
  EXPECT_FALSE(looks->isDark()) << "nothing waits for the answer";
  int changes = 0;
  auto observer = looks->observe([&] { ++changes; });
  ASSERT_TRUE(loopUntil([&] { return looks->isDark(); }));
  EXPECT_EQ(looks->accentColor(), (platform::Color{0.25, 0.5, 1}));
  EXPECT_EQ(changes, 1);

  // What says nothing of use changes nothing; the last one shows that all have come.
  change(appearance, "color-scheme", "'light'");
  change(appearance, "contrast", "uint32 0");
  change("org.example", "color-scheme", "uint32 2");
  change(appearance, "color-scheme", "uint32 1");
  change(appearance, "accent-color", "(0.0, 0.0, 1.5)");
  ASSERT_TRUE(loopUntil([&] { return !looks->accentColor(); }));
  EXPECT_TRUE(looks->isDark());
  EXPECT_EQ(changes, 2);
  change(appearance, "color-scheme", "uint32 2");
  ASSERT_TRUE(loopUntil([&] { return !looks->isDark(); }));
  observer.reset();

  portal.reset();
  answer = "{'org.freedesktop.appearance': {'color-scheme': <uint32 1>}}";
  startPortal();
  EXPECT_TRUE(loopUntil([&] { return looks->isDark(); })) << "another portal is asked anew";
  EXPECT_EQ(changes, 3) << "none reaches an observer that went";
}

TEST_F(PortalAppearanceTest, IsLightWithoutAnAnswerOfUse) {
  for (const char* useless :
       {"{}", "{'org.freedesktop.appearance': {'color-scheme': <true>, 'accent-color': <1.0>}}"}) {
    answer = useless;
    const int before = asked;
    startPortal();
    if (!looks) startLooks();
    ASSERT_TRUE(loopUntil([&] { return asked > before; }));
    loopUntil([] { return false; }, 50);
    EXPECT_FALSE(looks->isDark());
    EXPECT_EQ(looks->accentColor(), std::nullopt);
    portal.reset();
  }
}

TEST_F(PortalAppearanceTest, GoesByTheThemeUnlessThePortalTellsAPreference) {
  theme = "Arc-Dark";
  answer = "{'org.freedesktop.appearance': {'color-scheme': <uint32 0>}}";
  startPortal();
  startLooks();
  EXPECT_TRUE(looks->isDark()) << "at once";
  int changes = 0;
  const auto observer = looks->observe([&] { ++changes; });
  ASSERT_TRUE(loopUntil([&] { return asked == 1; }));
  change(appearance, "accent-color", "(0.0, 0.0, 1.0)");
  ASSERT_TRUE(loopUntil([&] { return looks->accentColor().has_value(); }));
  EXPECT_TRUE(looks->isDark()) << "the portal prefers nothing";
  changeTheme("Arc");
  EXPECT_FALSE(looks->isDark());
  changeTheme("Arc-Dark");
  EXPECT_TRUE(looks->isDark());
  EXPECT_EQ(changes, 3);

  change(appearance, "color-scheme", "uint32 2");
  ASSERT_TRUE(loopUntil([&] { return !looks->isDark(); }));
  change(appearance, "color-scheme", "uint32 1");
  ASSERT_TRUE(loopUntil([&] { return looks->isDark(); }));
  changeTheme("Arc");
  EXPECT_TRUE(looks->isDark()) << "the user chose dark in words";
  change(appearance, "color-scheme", "uint32 0");
  EXPECT_TRUE(loopUntil([&] { return !looks->isDark(); }));
}

TEST_F(PortalAppearanceTest, GoesByTheThemeWithoutAPortalOrABus) {
  theme = "Arc";
  bus->stop();
  startLooks();
  EXPECT_FALSE(looks->isDark());
  changeTheme("Mint-Y-Dark");
  EXPECT_TRUE(looks->isDark());
}

TEST(ThemeName, IsDarkByAWordOfIt) {
  for (const char* name : {"Adwaita-dark", "Mint-Y-Dark", "Mint-Y-Dark-Aqua", "Arc-Dark", "dark", "Yaru-blue-dark",
                           "BreezeDark", "materia_dark_compact", "Some Dark Theme", "NIGHT-DARK", "Dark2"})
    EXPECT_TRUE(isDarkTheme(name)) << name;
  for (const char* name : {"", "Adwaita", "Arc-Darker", "Darkroom-light", "Landark", "Darkness", "dar", "d-a-r-k"})
    EXPECT_FALSE(isDarkTheme(name)) << name;
}

}  // namespace
}  // namespace hushpane::session::tests
