#include "state/corvane_updater.h"

#include <vector>

#include "localization/language_manager.h"
#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using platform::UpdateAnswer;
using Kind = UpdateAnswer::Kind;

class CorvaneUpdaterTest : public SimulatedProgram {
 protected:
  std::vector<std::string> messages;

  void SetUp() override {
    launch();
    updater().showMessage = [this](std::string message) { messages.push_back(std::move(message)); };
  }
  CorvaneUpdater& updater() { return CorvaneUpdater::shared(); }
  platform::UserNotification answerTo(const UpdateAnswer& answer) {
    desktop->updateService().setAnswer(answer);
    updater().checkForUpdates();
    desktop->drain();
    EXPECT_FALSE(desktop->userNotifications().posted().empty());
    return desktop->userNotifications().posted().back();
  }
};

TEST_F(CorvaneUpdaterTest, EachAnswerIsToldInTheLanguageInUse) {
  const auto newer = answerTo({Kind::newer, "9.1", "https://example.org/9.1"});
  EXPECT_EQ(newer.title, "Update available");
  EXPECT_EQ(newer.body, "Hushpane 9.1 is available.");
  EXPECT_EQ(newer.link, "https://example.org/9.1");
  EXPECT_EQ(newer.linkTitle, "Show update");
  EXPECT_EQ(answerTo({Kind::newer, "9.1", ""}).linkTitle, "") << "nowhere to go";
  desktop->bundle().setInfoString("CFBundleShortVersionString", "1.5");
  EXPECT_EQ(answerTo({Kind::none, "", ""}).body, "Hushpane 1.5 is the newest version.");
  LanguageManager::shared().select("de");
  EXPECT_EQ(answerTo({Kind::unreachable, "", ""}).title, "Suche nach Updates nicht möglich");
  EXPECT_NE(answerTo({Kind::notConfigured, "", ""}).body, answerTo({Kind::unreachable, "", ""}).body);
  EXPECT_TRUE(messages.empty());
}

TEST_F(CorvaneUpdaterTest, WhereNoNotificationIsShownOnlyAUserWhoAskedIsAnswered) {
  desktop->userNotifications().setAbsent(true);
  desktop->updateService().setAnswer({Kind::newer, "9.1", "https://example.org/9.1"});
  desktop->updateService().remind();
  desktop->drain();
  EXPECT_TRUE(messages.empty());
  updater().checkForUpdates();
  desktop->drain();
  EXPECT_EQ(messages, std::vector<std::string>{"Hushpane 9.1 is available.\nhttps://example.org/9.1"});
}

}  // namespace
}  // namespace hushpane::tests
