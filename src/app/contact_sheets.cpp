#include "app/contact_sheets.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "app/contact_sheet_views.h"
#include "declarative/host.h"
#include "localization/language_manager.h"
#include "localization/supported_language.h"
#include "ui/localized_root.h"

namespace hushpane {

namespace {

using declarative::Appearance;
using platform::Point;
using platform::Rect;
using platform::Size;

constexpr double sheetWidth = 1180;  // points, at most
constexpr double margin = 24;        // around each view, where its shadows fall
constexpr double captionHeight = 14;
constexpr platform::Font captionFont{.size = 9};
constexpr double timeToRest = 3;  // seconds

// Places views one after the other in rows.
class Flow {
 public:
  Point place(Size size) {
    const Size cell{size.width + 2 * margin, size.height + 2 * margin + captionHeight};
    if (x_ > 0 && x_ + cell.width > sheetWidth) {
      x_ = 0;
      y_ = end_.height;
    }
    const Point origin{x_ + margin, y_ + margin};
    x_ += cell.width;
    end_ = {std::max(end_.width, x_), std::max(end_.height, y_ + cell.height)};
    return origin;
  }
  Size size() const { return {std::ceil(end_.width), std::ceil(end_.height)}; }

 private:
  double x_ = 0;
  double y_ = 0;
  Size end_;
};

class ViewSheet : public platform::ContactSheet {
 public:
  ViewSheet(platform::Platform& platform, std::vector<SheetView> views, Appearance appearance)
      : platform_(platform), views_(std::move(views)), appearance_(appearance) {}

  std::optional<double> next() override {
    if (click_) return click(*std::exchange(click_, std::nullopt));
    if (host_) finish(views_[done_++]);
    if (done_ == views_.size()) return std::nullopt;
    const SheetView& view = views_[done_];
    show(LocalizedRoot{view.make});
    if (view.pointer) host_->pointerMoved(onPage(*view.pointer));
    if (view.press) host_->pointerDown(onPage(*view.press));
    click_ = view.click;
    return click_ ? timeToRest : view.seconds;
  }

  Size size() const override { return flow_.size(); }

  void paint(platform::Canvas& canvas) const override {
    const Rect all{0, 0, size().width, size().height};
    canvas.fill(platform::rectanglePath(all), declarative::windowBackground.in(appearance_));
    declarative::draw(drawings_, canvas, all);
  }

 private:
  double click(Point point) {
    host_->pointerDown(onPage(point));
    host_->pointerUp(onPage(point));
    return views_[done_].seconds;
  }
  // The pointer counts from the left.
  Point onPage(Point point) const {
    const bool isMirrored = isRightToLeft(LanguageManager::shared().shownCode());
    return isMirrored ? Point{host_->size().width - point.x, point.y} : point;
  }
  void show(declarative::Element page) {
    host_.reset();
    host_.emplace(declarative::Host::Services{platform_.mainQueue(), platform_.frameClock(), platform_.textEngine()},
                  std::move(page), declarative::Environment{.appearance = appearance_}, [] {});
  }

  // Keeps what the view looks like now, and writes its caption beneath it.
  void finish(const SheetView& view) {
    const Size size = host_->size();
    const Point origin = flow_.place(size);
    keep(origin);
    show(declarative::text(view.caption, captionFont).foreground(declarative::tertiary));
    keep({origin.x, origin.y + size.height + margin / 2});
    host_.reset();
  }
  void keep(Point origin) {
    std::ranges::move(declarative::movedBy(host_->drawings(), origin), std::back_inserter(drawings_));
  }

  platform::Platform& platform_;
  std::vector<SheetView> views_;
  Appearance appearance_;
  std::size_t done_ = 0;
  std::optional<declarative::Host> host_;
  std::optional<Point> click_;
  Flow flow_;
  declarative::Drawings drawings_;
};

}  // namespace

std::unique_ptr<platform::ContactSheet> openContactSheet(platform::Platform& platform,
                                                         const platform::ContactSheetRequest& request) {
  auto views = sheetViews(platform, request.name);
  if (!views) return nullptr;
  if (!request.language.empty()) LanguageManager::shared().select(request.language);
  return std::make_unique<ViewSheet>(platform, *std::move(views),
                                     request.isDark ? Appearance::dark : Appearance::light);
}

}  // namespace hushpane
