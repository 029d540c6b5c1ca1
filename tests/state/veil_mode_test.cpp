#include <gtest/gtest.h>

#include "input/reveal_modifier.h"
#include "state/rendered_state.h"
#include "state/surface_settings.h"

namespace hushpane {
namespace {

TEST(VeilModeTest, OnlyTheExactTextNamesAMode) {
  for (const VeilMode mode : allCases) EXPECT_EQ(fromRawValue<VeilMode>(rawValue(mode)), mode);
  for (const auto* text : {"", "Focus", " focus", "focus ", "cleandesktop", "clean", "standard\n"})
    EXPECT_EQ(fromRawValue<VeilMode>(text), std::nullopt) << text;
  EXPECT_EQ(fromRawValue<VeilMode>("reveal"), VeilMode::reveal);
  EXPECT_FALSE(isUserMode(VeilMode::reveal));
}

TEST(VeilModeTest, TheHeldModifierWinsOverTheChosenMode) {
  for (const VeilMode mode : allCases)
    EXPECT_EQ(resolveRenderedState(mode, true), (RenderedState{false, false, VeilMode::reveal}));
  EXPECT_EQ(resolveRenderedState(VeilMode::standard, false), (RenderedState{false, false, VeilMode::standard}));
  EXPECT_EQ(resolveRenderedState(VeilMode::cleanDesktop, false), (RenderedState{true, false, VeilMode::cleanDesktop}));
  EXPECT_EQ(resolveRenderedState(VeilMode::focus, false), (RenderedState{false, true, VeilMode::focus}));
  EXPECT_EQ(resolveRenderedState(VeilMode::reveal, false), (RenderedState{false, false, VeilMode::reveal}));
}

TEST(RevealModifierTest, AnUnknownTextIsOption) {
  EXPECT_EQ(revealModifierFrom("command"), RevealModifier::command);
  for (const auto* text : {"", "fn", "Command", "alt"})
    EXPECT_EQ(revealModifierFrom(text), RevealModifier::option) << text;
}

}  // namespace
}  // namespace hushpane
