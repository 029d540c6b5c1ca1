#include "tests/managers/combinations.h"

namespace hushpane::x11_tests {
namespace {

std::string onOff(bool value) {
  return value ? "true" : "false";
}

// Settings that programs of the GNOME family read from a file: groups with lines.
WindowManagerKind withSettings(WindowManagerKind kind, const std::string& text) {
  kind.files = {{"glib-2.0/settings/keyfile", text}};
  kind.environment = {{"GSETTINGS_BACKEND", "keyfile"}};
  kind.replacing = {"--replace"};
  kind.needsBus = true;
  return kind;
}

std::vector<std::string> settingsCommand(const std::string& schema, const std::string& key, const std::string& value) {
  return {"gsettings", "set", schema, key, value};
}

constexpr const char* gnomeWindows = R"([org/gnome/desktop/wm/preferences]
num-workspaces=2
focus-mode='click'
raise-on-click=true
[org/gnome/desktop/interface]
enable-animations=false
[org/gnome/mutter]
dynamic-workspaces=false
)";

WindowManagerKind xfwm4(bool isComposited) {
  const std::vector<std::string> set{"xfconf-query", "-c", "xfwm4", "-p", "/general/use_compositing", "-s"};
  auto on = set, off = set;
  on.push_back("true");
  off.push_back("false");
  return {.name = "xfwm4",
          .command = {"xfwm4"},
          .replacing = {"--replace"},
          .files = {{"xfce4/xfconf/xfce-perchannel-xml/xfwm4.xml", R"(<?xml version="1.0"?>
<channel name="xfwm4" version="1.0"><property name="general" type="empty">
  <property name="use_compositing" type="bool" value=")" + onOff(isComposited) +
                                                                       R"("/>
  <property name="workspace_count" type="int" value="2"/>
  <property name="click_to_focus" type="bool" value="true"/>
  <property name="raise_on_click" type="bool" value="true"/>
  <property name="prevent_focus_stealing" type="bool" value="false"/>
  <property name="show_frame_shadow" type="bool" value="false"/>
  <property name="show_popup_shadow" type="bool" value="false"/>
  <property name="show_dock_shadow" type="bool" value="false"/>
</property></channel>
)"}},
          .needsBus = true,
          .countsOutputs = true,
          .compositorOn = on,
          .compositorOff = off};
}

WindowManagerKind icewm() {
  return {.name = "icewm",
          .command = {"icewm", "--config=%/icewm/preferences"},
          .replacing = {"--replace"},
          .files = {{"icewm/preferences", R"(ShowTaskBar=0
WorkspaceNames="1","2"
ClickToFocus=1
RaiseOnFocus=1
RaiseOnClickClient=1
FocusOnMap=1
ShowWorkspaceStatus=0
)"}},
          .environment = {{"ICEWM_PRIVCFG", "%/icewm"}}};
}

WindowManagerKind i3(bool isTiled) {
  const std::string layout = isTiled ? "gaps bottom 250\n" : "for_window [class=\".*\"] floating enable\n";
  return {
      .name = "i3",
      .command = {"i3", "-c", "%/i3/config"},
      .replacing = {"--replace"},
      .files = {{"i3/config",
                 "# i3 config file (v4)\nfont pango:DejaVu Sans 8\nfocus_follows_mouse no\nmouse_warping none\n"
                 "workspace 1 output LEFT\nworkspace 2 output RIGHT\nworkspace 3 output LEFT\n" +
                     layout + "assign [title=\"^(red|green)$\"] workspace 1\nassign [title=\"^blue$\"] workspace 2\n"}},
      .toWorkspace = {"i3-msg", "workspace"}};
}

WindowManagerKind marco(bool isComposited) {
  WindowManagerKind kind{.name = "marco", .command = {"marco"}};
  kind.compositorOn = settingsCommand("org.mate.Marco.general", "compositing-manager", "true");
  kind.compositorOff = settingsCommand("org.mate.Marco.general", "compositing-manager", "false");
  return withSettings(kind,
                      "[org/mate/marco/general]\nnum-workspaces=2\nfocus-mode='click'\nraise-on-click=true\n"
                      "center-new-windows=false\ncompositing-manager=" +
                          onOff(isComposited) + "\n");
}

WindowManagerKind metacity(bool isComposited) {
  WindowManagerKind kind{.name = "metacity", .command = {"metacity"}};
  kind.compositorOn = settingsCommand("org.gnome.metacity", "compositor", "xrender");
  kind.compositorOff = settingsCommand("org.gnome.metacity", "compositor", "none");
  return withSettings(kind, std::string(gnomeWindows) + "[org/gnome/metacity]\ncompositor='" +
                                (isComposited ? "xrender" : "none") + "'\n");
}

WindowManagerKind mutter() {
  return withSettings({.name = "mutter", .command = {"mutter", "--x11", "--sm-disable"}}, gnomeWindows);
}

WindowManagerKind muffin() {
  return withSettings(
      {.name = "muffin", .command = {"muffin", "--x11", "--sm-disable"}},
      "[org/cinnamon/desktop/wm/preferences]\nnum-workspaces=2\nfocus-mode='click'\nraise-on-click=true\n"
      "[org/cinnamon/muffin]\ndynamic-workspaces=false\n");
}

WindowManagerKind kwin(bool isComposited) {
  const auto call = [](const std::string& what) {
    return std::vector<std::string>{"dbus-send",           "--session",   "--print-reply",
                                    "--dest=org.kde.KWin", "/Compositor", "org.kde.kwin.Compositing." + what};
  };
  return {.name = "kwin",
          .command = {"kwin_x11"},
          .replacing = {"--replace"},
          .files = {{"kwinrc", "[Compositing]\nEnabled=" + onOff(isComposited) + R"(
Backend=OpenGL
OpenGLIsUnsafe=false
AnimationSpeed=0
WindowsBlockCompositing=true
[KDE]
AnimationDurationFactor=0
[Desktops]
Number=2
Rows=1
[Windows]
FocusPolicy=ClickToFocus
FocusStealingPreventionLevel=0
ClickRaise=true
[Plugins]
kwin4_effect_fadeEnabled=false
kwin4_effect_scaleEnabled=false
kwin4_effect_squashEnabled=false
slideEnabled=false
)"},
                    {"kdeglobals", "[KDE]\nAnimationDurationFactor=0\n"}},
          .environment = {{"QT_QPA_PLATFORM", "xcb"}, {"KDE_DEBUG", "1"}},
          .needsBus = true,
          .compositorOn = call("resume"),
          .compositorOff = call("suspend")};
}

WindowManagerKind awesome() {
  return {.name = "awesome",
          .command = {"awesome", "-c", "%/awesome/rc.lua"},
          .replacing = {"--replace"},
          .files = {{"awesome/rc.lua", R"(local awful = require("awful")
require("awful.autofocus")
awful.layout.layouts = {awful.layout.suit.floating}
awful.screen.connect_for_each_screen(function(s) awful.tag({"1", "2"}, s, awful.layout.suit.floating) end)
local function forward(c) client.focus = c; c:raise() end
awful.rules.rules = {{rule = {}, properties = {
  focus = awful.client.focus.filter, raise = true, border_width = 0, screen = awful.screen.preferred,
  buttons = awful.util.table.join(awful.button({}, 1, forward))}}}
)"}}};
}

// It writes settings of its own where it finds no folder of its own.
WindowManagerKind fluxbox() {
  return {.name = "fluxbox",
          .command = {"fluxbox", "-rc", "%/../.fluxbox/init"},
          .files = {{"../.fluxbox/init", R"(session.configVersion: 13
session.screen0.workspaces: 2
session.screen0.workspaceNames: 1,2
session.screen0.toolbar.visible: false
session.screen0.focusModel: ClickFocus
session.screen0.focusNewWindows: true
session.screen0.clickRaises: true
session.keyFile: %/../.fluxbox/keys
session.appsFile: %/../.fluxbox/apps
session.styleOverlay: %/../.fluxbox/overlay
)"},
                    {"../.fluxbox/keys", ""},
                    {"../.fluxbox/apps", ""},
                    {"../.fluxbox/overlay", "background: none\n"}}};
}

// It knows neither EWMH nor workspaces.
WindowManagerKind twm() {
  return {.name = "twm", .command = {"twm", "-f", "%/twmrc"}, .files = {{"twmrc", R"(NoGrabServer
RandomPlacement
NoDefaults
DecorateTransients
IconifyByUnmapping
TitleFont "fixed"
MenuFont "fixed"
IconFont "fixed"
ResizeFont "fixed"
IconManagerFont "fixed"
Function "forward" { f.raise f.focus }
Button1 = : window : f.function "forward"
)"}}};
}

Combination plain(const WindowManagerKind& kind) {
  return {.name = kind.name, .windowManager = kind};
}
Combination composited(const WindowManagerKind& kind) {
  return {.name = kind.name + "-composited", .windowManager = kind, .isComposited = true};
}
// Without a compositor to switch off.
Combination alwaysComposited(const WindowManagerKind& kind) {
  return {.name = kind.name, .windowManager = kind, .isComposited = true, .canSwitchCompositor = false};
}
// Which takes a compositor that was off at its start for unwanted.
Combination neverComposited(Combination combination) {
  combination.canSwitchCompositor = false;
  return combination;
}
Combination withPicom(Combination combination) {
  combination.name += "-picom";
  combination.runsPicom = combination.isComposited = true;
  return combination;
}
Combination named(const std::string& name, Combination combination) {
  combination.name = name;
  return combination;
}
Combination withDesktopWindow(Combination combination) {
  combination.needsDesktopWindow = true;
  return combination;
}

}  // namespace

const std::vector<Combination>& combinations() {
  static const Combination floating = named("i3-floating", plain(i3(false))),
                           tiled = named("i3-tiled", plain(i3(true)));
  static const std::vector<Combination> all{plain(openbox()),
                                            withPicom(plain(openbox())),
                                            plain(xfwm4(false)),
                                            composited(xfwm4(true)),
                                            plain(icewm()),
                                            withPicom(plain(icewm())),
                                            floating,
                                            withPicom(floating),
                                            tiled,
                                            withPicom(tiled),
                                            plain(marco(false)),
                                            composited(marco(true)),
                                            plain(metacity(false)),
                                            composited(metacity(true)),
                                            alwaysComposited(mutter()),
                                            alwaysComposited(muffin()),
                                            withDesktopWindow(neverComposited(plain(kwin(false)))),
                                            withDesktopWindow(composited(kwin(true))),
                                            plain(awesome()),
                                            withPicom(plain(awesome())),
                                            plain(fluxbox()),
                                            withPicom(plain(fluxbox())),
                                            plain(twm())};
  return all;
}

}  // namespace hushpane::x11_tests
