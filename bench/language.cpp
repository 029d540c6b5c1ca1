// The texts of one language read from their folder, as at the start and at each choice of a language. Needs no display.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bench/figure.h"
#include "bench/timings.h"
#include "desktops/shared/resource_bundle.h"
#include "localization/supported_language.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
namespace fs = std::filesystem;

constexpr double limit = 0.005;  // seconds
constexpr const char* resources = HUSHPANE_SOURCE_DIR "/resources";

fs::path fileOf(std::string_view code) {
  return fs::path(resources) / (std::string(code) + ".lproj") / "Localizable.strings";
}

// The language with the longest file.
std::string longestLanguage() {
  const auto size = [](const SupportedLanguage& language) { return fs::file_size(fileOf(language.code)); };
  return std::string(std::ranges::max_element(supportedLanguages, {}, size)->code);
}

std::string bytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

int main() {
  const desktops::ResourceBundle bundle(resources);
  const auto code = longestLanguage();
  benchmark::RegisterBenchmark("load", [&](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(bundle.localizedStrings(code));
  });
  benchmark::RegisterBenchmark("bytes", [&](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(bytesOf(fileOf(code)));
  });
  auto times = runBenchmarks(TimeOf::processor);
  const double load = times["load"], bytes = times["bytes"];
  print({"texts of a language (" + code + "): loaded", text(load * 1e3, "ms", 3),
         "reading the bytes of the file: " + text(bytes * 1e3, "ms", 3), load / bytes, "under 5 ms", load < limit});
}
