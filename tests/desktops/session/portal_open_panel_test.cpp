#include "desktops/session/portal_open_panel.h"

#include <giomm/init.h>
#include <gtest/gtest.h>

#include <csignal>
#include <optional>

#include "desktops/session/main_queue.h"
#include "desktops/session/played_service.h"
#include "desktops/session/portal.h"
#include "support/temporary_folder.h"

namespace hushpane::session::tests {
namespace {

namespace fs = std::filesystem;

constexpr const char* fileChooser = R"(<node><interface name="org.freedesktop.portal.FileChooser">
  <method name="OpenFile"><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method></interface></node>)";

// What the completion of a panel was called with.
struct Outcome {
  int calls = 0;
  std::optional<fs::path> file;

  platform::OpenPanel::Completion completion() {
    return [this](auto chosen) {
      ++calls;
      file = std::move(chosen);
    };
  }
};

class PortalOpenPanelTest : public testing::Test {
 protected:
  TemporaryFolder folder;  // all that PATH holds
  std::string oldPath = std::getenv("PATH");
  std::optional<PrivateBus> bus;
  std::optional<PlayedService> portal;
  std::optional<MainQueue> queue;
  std::optional<DbusSession> session;
  std::optional<BusService> service;
  std::optional<PortalOpenPanel> panel;

  // What the portal was asked.
  std::string request, title, acceptLabel, currentFolder, filter;
  int asked = 0;
  std::string ownRequest;  // where the portal answers instead of where it should
  bool fails = false;

  PortalOpenPanelTest() {
    Gio::init();
    bus.emplace();
    setenv("PATH", folder.path().c_str(), 1);
  }
  ~PortalOpenPanelTest() override { setenv("PATH", oldPath.c_str(), 1); }

  void startPortal() {
    portal.emplace(portal::name, portal::path, fileChooser,
                   [this](const std::string&, GVariant* arguments, const std::string& caller) {
                     return openFile(arguments, caller);
                   });
  }

  void startPanel() {
    queue.emplace();
    session.emplace(*queue);
    service.emplace(*session, portal::name);
    panel.emplace(*service, *queue);
    bool isKnown = false;
    const auto known = service->onChanged([&] { isKnown = true; });
    ASSERT_TRUE(loopUntil([&] { return isKnown; }));
  }

  GVariant* openFile(GVariant* arguments, std::string caller) {
    GVariant* options = g_variant_get_child_value(arguments, 2);
    const char *text = "", *label = "", *directory = "", *token = "";
    g_variant_get_child(arguments, 1, "&s", &text);
    g_variant_lookup(options, "accept_label", "&s", &label);
    g_variant_lookup(options, "current_folder", "^&ay", &directory);
    g_variant_lookup(options, "handle_token", "&s", &token);
    if (GVariant* filters = g_variant_lookup_value(options, "filters", G_VARIANT_TYPE("a(sa(us))"))) {
      char* printed = g_variant_print(filters, FALSE);
      filter = printed;
      g_free(printed);
      g_variant_unref(filters);
    }
    title = text, acceptLabel = label, currentFolder = directory;
    caller.erase(0, 1);
    for (char& letter : caller) letter = letter == '.' ? '_' : letter;
    request = ownRequest.empty() ? std::string(portal::path) + "/request/" + caller + "/" + token : ownRequest;
    g_variant_unref(options);
    ++asked;
    return fails ? nullptr : g_variant_new("(o)", request.c_str());
  }

  void respond(guint32 code, const char* uri) {
    GVariantBuilder results;
    g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
    if (uri) {
      const char* uris[] = {uri, nullptr};
      g_variant_builder_add(&results, "{sv}", "uris", g_variant_new_strv(uris, -1));
    }
    portal->emit(request, "org.freedesktop.portal.Request", "Response", g_variant_new("(ua{sv})", code, &results));
  }

