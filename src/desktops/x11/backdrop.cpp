#include "desktops/x11/backdrop.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace hushpane::x11 {

namespace {

int divideDown(int value, int by) {
  return value >= 0 ? value / by : -((-value + by - 1) / by);
}

int divideUp(int value, int by) {
  return -divideDown(-value, by);
}

// All units that touch the area.
PixelRect unitsAround(const PixelRect& area, int scale) {
  const int left = divideDown(area.x, scale);
  const int top = divideDown(area.y, scale);
  return {left, top, divideUp(area.right(), scale) - left, divideUp(area.bottom(), scale) - top};
}

// The units that lie in the area as a whole.
PixelRect unitsInside(const PixelRect& area, int scale) {
  const int left = divideUp(area.x, scale);
  const int top = divideUp(area.y, scale);
  return {left, top, std::max(0, divideDown(area.right(), scale) - left),
          std::max(0, divideDown(area.bottom(), scale) - top)};
}

bool looksTheSame(const StackEntry& a, const StackEntry& b) {
  return a.id == b.id && a.bounds == b.bounds && a.border == b.border && a.contentGeneration == b.contentGeneration &&
         a.facts.opacity == b.facts.opacity && a.facts.frame == b.facts.frame;
}

// The application's part of a framed window.
PixelRect insideOf(const StackEntry& entry) {
  const auto& frame = entry.facts.frame;
  const PixelRect inside{entry.bounds.x + frame.left, entry.bounds.y + frame.top,
                         entry.bounds.width - frame.left - frame.right, entry.bounds.height - frame.top - frame.bottom};
  return inside.isEmpty() ? entry.bounds : inside;
}

std::vector<xcb_rectangle_t> rectanglesOf(const PixelRegion& region) {
  std::vector<xcb_rectangle_t> rectangles;
  for (const auto& rect : region.rects()) rectangles.push_back(rect.toXcb());
  return rectangles;
}

}  // namespace

Backdrop::Backdrop(Connection& connection, Render& render, CoveredWindows& windows, RootBackground& background,
                   std::function<void()> onDamage)
    : connection_(connection),
      render_(render),
      windows_(windows),
      background_(background),
      onDamage_(std::move(onDamage)) {
  backgroundChanges_ = background_.addChangeHandler([this] {
    if (!std::exchange(root_, nullptr)) return;
    markDirty(overlay_);
    onDamage_();
  });
}

void Backdrop::update(BackdropUse use, const PixelRect& overlay, const std::vector<StackEntry>& below,
                      WindowLooks looks) {
  auto before = std::exchange(covered_, {});
  const bool isFresh =
      overlay != std::exchange(overlay_, overlay) || looks != std::exchange(looks_, looks) || use_ != use;
  use_ = use;
  if (use != BackdropUse::none) {
    for (const auto& entry : below) {
      const auto known = std::ranges::find(before, entry.id, [](const Covered& covered) { return covered.entry.id; });
      if (known == before.end())
        covered_.push_back({entry, windows_.cover(entry.id), {}});
      else
        covered_.push_back({entry, known->window, std::move(known->damage)});
      keep(covered_.back(), use);
    }
  }
  if (isFresh)
    markDirty(overlay_);
  else
    markDifferences(before);
  std::ranges::move(before, std::back_inserter(uncovered_));
  if (use != BackdropUse::watch) {
    root_.reset();
    dirty_.clear();
  }
}

void Backdrop::keep(Covered& covered, BackdropUse use) {
  if (use != BackdropUse::watch) return covered.damage.reset();
  if (covered.damage) return;
  covered.damage =
      covered.window->addDamageHandler([this, id = covered.entry.id](const PixelRect& area) { damaged(id, area); });
}

// Where the stacks are the same from the bottom and from the top on, nothing is to be drawn.
void Backdrop::markDifferences(const std::vector<Covered>& before) {
  const auto same = [](const Covered& a, const Covered& b) { return looksTheSame(a.entry, b.entry); };
  const auto [oldFirst, newFirst] = std::mismatch(before.begin(), before.end(), covered_.begin(), covered_.end(), same);
  const auto [oldLast, newLast] = std::mismatch(before.rbegin(), std::make_reverse_iterator(oldFirst),
                                                covered_.rbegin(), std::make_reverse_iterator(newFirst), same);
  for (auto each = oldFirst; each != oldLast.base(); ++each) markDirty(each->entry.bounds);
  for (auto each = newFirst; each != newLast.base(); ++each) markDirty(each->entry.bounds);
}

void Backdrop::markDirty(const PixelRect& onRoot) {
  dirty_.add(onRoot.intersection(overlay_)
                 .translated(-overlay_.x, -overlay_.y)
                 .intersection({0, 0, overlay_.width, overlay_.height}));
}

void Backdrop::damaged(xcb_window_t window, const PixelRect& area) {
  const auto found = std::ranges::find(covered_, window, [](const Covered& covered) { return covered.entry.id; });
  if (found == covered_.end()) return;
  const auto& entry = found->entry;
  const auto onRoot = area.translated(entry.bounds.x + entry.border, entry.bounds.y + entry.border);
  const auto visible = onRoot.intersection(entry.bounds).intersection(overlay_);
  if (visible.isEmpty()) return;
  markDirty(visible);
  onDamage_();
}

