#include "desktops/x11/ansi_key_codes.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

namespace hushpane::x11 {

namespace {

constexpr unsigned evdevOffset = 8;  // between the kernel's code of a key and X's

struct Key {
  std::uint16_t kernelCode;
  std::uint16_t virtualCode;
};

constexpr std::array keys{
    Key{KEY_A, 0},         Key{KEY_S, 1},           Key{KEY_D, 2},           Key{KEY_F, 3},
    Key{KEY_H, 4},         Key{KEY_G, 5},           Key{KEY_Z, 6},           Key{KEY_X, 7},
    Key{KEY_C, 8},         Key{KEY_V, 9},           Key{KEY_102ND, 10},      Key{KEY_B, 11},
    Key{KEY_Q, 12},        Key{KEY_W, 13},          Key{KEY_E, 14},          Key{KEY_R, 15},
    Key{KEY_Y, 16},        Key{KEY_T, 17},          Key{KEY_1, 18},          Key{KEY_2, 19},
    Key{KEY_3, 20},        Key{KEY_4, 21},          Key{KEY_6, 22},          Key{KEY_5, 23},
    Key{KEY_EQUAL, 24},    Key{KEY_9, 25},          Key{KEY_7, 26},          Key{KEY_MINUS, 27},
    Key{KEY_8, 28},        Key{KEY_0, 29},          Key{KEY_RIGHTBRACE, 30}, Key{KEY_O, 31},
    Key{KEY_U, 32},        Key{KEY_LEFTBRACE, 33},  Key{KEY_I, 34},          Key{KEY_P, 35},
    Key{KEY_ENTER, 36},    Key{KEY_L, 37},          Key{KEY_J, 38},          Key{KEY_APOSTROPHE, 39},
    Key{KEY_K, 40},        Key{KEY_SEMICOLON, 41},  Key{KEY_BACKSLASH, 42},  Key{KEY_COMMA, 43},
    Key{KEY_SLASH, 44},    Key{KEY_N, 45},          Key{KEY_M, 46},          Key{KEY_DOT, 47},
    Key{KEY_TAB, 48},      Key{KEY_SPACE, 49},      Key{KEY_GRAVE, 50},      Key{KEY_BACKSPACE, 51},
    Key{KEY_ESC, 53},      Key{KEY_RIGHTMETA, 54},  Key{KEY_LEFTMETA, 55},   Key{KEY_LEFTSHIFT, 56},
    Key{KEY_CAPSLOCK, 57}, Key{KEY_LEFTALT, 58},    Key{KEY_LEFTCTRL, 59},   Key{KEY_RIGHTSHIFT, 60},
    Key{KEY_RIGHTALT, 61}, Key{KEY_RIGHTCTRL, 62},  Key{KEY_FN, 63},         Key{KEY_F17, 64},
    Key{KEY_KPDOT, 65},    Key{KEY_KPASTERISK, 67}, Key{KEY_KPPLUS, 69},     Key{KEY_NUMLOCK, 71},
    Key{KEY_VOLUMEUP, 72}, Key{KEY_VOLUMEDOWN, 73}, Key{KEY_MUTE, 74},       Key{KEY_KPSLASH, 75},
    Key{KEY_KPENTER, 76},  Key{KEY_KPMINUS, 78},    Key{KEY_F18, 79},        Key{KEY_F19, 80},
    Key{KEY_KPEQUAL, 81},  Key{KEY_KP0, 82},        Key{KEY_KP1, 83},        Key{KEY_KP2, 84},
    Key{KEY_KP3, 85},      Key{KEY_KP4, 86},        Key{KEY_KP5, 87},        Key{KEY_KP6, 88},
    Key{KEY_KP7, 89},      Key{KEY_F20, 90},        Key{KEY_KP8, 91},        Key{KEY_KP9, 92},
    Key{KEY_YEN, 93},      Key{KEY_RO, 94},         Key{KEY_KPCOMMA, 95},    Key{KEY_F5, 96},
    Key{KEY_F6, 97},       Key{KEY_F7, 98},         Key{KEY_F3, 99},         Key{KEY_F8, 100},
    Key{KEY_F9, 101},      Key{KEY_F11, 103},       Key{KEY_F13, 105},       Key{KEY_F16, 106},
    Key{KEY_F14, 107},     Key{KEY_F10, 109},       Key{KEY_F12, 111},       Key{KEY_F15, 113},
    Key{KEY_INSERT, 114},  Key{KEY_HOME, 115},      Key{KEY_PAGEUP, 116},    Key{KEY_DELETE, 117},
    Key{KEY_F4, 118},      Key{KEY_END, 119},       Key{KEY_F2, 120},        Key{KEY_PAGEDOWN, 121},
    Key{KEY_F1, 122},      Key{KEY_LEFT, 123},      Key{KEY_RIGHT, 124},     Key{KEY_DOWN, 125},
    Key{KEY_UP, 126},
};

}  // namespace

std::optional<std::uint16_t> virtualKeyCode(xcb_keycode_t keycode) {
  const auto matches = [keycode](const Key& key) { return key.kernelCode + evdevOffset == keycode; };
  const auto* found = std::find_if(keys.begin(), keys.end(), matches);
  return found == keys.end() ? std::nullopt : std::optional(found->virtualCode);
}

}  // namespace hushpane::x11
