#include "widget/status_line.h"

#include <gtest/gtest.h>

namespace hushpane::widget {
namespace {

TEST(StatusLineTest, SaysTheModeToScriptsAndToBars) {
  EXPECT_EQ(statusLine(VeilMode::cleanDesktop, LineFormat::text), "cleanDesktop");
  EXPECT_EQ(statusLine(VeilMode::standard, LineFormat::json),
            R"({"text":"Standard","alt":"standard","class":"standard","tooltip":"Hushpane: Standard"})");
  EXPECT_EQ(
      statusLine(VeilMode::cleanDesktop, LineFormat::json),
      R"({"text":"Clean Desktop","alt":"cleanDesktop","class":"cleanDesktop","tooltip":"Hushpane: Clean Desktop"})");
  EXPECT_EQ(statusLine(VeilMode::focus, LineFormat::json),
            R"({"text":"Focus","alt":"focus","class":"focus","tooltip":"Hushpane: Focus"})");
}

}  // namespace
}  // namespace hushpane::widget
