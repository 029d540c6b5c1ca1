// A page of the panel: built, laid out and painted, and a frame of it while it moves. Needs no display.

#include <memory>
#include <string>
#include <utility>

#include "bench/figure.h"
#include "bench/timings.h"
#include "declarative/host.h"
#include "desktops/shared/cairo_canvas.h"
#include "desktops/sim/sim_platform.h"
#include "localization/localization_key.h"
#include "state/preferences_store.h"
#include "ui/controls/pell_switch_style.h"
#include "ui/global_accent.h"
#include "ui/localized.h"
#include "ui/localized_root.h"
#include "ui/menu/mode_pod_view.h"
#include "ui/menu/surface_controls_card.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
using declarative::Element;
using declarative::Host;
using platform::Point;

constexpr double frame = 1.0 / 60;  // seconds
constexpr double scale = 2;         // pixels per point
constexpr double width = 360;       // points

// The pods, the card with its wallpapers, and as many rows again as the panel's other pages have.
Element fullestPage() {
  std::vector<Element> podRow, rows;
  for (const VeilMode mode : userModes) podRow.push_back(Element(ModePodView{mode, mode == VeilMode::focus, [] {}}));
  rows.push_back(declarative::horizontalStack({.spacing = 10}, podRow));
  rows.push_back(Element(SurfaceControlsCard{VeilMode::focus, PreferencesStore::shared(), globalAccent}));
  for (int row = 0; row < 6; ++row)
    rows.push_back(toggle(declarative::text(localized("Live Gradient"_key)),
                          {[row] { return row % 2 == 0; }, [](bool) {}}, PellSwitchStyle{globalAccent, 1}));
  return declarative::verticalStack({.alignment = declarative::HorizontalAlignment::leading, .spacing = 12}, rows)
      .padding(12)
      .frame({.width = width});
}

class Bench {
 public:
  Bench() {
    PreferencesStore::shared().focusSurfaceRaw = std::string("wallpaper");
    desktop.taskQueue().setAutomatic(true);
    page = makePage();
    desktop.advance(1);
    const auto size = page->size();
    picture = {static_cast<int>(size.width * scale), static_cast<int>(size.height * scale), {}};
    picture.pixels.resize(static_cast<std::size_t>(picture.width) * picture.height);
    paintAll();
  }

  std::unique_ptr<Host> makePage() {
    auto host = std::make_unique<Host>(Host::Services{desktop.mainQueue(), desktop.frameClock(), desktop.textEngine()},
                                       LocalizedRoot{fullestPage}, declarative::Environment{}, [] {});
    host->setScale(scale);
    return host;
  }
  void renderAgain() {
    PreferencesStore::shared().objectWillChange();
    page->update();
  }
  void paintAll() {
    desktops::CairoCanvas canvas(picture, scale);
    page->paint(canvas, {0, 0, page->size().width, page->size().height});
    page->takeDamage();
  }
  // The next frame of a spring: the highlight of the card's picker slides to and fro.
  void paintFrame() {
    if (desktop.now() >= clickTime) {
      isLeft = !isLeft;
      const Point item{isLeft ? 150.0 : 290.0, 100};
      page->pointerDown(item);
      page->pointerUp(item);
      clickTime = desktop.now() + 0.3;
    }
    desktop.advance(frame);
    const auto damage = page->takeDamage();
    desktops::CairoCanvas canvas(picture, scale, damage);
    canvas.clear();
    page->paint(canvas, damage);
  }

  sim::Storage storage;
  sim::SimPlatform desktop{storage};
  std::unique_ptr<Host> page;
  platform::Image picture;
  bool isLeft = true;
  double clickTime = 0;
};

template <typename Work>
void measure(const char* name, Bench& bench, const Work& work) {
  benchmark::RegisterBenchmark(name, [&bench, work](benchmark::State& state) {
    for (auto _ : state) {
      work(bench);
      benchmark::ClobberMemory();
    }
  });
}

void printShare(const char* what, double time) {
  print({what, text(time * 1e3, "ms", 2), "a frame of 1/60 s", time / frame, "under 0.25", time / frame < 0.25});
}

}  // namespace

int main() {
  Bench bench;
  measure("build", bench, [](Bench& b) { benchmark::DoNotOptimize(b.makePage()); });
  measure("render", bench, [](Bench& b) { b.renderAgain(); });
  measure("paint", bench, [](Bench& b) { b.paintAll(); });
  measure("spring", bench, [](Bench& b) { b.paintFrame(); });
  auto times = runBenchmarks(TimeOf::processor);
  printShare("fullest page: built and laid out anew", times["build"]);
  printShare("fullest page: rendered again after a change", times["render"]);
  printShare("fullest page: painted whole at scale 2", times["paint"]);
  printShare("fullest page: a frame of a spring at scale 2", times["spring"]);
}
