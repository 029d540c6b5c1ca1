// What it takes to compute the hue of a large photograph, and to show it as the wallpaper, against decoding all of it.

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <stdexcept>
#include <string>

#include "bench/figure.h"
#include "bench/timings.h"
#include "desktops/shared/image_file.h"
#include "overlay/accent_hue.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
using Work = std::function<void()>;

constexpr int width = 6000, height = 4000;  // of the photograph, in pixels
constexpr int rounds = 5;
constexpr double kilobytesPerMegabyte = 1024;
constexpr double largestForHue = 8, largestForWallpaper = 40;  // megabytes

// Soft hills of colour with some grain, about as hard to pack as a photograph.
void writePhotograph(const std::filesystem::path& file) {
  std::minstd_rand random(1);
  GdkPixbuf* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      guchar* pixel = gdk_pixbuf_get_pixels(pixbuf) + y * gdk_pixbuf_get_rowstride(pixbuf) + 3 * x;
      const auto grain = static_cast<int>(random() % 24);
      pixel[0] = static_cast<guchar>(40 + x * 100 / width + grain);
      pixel[1] = static_cast<guchar>(60 + y * 80 / height + grain);
      pixel[2] = static_cast<guchar>(150 + (x + y) % 700 / 10 + grain);
    }
  const bool isWritten = gdk_pixbuf_save(pixbuf, file.c_str(), "jpeg", nullptr, "quality", "90", nullptr);
  g_object_unref(pixbuf);
  if (!isWritten) throw std::runtime_error("the photograph cannot be written");
}

double statusOf(const std::string& name) {
  std::ifstream lines("/proc/self/status");
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(name)) return std::stod(line.substr(name.size()));
  return 0;
}

// Megabytes at most while the work is done, above what there was before.
double peakOf(const Work& work) {
  std::vector<double> peaks;
  for (int round = 0; round < rounds; ++round) {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    const double before = statusOf("VmRSS:");
    work();
    peaks.push_back((statusOf("VmHWM:") - before) / kilobytesPerMegabyte);
  }
  return median(peaks);
}

void decodeAll(const std::filesystem::path& file) {
  if (!desktops::decodeImageFile(file)) throw std::runtime_error("the photograph cannot be read");
}

void findHue(const std::filesystem::path& file) {
  const auto small = desktops::scaleImageFile(file, accentHueSide, accentHueSide);
  if (!small || !accentHue(*small)) throw std::runtime_error("the photograph has no hue");
}

void loadWallpaper(const std::filesystem::path& file) {
  if (!desktops::loadImageFile(file, 1920, 1080)) throw std::runtime_error("the photograph cannot be shown");
}

void compare(const std::string& what, double time, double wholeTime, const Work& work, double wholePeak, double limit) {
  print({what, text(time * 1e3, "ms"), "decoding all of it: " + text(wholeTime * 1e3, "ms"), time / wholeTime,
         "under 1", time < wholeTime});
  const double peak = peakOf(work);
  print({what + ", at most", text(peak, "MB"), "decoding all of it: " + text(wholePeak, "MB"), peak / wholePeak,
         "under " + text(limit, "MB", 0), peak < limit});
}

}  // namespace

int main() {
  const auto file = std::filesystem::temp_directory_path() / ("hushpane-photograph-" + std::to_string(getpid()));
  writePhotograph(file);
  const std::map<std::string, Work> works{{"whole", [file] { decodeAll(file); }},
                                          {"hue", [file] { findHue(file); }},
                                          {"wallpaper", [file] { loadWallpaper(file); }}};
  for (const auto& [name, work] : works)
    benchmark::RegisterBenchmark(name.c_str(), [work = work](benchmark::State& state) {
      for (auto _ : state) work();
    });
  auto times = runBenchmarks(TimeOf::processor);
  const double wholePeak = peakOf(works.at("whole"));
  compare("hue of a JPEG of 6000x4000", times["hue"], times["whole"], works.at("hue"), wholePeak, largestForHue);
  compare("wallpaper of 1920x1080 from it", times["wallpaper"], times["whole"], works.at("wallpaper"), wholePeak,
          largestForWallpaper);
  std::filesystem::remove(file);
}
