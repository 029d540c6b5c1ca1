#include <unistd.h>

#include "tests/whole_desktops/cover_moves.h"
#include "tests/whole_desktops/whole_desktop.h"

namespace hushpane::x11_tests {
namespace {

class PopupsIn : public WholeDesktop {
 protected:
  void fileDialog(const Application& editor);
  void focusDuringDialog();
  void contextMenu(const Application& editor);
  void tooltip(const Application& editor);
  void notification();
  void startMenu();
  void browser();
  // Opens the file dialog of an editor and waits for it.
  void openDialog(const Application& editor);
  void pointAt(Point point) const {
    session().runTool({"xdotool", "mousemove", std::to_string(int(point.x)), std::to_string(int(point.y))});
  }
};
HUSHPANE_RUN_IN_ALL_DESKTOPS(PopupsIn);

void PopupsIn::openDialog(const Application& editor) {
  activate(editor);
  keys("ctrl+o");
  const auto isOpen = [&] {
    const xcb_window_t active = x().activeWindow();
    return active != XCB_NONE && active != editor.window() && x().bounds(active).width > 200;
  };
  EXPECT_TRUE(waitUntil(isOpen, 15s)) << "no dialog";
}

void PopupsIn::fileDialog(const Application& editor) {
  activate(editor);
  EXPECT_TRUE(seesClear({&editor}));
  staysClear(
      [&] {
        openDialog(editor);
        settledPicture();
        const CoverMoves moves(session(), covers());
        const double before = moves.managerSeconds();
        wait(3s);
        EXPECT_LE(moves.count(), 3) << "moves of the cover while nothing happens";
        EXPECT_LT(moves.managerSeconds() - before, 0.4) << "of three seconds the window manager was busy";
      },
      [&] {
        keys("Escape");
        waitUntil([&] { return x().activeWindow() == editor.window(); }, 3s);
      });
  EXPECT_TRUE(seesClear({&editor}));
}

void PopupsIn::focusDuringDialog() {
  toMode("standard");
  openDialog(applications().gtkEditor);
  settledPicture();
  toMode("focus");
  EXPECT_TRUE(looks({1535, 735, 30, 30}, balanced, "the bare desktop"));
  wait(1s);
  const Picture covered = x().capture();
  picture();
  const Rect dialog = x().bounds(x().activeWindow());
  toMode("standard");
  wait(300ms);
  EXPECT_TRUE(isClearIn(covered, settledPicture(), pointsOf(dialog))) << "the dialog";
  toMode("focus");
  keys("Escape");
  waitUntil([&] { return x().activeWindow() == applications().gtkEditor.window(); }, 3s);
  activate(applications().terminal);
  EXPECT_TRUE(seesClear({&applications().terminal})) << "after the dialog";
  EXPECT_TRUE(barsAreClear());
}

void PopupsIn::contextMenu(const Application& editor) {
  activate(editor);
  EXPECT_TRUE(seesClear({&editor}));
  staysClear(
      [&] {
        pointAt(center(editor.inside()));
        session().runTool({"xdotool", "click", "3"});
      },
      [&] { keys("Escape"); });
  EXPECT_TRUE(seesClear({&editor}));
}

// Of the button that opens files.
void PopupsIn::tooltip(const Application& editor) {
  activate(editor);
  EXPECT_TRUE(seesClear({&editor}));
  const Rect bounds = editor.bounds();
  staysClear(
      [&] {
        pointAt({bounds.x + 60, bounds.y + 25}), pointAt({bounds.x + 62, bounds.y + 24});
      },
      [&] {
        pointAt({800, 480});
      },
      600);
}

void PopupsIn::notification() {
  staysClear(
      [&] {
        session().shell("notify-send -p -u critical Title 'A body of several words' >\"$1/notification\"",
                        session().home());
      },
      [&] {
        session().shell(
            "gdbus call --session --dest org.freedesktop.Notifications --object-path /org/freedesktop/Notifications "
            "--method org.freedesktop.Notifications.CloseNotification \"$(cat \"$1/notification\")\"",
            session().home());
      });
}

void PopupsIn::startMenu() {
  staysClear([&] { keys(session().kind().menuKey); }, [&] { keys("Escape"), keys("Escape"); }, 10000);
  waitUntil([&] { return x().activeWindow() == applications().terminal.window(); }, 2s);
  activate(applications().terminal);
  EXPECT_TRUE(seesClear({&applications().terminal}));
}

// Whose page is one large combo box.
void PopupsIn::browser() {
  const Application page(session(),
                         {"chromium", "--no-sandbox", "--no-first-run", "--disable-gpu", "--password-store=basic",
                          "--test-type", "--window-size=280,250", "--window-position=615,360",
                          "--user-data-dir=" + (session().home() / "browser").string(),
                          "--app=data:text/html,<select style='width:100%;height:300px;font-size:40px'><option>one"
                          "<option>two<option>three</select>"},
                         {615, 360, 280, 250});
  activate(page);
  constexpr Pixel white{0xffffff};
  EXPECT_TRUE(seesClear({}));
  EXPECT_TRUE(shows(center(page.inside()), white)) << "the page is covered";
  staysClear([&] { session().clickSlowly(center(page.inside())); }, [&] { keys("Escape"); });
  page.process().terminate();
  activate(applications().terminal);
  EXPECT_TRUE(seesClear({&applications().terminal}));
}

TEST_P(PopupsIn, EveryDesktop) {
  start();
  use("focus");
  runCase("GTK file dialog", [this] { fileDialog(applications().gtkEditor); });
  runCase("Qt file dialog", [this] { fileDialog(applications().qtEditor); });
  runCase("focus during a dialog", [this] { focusDuringDialog(); });
  runCase("GTK context menu", [this] { contextMenu(applications().gtkEditor); });
  runCase("Qt context menu", [this] { contextMenu(applications().qtEditor); });
  runCase("tooltip", [this] { tooltip(applications().gtkEditor); });
  activate(applications().terminal);
  runCase("notification", [this] { notification(); });
  runCase("start menu", [this] { startMenu(); });
  runCase("browser, combo box", [this] { browser(); });
}

}  // namespace
}  // namespace hushpane::x11_tests
