#include "app/command_line.h"

#include <gtest/gtest.h>

namespace hushpane {
namespace {

Command parse(std::vector<const char*> words) {
  return parseCommandLine(words);
}

TEST(CommandLineTest, WordsBecomeCommands) {
  EXPECT_EQ(parse({}), Command(RunDesktop{}));
  EXPECT_EQ(parse({"hushpane://mode/focus", "other:x"}), Command(RunDesktop{{"hushpane://mode/focus", "other:x"}}));
  EXPECT_EQ(parse({"--sim"}), Command(RunScenario{}));
  EXPECT_EQ(parse({"--out", "d", "--sim", "a.scenario"}), Command(RunScenario{"a.scenario", "d"}));
  EXPECT_EQ(parse({"--sim", "--", "--odd"}), Command(RunScenario{"--odd", "."}));
  EXPECT_EQ(parse({"--help", "--nonsense"}), Command(ShowHelp{}));
  EXPECT_EQ(parse({"--version"}), Command(ShowVersion{}));
}

TEST(CommandLineTest, WrongWordsAreNamedInOneLine) {
  const std::vector<std::vector<const char*>> wrong = {{"--nonsense"},
                                                       {"-x"},
                                                       {"focus"},
                                                       {""},
                                                       {":x"},
                                                       {"1a:x"},
                                                       {"--out", "d"},
                                                       {"--sim", "--out"},
                                                       {"--sim", "--out", ""},
                                                       {"--sim", "a", "b"},
                                                       {"--", "--help"}};
  for (const auto& words : wrong) {
    const auto command = parse(words);
    const auto* error = std::get_if<UsageError>(&command);
    ASSERT_NE(error, nullptr) << words.front();
    EXPECT_FALSE(error->message.empty());
    EXPECT_EQ(error->message.find('\n'), std::string::npos);
  }
}

}  // namespace
}  // namespace hushpane
