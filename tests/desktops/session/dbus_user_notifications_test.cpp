#include "desktops/session/dbus_user_notifications.h"

#include <giomm/init.h>
#include <gtest/gtest.h>

#include <optional>

#include "desktops/session/main_queue.h"
#include "desktops/session/played_service.h"
#include "desktops/session/portal.h"
#include "support/temporary_folder.h"

namespace hushpane::session::tests {
namespace {

constexpr const char* name = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr const char* server = R"(<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/></method>
</interface></node>)";
constexpr const char* opener = R"(<node><interface name="org.freedesktop.portal.OpenURI">
  <method name="OpenURI"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
    <arg type="o" direction="out"/></method></interface></node>)";

// Messages, and what is opened from them; the addresses go to a portal, since no program is installed for any.
class DbusUserNotificationsTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  std::optional<PrivateBus> bus;
  std::optional<PlayedService> notifications, portal;
  std::optional<MainQueue> queue;
  std::optional<DbusSession> session;
  std::optional<BusService> portalService;
  std::optional<UrlOpener> urls;
  std::optional<DbusUserNotifications> messages;

  const char* capabilities = "(['body'],)";  // in the text form of values
  guint32 nextNumber = 40;
  guint32 replaced = 0;
  std::string title, body;
  std::vector<std::string> actions, opened;

  DbusUserNotificationsTest() {
    // The folders are read once in a process.
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    setenv("XDG_DATA_DIRS", folder.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    Gio::init();
    bus.emplace();
    portal.emplace(portal::name, portal::path, opener, [this](const auto&, GVariant* arguments, const auto&) {
      const char* url = nullptr;
      g_variant_get_child(arguments, 1, "&s", &url);
      opened.emplace_back(url);
      return g_variant_new("(o)", "/request");
    });
    queue.emplace();
    session.emplace(*queue);
    portalService.emplace(*session, portal::name);
    urls.emplace(*portalService);
    messages.emplace(*session, *urls, *queue);
    loopUntil([&] { return portalService->isPresent(); });
  }

  void startServer() {
    notifications.emplace(name, path, server, [this](const auto& method, auto* arguments, const auto&) {
      return method == "Notify" ? notify(arguments) : g_variant_new_parsed(capabilities);
    });
  }

  GVariant* notify(GVariant* arguments) {
    const char *summary = nullptr, *text = nullptr;
    const char** list = nullptr;
    g_variant_get(arguments, "(&su&s&s&s^a&s@a{sv}i)", nullptr, &replaced, nullptr, &summary, &text, &list, nullptr,
                  nullptr);
    title = summary, body = text;
    actions.clear();
    for (const char** action = list; *action; ++action) actions.emplace_back(*action);
    g_free(list);
    return g_variant_new("(u)", nextNumber++);
  }

  // Whether the desktop took the message; nothing when no answer comes.
  std::optional<bool> post(platform::UserNotification message) {
    std::optional<bool> answer;
    messages->post(std::move(message), [&](bool isShown) { answer = isShown; });
    EXPECT_FALSE(answer.has_value()) << "inside the call";
    loopUntil([&] { return answer.has_value(); });
    return answer;
  }

  void invoke(guint32 number, const char* action) {
    notifications->emit(path, name, "ActionInvoked", g_variant_new("(us)", number, action));
  }
};

const platform::UserNotification message{"1.4 <is> here", "a < b & <b>c</b>", "https://example.org/1.4", "Details"};

TEST_F(DbusUserNotificationsTest, SaysWhatTheServerCanShow) {
  startServer();
  EXPECT_EQ(post(message), true);
  EXPECT_EQ(title, "1.4 <is> here");
  EXPECT_EQ(body, "a < b & <b>c</b>");
  EXPECT_EQ(actions, std::vector<std::string>{});
  EXPECT_EQ(replaced, 0u);
  capabilities = "(['body', 'body-markup', 'actions'],)";
  EXPECT_EQ(post(message), true);
  EXPECT_EQ(body, "a &lt; b &amp; &lt;b&gt;c&lt;/b&gt;");
  EXPECT_EQ(actions, (std::vector<std::string>{"default", "Details", "link", "Details"}));
  EXPECT_EQ(replaced, 40u);
  EXPECT_EQ(post({.title = "bad \xff text", .body = "no more"}), true);
  EXPECT_EQ(actions, std::vector<std::string>{});
}

TEST_F(DbusUserNotificationsTest, OpensTheLinkOfTheLastMessageOnly) {
  startServer();
  capabilities = "(['actions'],)";
  EXPECT_EQ(post({.title = "old", .body = "", .link = "https://example.org/old"}), true);
  EXPECT_EQ(post(message), true);
  invoke(40, "default");
  invoke(41, "other");
  invoke(7, "link");
  invoke(41, "link");
  invoke(41, "default");
  ASSERT_TRUE(loopUntil([&] { return opened.size() >= 2; }));
  EXPECT_EQ(opened, (std::vector<std::string>{message.link, message.link}));
}

TEST_F(DbusUserNotificationsTest, CountsAnewWithAnotherServer) {
  EXPECT_EQ(post(message), false) << "there is none yet";
  startServer();
  EXPECT_EQ(post(message), true);
  notifications.reset();
  EXPECT_EQ(post(message), false);
  startServer();
  EXPECT_EQ(post(message), true);
  EXPECT_EQ(replaced, 0u);
  bus->stop();
  loopUntil([&] { return !session->connection(); });
  EXPECT_EQ(post(message), false);
}

TEST_F(DbusUserNotificationsTest, OnlyAddressesOfTheWebAndMailAreOpened) {
  for (const char* url :
       {"file:///etc/passwd", "javascript:alert(1)", "hushpane://mode/focus", "/bin/sh", "", "ftp://a/b"})
    EXPECT_FALSE(urls->open(url)) << url;
  EXPECT_TRUE(urls->open("mailto:someone@example.org?subject=a%20b"));
  EXPECT_TRUE(urls->open("https://example.org/a?b=c#d"));
  ASSERT_TRUE(loopUntil([&] { return opened.size() >= 2; }));
  EXPECT_EQ(opened.back(), "https://example.org/a?b=c#d");
  portal.reset();
  ASSERT_TRUE(loopUntil([&] { return !portalService->isPresent(); }));
  EXPECT_FALSE(urls->open("https://example.org")) << "nobody is there to open it";
}

}  // namespace
}  // namespace hushpane::session::tests
