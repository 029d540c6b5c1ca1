#include "desktops/x11/desktop_scale.h"

#include <gtest/gtest.h>

#include <string>

namespace hushpane::x11::tests {
namespace {

TEST(DesktopScaleTest, IsInQuartersAndNeverExtreme) {
  for (const auto& [dpi, scale] : {std::pair{"96", 1.0},
                                   {"192", 2.0},
                                   {"144", 1.5},
                                   {"120.5", 1.25},
                                   {"100", 1.0},
                                   {"109", 1.25},
                                   {"48", 1.0},
                                   {"1", 1.0},
                                   {"384", 4.0},
                                   {"1e9", 4.0},
                                   {"0", 1.0},
                                   {"-192", 1.0},
                                   {"nan", 1.0},
                                   {"inf", 1.0},
                                   {"1e999", 1.0},
                                   {"", 1.0},
                                   {"a", 1.0}})
    EXPECT_EQ(scaleIn(std::string("Xft.dpi:\t") + dpi + "\n"), scale) << dpi;
}

TEST(DesktopScaleTest, IsFoundAmongOtherResources) {
  EXPECT_EQ(scaleIn("*customization: -color\nXft.antialias:1\nXft.dpi : 192\nXft.dpiX: 384\nxterm*Xft.dpi: 96"), 2);
  EXPECT_EQ(scaleIn("Xft.dpi: 96\nXft.dpi: 192"), 2) << "the last one counts";
  for (const char* none : {"", "\n\n", "Xft.dpi", "Xft.dpi 192", "Xft.dpi:", "Xft.dp: 192"})
    EXPECT_EQ(scaleIn(none), 1);
}

}  // namespace
}  // namespace hushpane::x11::tests