xcb_point_t Backdrop::cornerOf(const PixelRect& onRoot) const {
  return {static_cast<std::int16_t>(onRoot.x - overlay_.x), static_cast<std::int16_t>(onRoot.y - overlay_.y)};
}

// From the topmost window down it is found out where each is to be seen; then they are drawn from the root up, so that
// transparent ones lie over what is behind them. Of all others every pixel is drawn once.
void Backdrop::compose(const Surface& target, const PixelRegion& areas, int scale) {
  auto* const server = connection_.get();
  struct Part {
    const Covered& covered;
    Region clip;
  };
  PixelRegion targetAreas;
  for (const auto& area : areas.rects()) targetAreas.add(unitsAround(area, scale));
  const auto rest = makeRegion(connection_, rectanglesOf(targetAreas));
  const auto bounds = areas.bounds().translated(overlay_.x, overlay_.y);
  std::vector<Part> parts;
  for (auto covered = covered_.rbegin(); covered != covered_.rend(); ++covered) {
    const auto& entry = covered->entry;
    if (entry.bounds.intersection(bounds).isEmpty() || covered->window->picture(entry) == XCB_NONE) continue;
    auto clip = regionOf(*covered, scale);
    const auto own = std::exchange(clip, makeRegion(connection_));
    xcb_xfixes_intersect_region(server, rest.get(), own.get(), clip.get());
    if (!isTransparent(entry)) xcb_xfixes_subtract_region(server, rest.get(), own.get(), rest.get());
    parts.push_back({*covered, std::move(clip)});
  }
  xcb_xfixes_set_picture_clip_region(server, target.picture.get(), rest.get(), 0, 0);
  drawRoot(target, scale);
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
    xcb_xfixes_set_picture_clip_region(server, target.picture.get(), part->clip.get(), 0, 0);
    drawWindow(part->covered, target, scale);
  }
  render_.clearClip(target.picture.get());
}

void Backdrop::drawRoot(const Surface& target, int scale) {
  if (!root_) root_ = background_.picture();
  const PixelRect everything{0, 0, target.width, target.height};
  if (*root_) {
    const auto origin = render_.place(root_->get(), scale, cornerOf(PixelRect{}));
    render_.composite(XCB_RENDER_PICT_OP_SRC, root_->get(), XCB_NONE, target.picture.get(), origin, everything);
  } else {
    render_.fill(XCB_RENDER_PICT_OP_SRC, target.picture.get(), platform::black, std::span(&everything, 1));
  }
}

// Without a compositor the server shows the colours of transparent windows as they are.
bool Backdrop::isTransparent(const StackEntry& entry) const {
  return looks_.areBlended && (entry.facts.opacity < 1 || render_.hasAlpha(entry.visual));
}

void Backdrop::drawWindow(const Covered& covered, const Surface& target, int scale) {
  const auto& entry = covered.entry;
  const auto picture = covered.window->picture(entry);
  auto pixels = entry.bounds;
  if (looks_.areFramesPainted && !entry.facts.frame.isEmpty()) {
    drawFrame(entry, picture, target, scale);
    pixels = insideOf(entry);
  }
  const auto area =
      unitsInside(pixels.translated(-overlay_.x, -overlay_.y), scale).intersection({0, 0, target.width, target.height});
  const auto origin = render_.place(picture, scale, cornerOf(entry.bounds));
  Picture mask;
  if (looks_.areBlended && entry.facts.opacity < 1) mask = render_.makeSolid({0, 0, 0, entry.facts.opacity});
  render_.composite(isTransparent(entry) ? XCB_RENDER_PICT_OP_OVER : XCB_RENDER_PICT_OP_SRC, picture, mask.get(),
                    target.picture.get(), origin, area);
}

// Nobody knows what such a frame looks like; most have the colours of what lies beneath the title.
void Backdrop::drawFrame(const StackEntry& entry, xcb_render_picture_t picture, const Surface& target, int scale) {
  const auto inside = insideOf(entry);
  const double narrowing = static_cast<double>(inside.width) / entry.bounds.width;
  const double left = inside.x - entry.bounds.x + narrowing * (overlay_.x - entry.bounds.x);
  const double firstRow = inside.y - entry.bounds.y + 0.5;
  render_.stretch(picture, desktops::DrawableStretch{narrowing * scale, left}, desktops::DrawableStretch{0, firstRow});
  const auto area = unitsInside(entry.bounds.translated(-overlay_.x, -overlay_.y), scale)
                        .intersection({0, 0, target.width, target.height});
  render_.composite(XCB_RENDER_PICT_OP_SRC, picture, XCB_NONE, target.picture.get(), {0, 0}, area);
}

// The window's shape; of a smaller picture its rectangle does.
Region Backdrop::regionOf(const Covered& covered, int scale) {
  const auto& entry = covered.entry;
  if (scale == 1) return shapeOf(connection_, entry, overlay_);
  const auto rectangle = unitsInside(entry.bounds.translated(-overlay_.x, -overlay_.y), scale).toXcb();
  return makeRegion(connection_, std::span(&rectangle, 1));
}

}  // namespace hushpane::x11
