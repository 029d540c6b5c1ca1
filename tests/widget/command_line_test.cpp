#include "widget/command_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace hushpane::widget {
namespace {

Command parse(std::vector<const char*> words) {
  return parseCommandLine(words);
}

TEST(WidgetCommandLineTest, WordsBecomeCommands) {
  EXPECT_EQ(parse({}), Command(PrintMode{LineFormat::text}));
  EXPECT_EQ(parse({"--json"}), Command(PrintMode{LineFormat::json}));
  EXPECT_EQ(parse({"--follow"}), Command(FollowMode{LineFormat::text}));
  EXPECT_EQ(parse({"--json", "--follow"}), Command(FollowMode{LineFormat::json}));
  EXPECT_EQ(parse({"--follow", "--json"}), Command(FollowMode{LineFormat::json}));
  for (const auto mode : userModes) EXPECT_EQ(parse({"--set", rawValue(mode).data()}), Command(SetMode{mode}));
  EXPECT_EQ(parse({"--help", "--nonsense"}), Command(ShowHelp{}));
  EXPECT_EQ(parse({"--version"}), Command(ShowVersion{}));
}

TEST(WidgetCommandLineTest, WrongWordsAreNamedInOneLine) {
  const std::vector<std::vector<const char*>> wrong = {{"--nonsense"},
                                                       {"-j"},
                                                       {"focus"},
                                                       {""},
                                                       {"--"},
                                                       {"--json", "focus"},
                                                       {"--set"},
                                                       {"--set", ""},
                                                       {"--set", "reveal"},
                                                       {"--set", "Focus"},
                                                       {"--set", "--json"},
                                                       {"--set=focus"},
                                                       {"--set", "focus", "standard"},
                                                       {"--set", "focus", "--set", "focus"},
                                                       {"--set", "focus", "--json"},
                                                       {"--follow", "--set", "focus"}};
  for (const auto& words : wrong) {
    const auto command = parse(words);
    const auto* error = std::get_if<UsageError>(&command);
    ASSERT_NE(error, nullptr) << words.front() << " and " << words.size() - 1 << " more";
    EXPECT_FALSE(error->message.empty());
    EXPECT_EQ(error->message.find('\n'), std::string::npos);
  }
}

}  // namespace
}  // namespace hushpane::widget
