#include "tests/managers/impossible.h"

#include "tests/x11/judge_case.h"

namespace hushpane::x11_tests {
namespace {

constexpr const char* hidesOrdinary =
    "It hides all ordinary windows, and the cover is one of them: all others it keeps on top.";

constexpr Impossible list[]{
    {"i3-*", "*minimised windows", "i3 minimises no windows."},
    {"i3-*", "maximised", "i3 maximises no windows."},
    {"i3-*", "*show desktop", "i3 has no \"show desktop\"."},
    {"i3-*", "desktop window", "i3 takes the window of the desktop for an ordinary one."},
    {"awesome*", "*show desktop", "awesome has no \"show desktop\"."},
    {"fluxbox*", "*show desktop", "fluxbox has no \"show desktop\"."},
    {"fluxbox*", "300 windows",
     "fluxbox is busy for half a minute with 300 new windows, without a cover too, and answers nobody meanwhile."},
    {"muffin", "*second workspace", "muffin without its shell draws the windows of the workspace that was left."},
    {"twm", "*show desktop", "twm has no \"show desktop\"."},
    {"twm", "*second workspace", "twm has no workspaces."},
    {"twm", "full screen", "twm knows no full screen."},
    {"twm", "maximised", "twm maximises no window on request."},
    {"twm", "docks", "twm takes a dock for an ordinary window."},
    {"twm", "desktop window", "twm takes the window of the desktop for an ordinary one."},
    {"mutter", "*show desktop", hidesOrdinary},
    {"muffin", "*show desktop", hidesOrdinary},
    {"metacity*", "*show desktop", hidesOrdinary},
    {"kwin-composited", "*show desktop", hidesOrdinary},
    {"kwin", "focus, show desktop",
     "kwin brings the window of the desktop to the front, and so makes it what is worked in."},
    {"kwin", "200 switches",
     "kwin puts the window of the desktop above the cover at each activation; it is back within a few milliseconds."},
    {"kwin-composited", "compositor comes and goes",
     "While it is suspended by hand, kwin goes on to say that it composites, so nobody blends the cover, which is "
     "black."},
};

}  // namespace

std::optional<std::string> whyImpossible(const std::string& combination, const std::string& testCase) {
  return reasonOf(list, combination, testCase);
}

}  // namespace hushpane::x11_tests
