#include "desktops/x11/display_id.h"

#include <algorithm>

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t offsetBasis = 2166136261u;
constexpr std::uint32_t prime = 16777619u;

void hash(std::uint32_t& state, std::uint8_t byte) {
  state = (state ^ byte) * prime;
}

// The four descriptors of 18 bytes in the EDID's base block.
constexpr std::size_t firstDescriptor = 54;
constexpr std::size_t descriptorSize = 18;
constexpr std::size_t baseBlockEnd = 126;
constexpr std::size_t textOffset = 5;
constexpr std::uint8_t productNameTag = 0xFC;

}  // namespace

platform::DisplayId displayIdOf(std::string_view connector, std::span<const std::uint8_t> edid) {
  std::uint32_t state = offsetBasis;
  for (const char letter : connector) hash(state, static_cast<std::uint8_t>(letter));
  hash(state, 0);
  for (const auto byte : edid) hash(state, byte);
  return state;
}

std::string productNameOf(std::span<const std::uint8_t> edid) {
  if (edid.size() < baseBlockEnd) return {};
  for (std::size_t at = firstDescriptor; at + descriptorSize <= baseBlockEnd; at += descriptorSize) {
    const auto descriptor = edid.subspan(at, descriptorSize);
    if (descriptor[0] != 0 || descriptor[1] != 0 || descriptor[3] != productNameTag) continue;
    const auto text = descriptor.subspan(textOffset);
    std::string name(text.begin(), std::find(text.begin(), text.end(), '\n'));
    std::erase_if(name, [](unsigned char letter) { return letter < ' ' || letter > '~'; });
    while (!name.empty() && name.back() == ' ') name.pop_back();
    return name;
  }
  return {};
}

}  // namespace hushpane::x11