  void installChooser(const char* name, const std::string& script) {
    writeFile(folder / name, "#!/bin/sh\n" + script + "\n");
    fs::permissions(folder / name, fs::perms::owner_all);
  }
};

TEST_F(PortalOpenPanelTest, GivesTheFileThatTheUserChoseInThePortal) {
  startPortal();
  startPanel();
  ASSERT_TRUE(panel->isAvailable());
  struct Case {
    guint32 code;
    const char* uri;
    std::optional<fs::path> file;
  };
  for (const auto& [code, uri, file] : std::vector<Case>{{0, "file:///tmp/a%20picture%25.png", "/tmp/a picture%.png"},
                                                         {0, "https://example.org/a.png", std::nullopt},
                                                         {0, "file://elsewhere/a.png", std::nullopt},
                                                         {0, "/tmp/a.png", std::nullopt},
                                                         {0, nullptr, std::nullopt},
                                                         {1, "file:///tmp/a.png", std::nullopt},
                                                         {2, nullptr, std::nullopt}}) {
    for (const char* handle : {"", "/org/freedesktop/portal/desktop/request/old/way"}) {
      SCOPED_TRACE(std::string(uri ? uri : "none") + handle);
      ownRequest = handle;
      Outcome outcome;
      const int before = asked;
      panel->run({.title = "Choose", .prompt = "Select", .imagesOnly = true, .directory = "/tmp"},
                 outcome.completion());
      ASSERT_TRUE(loopUntil([&] { return asked > before; }));
      // A portal of the old way answers at a place that is known only after its reply.
      if (*handle) loopUntil([] { return false; }, 100);
      respond(code, uri);
      ASSERT_TRUE(loopUntil([&] { return outcome.calls > 0; }));
      EXPECT_EQ(outcome.file, file);
    }
  }
  EXPECT_EQ(title, "Choose");
  EXPECT_EQ(acceptLabel, "Select");
  EXPECT_EQ(currentFolder, "/tmp");
  EXPECT_NE(filter.find("(1, 'image/png')"), std::string::npos) << filter;
}

TEST_F(PortalOpenPanelTest, KeepsTheFirstPanelOpenWhenAskedForASecond) {
  startPortal();
  startPanel();
  Outcome first, second;
  panel->run({.title = "First", .prompt = "", .directory = {}}, first.completion());
  panel->run({.title = "Second", .prompt = "", .directory = {}}, second.completion());
  EXPECT_EQ(second.calls, 0) << "inside the call";
  ASSERT_TRUE(loopUntil([&] { return second.calls == 1 && asked == 1; }));
  EXPECT_EQ(second.file, std::nullopt);
  respond(0, "file:///tmp/a.png");
  ASSERT_TRUE(loopUntil([&] { return first.calls == 1; }));
  EXPECT_EQ(first.file, "/tmp/a.png");
  EXPECT_EQ(title, "First");
  EXPECT_EQ(filter, "") << "any file was asked for";
}

TEST_F(PortalOpenPanelTest, GivesNothingWhenThePortalOrTheBusGoes) {
  startPortal();
  startPanel();
  Outcome portalGoes, busGoes;
  panel->run({}, portalGoes.completion());
  ASSERT_TRUE(loopUntil([&] { return asked == 1; }));
  loopUntil([] { return false; }, 100);
  portal.reset();
  ASSERT_TRUE(loopUntil([&] { return portalGoes.calls == 1; }));
  EXPECT_FALSE(panel->isAvailable());

  startPortal();
  ASSERT_TRUE(loopUntil([&] { return panel->isAvailable(); }));
  panel->run({}, busGoes.completion());
  ASSERT_TRUE(loopUntil([&] { return asked == 2; }));
  portal.reset();
  bus->stop();
  ASSERT_TRUE(loopUntil([&] { return busGoes.calls == 1; }));
  loopUntil([] { return false; }, 100);
  EXPECT_EQ(portalGoes.calls + busGoes.calls, 2) << "once each";
  EXPECT_FALSE(panel->isAvailable());
}

TEST_F(PortalOpenPanelTest, AsksAProgramWhereThePortalIsMissingOrFails) {
  startPanel();
  EXPECT_FALSE(panel->isAvailable());
  struct Case {
    const char* name;
    const char* script;
    std::optional<fs::path> file;
  };
  for (const bool hasPortal : {false, true}) {
    fails = true;
    if (hasPortal) startPortal();
    for (const auto& [name, script, file] : std::vector<Case>{
             {"zenity", R"([ "$1" = --file-selection ] && [ "$2" = '--title=$(x) y' ] && echo "/tmp/a b.png")",
              "/tmp/a b.png"},
             {"kdialog", R"([ "$2" = '$(x) y' ] && [ "$3 $4" = "--getopenfilename /tmp/" ] && echo /tmp/k.png)",
              "/tmp/k.png"},
             {"yad", "echo /tmp/a.png; exit 1", std::nullopt},
             {"yad", "echo relative.png", std::nullopt},
             {"qarma", "echo", std::nullopt},
             {"qarma", "kill -9 $$", std::nullopt},
             {"qarma", "while :; do echo /endless; done", std::nullopt}}) {
      SCOPED_TRACE(script);
      installChooser(name, script);
      ASSERT_TRUE(panel->isAvailable());
      Outcome outcome;
      panel->run({.title = "$(x) y", .prompt = "", .imagesOnly = true, .directory = "/tmp"}, outcome.completion());
      ASSERT_TRUE(loopUntil([&] { return outcome.calls > 0; }));
      EXPECT_EQ(outcome.file, file);
      fs::remove(folder / name);
    }
  }
}

TEST_F(PortalOpenPanelTest, TakesAnOpenProgramAlongWhenItEnds) {
  startPanel();
  installChooser("zenity", "echo $$ > " + (folder / "pid").string() + "\nexec /bin/sleep 1000");
  Outcome outcome;
  panel->run({}, outcome.completion());
  const auto pid = [&] { return std::atoi(contentsOf(folder / "pid").c_str()); };
  ASSERT_TRUE(loopUntil([&] { return pid() > 0; }));
  panel.reset();
  EXPECT_TRUE(loopUntil([&] { return kill(pid(), 0) != 0; })) << "ended, and no dead process is left";
  EXPECT_EQ(outcome.calls, 0);
}

}  // namespace
}  // namespace hushpane::session::tests
