#include "tests/x11/judge_case.h"

#include <fnmatch.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <iostream>

#include "tests/x11/wait.h"

namespace hushpane::x11_tests {

bool judgeCase(const std::string& name, const std::optional<std::string>& impossible,
               const std::function<void()>& body) {
  const auto begin = Clock::now();
  testing::TestPartResultArray parts;
  {
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &parts);
    try {
      body();
    } catch (const std::exception& failure) {
      ADD_FAILURE() << failure.what();
    }
  }
  bool hasFailed = false;
  for (int index = 0; index < parts.size(); ++index) {
    const auto& part = parts.GetTestPartResult(index);
    if (!part.failed()) continue;
    if (!impossible) ADD_FAILURE_AT(part.file_name(), part.line_number()) << name << ": " << part.message();
    hasFailed = true;
  }
  if (impossible && !hasFailed) ADD_FAILURE() << name << " works now: take it off the list of what is impossible";
  const std::string result = !hasFailed ? "works" : impossible ? "impossible: " + *impossible : "fails";
  testing::Test::RecordProperty("case " + name, result);
  std::cout << "  " << name << ": " << result << ", " << (Clock::now() - begin) / 1ms << " ms" << std::endl;
  return !hasFailed;
}

std::optional<std::string> reasonOf(std::span<const Impossible> list, const std::string& place,
                                    const std::string& testCase) {
  for (const Impossible& entry : list)
    if (fnmatch(entry.testCase, testCase.c_str(), 0) == 0 && fnmatch(entry.places, place.c_str(), 0) == 0)
      return entry.reason;
  return std::nullopt;
}

}  // namespace hushpane::x11_tests
