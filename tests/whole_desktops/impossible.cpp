#include "tests/whole_desktops/impossible.h"

#include "tests/x11/judge_case.h"

namespace hushpane::x11_tests {
namespace {

constexpr const char* hidesOrdinary =
    "It hides all ordinary windows, and the cover is one of them: all others it keeps on top.";

constexpr Impossible list[]{
    {"plasma*", "*, show desktop", hidesOrdinary},
    {"gnome*", "*, show desktop", hidesOrdinary},
    {"cinnamon*", "*, show desktop", hidesOrdinary},
    {"gnome*", "switch by task bar", "GNOME has no list of windows."},
    {"cinnamon*", "switch by task bar",
     "Cinnamon's list of windows does not tell where it shows one, so that the suite finds nothing to click."},
    {"gnome-plain*", "panel by its icon", "GNOME shows icons of programs only with an extension."},
    {"gnome-plain*", "icon*", "GNOME shows icons of programs only with an extension."},
    {"gnome-plain*", "first launch", "Without an icon there is nothing for the bubble to point at."},
    {"gnome-plain*", "click on the desktop", "A click beside all windows leaves the window active."},
    {"lxqt*", "*dark theme", "LXQt has no dark theme that it tells other programs of."},
    {"xfce*", "focus by its keys", "Xfce has given Control-Alt-F to its file manager."},
};

}  // namespace

std::optional<std::string> whyImpossibleIn(const std::string& desktop, const std::string& testCase) {
  return reasonOf(list, desktop, testCase);
}

}  // namespace hushpane::x11_tests
