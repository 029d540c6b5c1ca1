#include <sys/resource.h>
#include <unistd.h>

#include <iostream>
#include <string>

#include "update/feed_fetch.h"
#include "update/update_choice.h"

namespace {

using namespace hushpane::update;

constexpr int usageExit = 2;
constexpr unsigned longestRun = 30;  // seconds
constexpr rlim_t mostProcessorSeconds = 10;

// What a stranger sends can keep this program busy no longer than that.
void limitResources() {
  alarm(longestRun);
  const rlimit processor{mostProcessorSeconds, mostProcessorSeconds}, none{0, 0};
  setrlimit(RLIMIT_CPU, &processor);
  setrlimit(RLIMIT_CORE, &none);
}

}  // namespace

// Looks for a newer version and prints what it found in one line. Writes, installs and remembers nothing.
int main(int count, char** words) {
  if (count != 4) {
    std::cerr << "usage: hushpane-update-check ADDRESS PUBLIC-KEY CURRENT-VERSION\n"
                 "Started by hushpane; prints whether the feed at ADDRESS has a newer version.\n";
    return usageExit;
  }
  limitResources();
  const std::string address = words[1], key = words[2], version = words[3];
  const auto feed = fetchFeed(address, "Hushpane/" + version);
  std::cout << (feed ? chooseUpdate(*feed, key, version) : unreachableLine);
  return std::cout.flush() ? 0 : 1;
}
