#include "desktops/x11/ansi_keys.h"

#include <algorithm>
#include <array>

namespace hushpane::x11 {

namespace {

struct Key {
  std::string_view name;
  std::uint16_t virtualCode;
};

constexpr std::array keys{
    Key{"AC01", 0},   Key{"AC02", 1},   Key{"AC03", 2},   Key{"AC04", 3},   Key{"AC06", 4},   Key{"AC05", 5},
    Key{"AB01", 6},   Key{"AB02", 7},   Key{"AB03", 8},   Key{"AB04", 9},   Key{"LSGT", 10},  Key{"AB05", 11},
    Key{"AD01", 12},  Key{"AD02", 13},  Key{"AD03", 14},  Key{"AD04", 15},  Key{"AD06", 16},  Key{"AD05", 17},
    Key{"AE01", 18},  Key{"AE02", 19},  Key{"AE03", 20},  Key{"AE04", 21},  Key{"AE06", 22},  Key{"AE05", 23},
    Key{"AE12", 24},  Key{"AE09", 25},  Key{"AE07", 26},  Key{"AE11", 27},  Key{"AE08", 28},  Key{"AE10", 29},
    Key{"AD12", 30},  Key{"AD09", 31},  Key{"AD07", 32},  Key{"AD11", 33},  Key{"AD08", 34},  Key{"AD10", 35},
    Key{"RTRN", 36},  Key{"AC09", 37},  Key{"AC07", 38},  Key{"AC11", 39},  Key{"AC08", 40},  Key{"AC10", 41},
    Key{"BKSL", 42},  Key{"AB08", 43},  Key{"AB10", 44},  Key{"AB06", 45},  Key{"AB07", 46},  Key{"AB09", 47},
    Key{"TAB", 48},   Key{"SPCE", 49},  Key{"TLDE", 50},  Key{"BKSP", 51},  Key{"ESC", 53},   Key{"RWIN", 54},
    Key{"LWIN", 55},  Key{"LFSH", 56},  Key{"CAPS", 57},  Key{"LALT", 58},  Key{"LCTL", 59},  Key{"RTSH", 60},
    Key{"RALT", 61},  Key{"RCTL", 62},  Key{"FK17", 64},  Key{"KPDL", 65},  Key{"KPMU", 67},  Key{"KPAD", 69},
    Key{"NMLK", 71},  Key{"VOL+", 72},  Key{"VOL-", 73},  Key{"MUTE", 74},  Key{"KPDV", 75},  Key{"KPEN", 76},
    Key{"KPSU", 78},  Key{"FK18", 79},  Key{"FK19", 80},  Key{"KPEQ", 81},  Key{"KP0", 82},   Key{"KP1", 83},
    Key{"KP2", 84},   Key{"KP3", 85},   Key{"KP4", 86},   Key{"KP5", 87},   Key{"KP6", 88},   Key{"KP7", 89},
    Key{"FK20", 90},  Key{"KP8", 91},   Key{"KP9", 92},   Key{"AE13", 93},  Key{"AB11", 94},  Key{"KPCO", 95},
    Key{"FK05", 96},  Key{"FK06", 97},  Key{"FK07", 98},  Key{"FK03", 99},  Key{"FK08", 100}, Key{"FK09", 101},
    Key{"FK11", 103}, Key{"FK13", 105}, Key{"FK16", 106}, Key{"FK14", 107}, Key{"FK10", 109}, Key{"FK12", 111},
    Key{"FK15", 113}, Key{"INS", 114},  Key{"HOME", 115}, Key{"PGUP", 116}, Key{"DELE", 117}, Key{"FK04", 118},
    Key{"END", 119},  Key{"FK02", 120}, Key{"PGDN", 121}, Key{"FK01", 122}, Key{"LEFT", 123}, Key{"RGHT", 124},
    Key{"DOWN", 125}, Key{"UP", 126},
};

}  // namespace

std::optional<std::uint16_t> virtualKeyCode(std::string_view keyName) {
  const auto* found = std::ranges::find(keys, keyName, &Key::name);
  return found == keys.end() ? std::nullopt : std::optional(found->virtualCode);
}

}  // namespace hushpane::x11
