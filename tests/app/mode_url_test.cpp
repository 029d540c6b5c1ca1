#include "app/mode_url.h"

#include <gtest/gtest.h>

namespace hushpane {
namespace {

TEST(ModeUrlTest, SchemeHostAndLastComponentDecide) {
  for (const auto* url : {"hushpane://mode/focus", "hushpane://mode/focus/", "hushpane://mode//focus",
                          "hushpane://mode/a/b/focus?x=1", "hushpane://mode/focus#top", "hushpane://mode/%66ocus",
                          "hushpane://me@mode:80/focus", "hushpane://mode/standard/focus?mode=standard/reveal"})
    EXPECT_EQ(requestedMode(url), VeilMode::focus) << url;
  EXPECT_EQ(requestedMode("hushpane://mode/standard"), VeilMode::standard);
  EXPECT_EQ(requestedMode("hushpane://mode/cleanDesktop"), VeilMode::cleanDesktop);
}

TEST(ModeUrlTest, AnythingElseAsksForNothing) {
  for (const auto* url : {"",
                          "focus",
                          "hushpane",
                          "hushpane:",
                          "hushpane:mode/focus",
                          "hushpane:/mode/focus",
                          "hushpane:///mode/focus",
                          "Hushpane://mode/focus",
                          "HUSHPANE://mode/focus",
                          "http://mode/focus",
                          "hushpane://modes/focus",
                          "hushpane://Mode/focus",
                          "hushpane://mode",
                          "hushpane://mode/",
                          "hushpane://mode?focus",
                          "hushpane://mode/Focus",
                          "hushpane://mode/focus ",
                          " hushpane://mode/focus",
                          "hushpane://mode/reveal",
                          "hushpane://mode/focus/x",
                          "hushpane://mode/focus%",
                          "hushpane://mode/focus%4",
                          "hushpane://mode/%zzfocus",
                          "hushpane://mode/%2bocus",
                          "hushpane://mode:x/focus",
                          "hushpane://mode/focus%00",
                          "hushpane://[mode]/focus",
                          "hushpane://mode/standard%2Ffocus"})
    EXPECT_EQ(requestedMode(url), std::nullopt) << url;
}

}  // namespace
}  // namespace hushpane
