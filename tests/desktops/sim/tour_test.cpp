#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "app/hushpane_app.h"
#include "desktops/sim/play_scenario.h"
#include "desktops/sim/storage.h"

namespace hushpane::sim {
namespace {

TEST(TourTest, PlaysToItsEndAndTakesEveryPicture) {
  const auto resources = std::filesystem::path(HUSHPANE_SOURCE_DIR) / "resources";
  ASSERT_EQ(setenv("HUSHPANE_RESOURCES", resources.c_str(), 1), 0);
  Storage folder;
  std::ostringstream out, err;
  EXPECT_EQ(playScenario(resources / "tour.scenario", folder.folder(), {HushpaneApp::launch}, out, err), 0);
  EXPECT_EQ(err.str(), "");
  const auto text = out.str();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 25);
}

}  // namespace
}  // namespace hushpane::sim
