#include "tests/whole_desktops/desktop_kinds.h"

namespace hushpane::x11_tests {
namespace {

// GSettings of all desktops that keep theirs there; extensions are GNOME's.
std::string gsettings(const std::string& extensions) {
  return "[org/gnome/shell]\nenabled-extensions=[" + extensions + R"(]
welcome-dialog-last-shown-version='99'
[org/gnome/desktop/interface]
enable-animations=false
cursor-blink=false
[org/gnome/desktop/wm/preferences]
num-workspaces=2
[org/gnome/desktop/lockdown]
disable-lock-screen=true
[org/gnome/desktop/session]
idle-delay=uint32 0
[org/gnome/mutter]
dynamic-workspaces=false
workspaces-only-on-primary=false
[org/gnome/desktop/background]
picture-options='stretched'
[org/mate/background]
picture-options='stretched'
[org/mate/interface]
enable-animations=false
cursor-blink=false
[org/mate/marco/general]
num-workspaces=2
[org/cinnamon]
desktop-effects=false
desktop-effects-workspace=false
desktop-effects-on-menus=false
desktop-effects-on-dialogs=false
[org/cinnamon/desktop/interface]
icon-theme='Adwaita'
cursor-blink=false
[org/cinnamon/desktop/background]
picture-options='stretched'
[org/cinnamon/desktop/session]
idle-delay=uint32 0
[org/cinnamon/desktop/wm/preferences]
num-workspaces=2
)";
}

constexpr const char* settingsFile = "glib-2.0/settings/keyfile";

DesktopKind xfce() {
  return {.name = "xfce",
          .environment = {{"XDG_CURRENT_DESKTOP", "XFCE"}},
          .command = {"xfce4-session"},
          .services = {{"org.cinnamon.ScreenSaver", "/bin/false"},
                       {"org.freedesktop.Notifications", "/usr/lib/x86_64-linux-gnu/xfce4/notifyd/xfce4-notifyd"}},
          .choosePicture =
              "for monitor in screen DUMMY0 DUMMY1; do "
              "place=/backdrop/screen0/monitor$monitor/workspace0; "
              "xfconf-query -c xfce4-desktop -p $place/image-style -n -t int -s 3; "
              "xfconf-query -c xfce4-desktop -p $place/last-image -n -t string -s \"$1\"; done",
          .fileManager = {"thunar"},
          .menuKey = "alt+F1",
          .theme = "xfconf-query -c xsettings -p /Net/ThemeName -s Adwaita$1"};
}

DesktopKind mate() {
  return {.name = "mate",
          .environment = {{"XDG_CURRENT_DESKTOP", "MATE"}},
          .command = {"mate-session"},
          .services = {{"org.cinnamon.ScreenSaver", "/bin/false"},
                       {"org.freedesktop.Notifications", "/usr/lib/mate-notification-daemon/mate-notification-daemon"}},
          .choosePicture = "gsettings set org.mate.background picture-filename \"$1\"",
          .fileManager = {"caja", "--no-desktop"},
          .menuKey = "alt+F1",
          .theme = "gsettings set org.mate.interface gtk-theme Adwaita$1"};
}

DesktopKind lxqt() {
  return {.name = "lxqt",
          .environment = {{"XDG_CURRENT_DESKTOP", "LXQt"}},
          .command = {"startlxqt"},
          .files = {{"lxqt/session.conf", "[General]\nwindow_manager=openbox\n"},
                    {"pcmanfm-qt/lxqt/settings.conf", "[Desktop]\nPerScreenWallpaper=true\n"}},
          .choosePicture = "pcmanfm-qt --set-wallpaper \"$1\" --wallpaper-mode stretch",
          .fileManager = {"pcmanfm-qt"},
          .menuKey = "alt+F1"};
}

DesktopKind plasma() {
  return {.name = "plasma",
          .environment = {{"XDG_CURRENT_DESKTOP", "KDE"}, {"KDE_FULL_SESSION", "true"}, {"KDE_SESSION_VERSION", "5"}},
          .command = {"startplasma-x11"},
          .files = {{"ksplashrc", "[KSplash]\nEngine=none\nTheme=None\n"},
                    {"kdeglobals", "[KDE]\nAnimationDurationFactor=0\n"},
                    {"plasmarc", "[Theme]\nname=breeze-dark\n"},
                    {"kwinrc", "[Desktops]\nNumber=2\nRows=1\n"},
                    {"baloofilerc", "[Basic Settings]\nIndexing-Enabled=false\n"},
                    {"kscreenlockerrc", "[Daemon]\nAutolock=false\nLockOnResume=false\n"},
                    {"kwalletrc", "[Wallet]\nEnabled=false\n"},
                    {"startkderc", "[General]\nsystemdBoot=false\n"},
                    {"ksmserverrc", "[General]\nloginMode=emptySession\n"}},
          .choosePicture = "plasma-apply-wallpaperimage \"$1\"",
          .fileManager = {"dolphin"},
          .qtEditor = {"kate", "-n"},
          .menuKey = "alt+F1",
          .theme = "[ \"$1\" ] && plasma-apply-colorscheme BreezeDark || plasma-apply-colorscheme BreezeLight"};
}

DesktopKind cinnamon() {
  return {.name = "cinnamon",
          .environment = {{"XDG_CURRENT_DESKTOP", "X-Cinnamon"}},
          .command = {"cinnamon-session", "--session", "cinnamon"},
          .services = {},
          .choosePicture = "gsettings set org.cinnamon.desktop.background picture-uri \"file://$1\"",
          .fileManager = {"nemo"},
          .menuKey = "super",
          .theme = "gsettings set org.cinnamon.desktop.interface gtk-theme Adwaita$1"};
}

// The shell by itself, which begins with its overview and is not to be disturbed before that is there.
DesktopKind gnome(const std::string& name, const std::string& extensions) {
  return {
      .name = name,
      .environment = {{"XDG_CURRENT_DESKTOP", "GNOME"}},
      .command = {"gnome-shell", "--x11"},
      .files = {{settingsFile, gsettings(extensions)}},
      .helpers = {{"/usr/libexec/gsd-xsettings"}},
      .choosePicture =
          "gsettings set org.gnome.desktop.background picture-uri-dark \"file://$1\"; "
          "gsettings set org.gnome.desktop.background picture-uri \"file://$1\"; "
          "overview() { gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell --method "
          "org.freedesktop.DBus.Properties.$1 org.gnome.Shell OverviewActive $2; }; "
          "case $(overview Get) in *true*) sleep 1; overview Set '<false>' ;; esac",
      .fileManager = {"nautilus"},
      .menuKey = "super",
      .theme =
          "gsettings set org.gnome.desktop.interface color-scheme $([ \"$1\" ] && echo prefer-dark || echo default)"};
}

}  // namespace

const std::vector<DesktopKind>& desktopKinds() {
  static const std::vector<DesktopKind> all{xfce(),
                                            mate(),
                                            lxqt(),
                                            plasma(),
                                            cinnamon(),
                                            gnome("gnome", "'ubuntu-appindicators@ubuntu.com', 'ding@rastersoft.com'"),
                                            gnome("gnome-plain", "")};
  return all;
}

std::map<std::filesystem::path, std::string> commonFiles() {
  std::map<std::filesystem::path, std::string> files{{settingsFile, gsettings("")}};
  for (const char* name : {"nm-applet", "tracker-miner-fs-3", "xscreensaver", "lxqt-xscreensaver-autostart",
                           "baloo_file", "polkit-gnome-authentication-agent-1", "polkit-mate-authentication-agent-1",
                           "polkit-kde-authentication-agent-1", "klipper"})
    files[std::string("autostart/") + name + ".desktop"] =
        "[Desktop Entry]\nType=Application\nName=none\nExec=true\nHidden=true\n";
  return files;
}

}  // namespace hushpane::x11_tests
