#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "app/hushpane_app.h"
#include "desktops/sim/play_scenario.h"
#include "desktops/sim/storage.h"
#include "support/environment.h"

namespace hushpane::sim {
namespace {

TEST(TourTest, PlaysToItsEndAndTakesEveryPicture) {
  const auto resources = std::filesystem::path(HUSHPANE_SOURCE_DIR) / "resources";
  const Environment own("HUSHPANE_RESOURCES", resources.c_str());
  Storage folder;
  std::ostringstream out, err;
  EXPECT_EQ(playScenario(resources / "tour.scenario", folder.folder(), {HushpaneApp::launch}, out, err), 0);
  EXPECT_EQ(err.str(), "");
  const auto text = out.str();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 25);
}

}  // namespace
}  // namespace hushpane::sim
