#include "desktops/x11/covered_windows.h"

#include <xcb/composite.h>

#include <utility>

namespace hushpane::x11 {

struct CoveredWindow::Watch {
  Damage damage;
  platform::HandlerList<void(const PixelRect&)> handlers;
};

CoveredWindow::CoveredWindow(Connection& connection, Render& render, xcb_window_t window)
    : connection_(connection), render_(render), window_(window) {
  xcb_composite_redirect_window(connection_.get(), window_, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

CoveredWindow::~CoveredWindow() {
  xcb_composite_unredirect_window(connection_.get(), window_, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

xcb_render_picture_t CoveredWindow::picture(const StackEntry& entry) {
  if (!picture_ || generation_ != entry.contentGeneration) {
    generation_ = entry.contentGeneration;
    pixmap_ = PixmapHandle(connection_.get(), connection_.newId());
    xcb_composite_name_window_pixmap(connection_.get(), window_, pixmap_.get());
    picture_ = render_.makePicture(pixmap_.get(), entry.visual);
  }
  return picture_.get();
}

platform::Token CoveredWindow::addDamageHandler(std::function<void(const PixelRect&)> handler) {
  auto watch = watch_.lock();
  if (!watch) {
    watch = std::make_shared<Watch>();
    watch->damage = Damage(connection_.get(), connection_.newId());
    xcb_damage_create(connection_.get(), watch->damage.get(), window_, XCB_DAMAGE_REPORT_LEVEL_BOUNDING_BOX);
    watch_ = watch;
  }
  auto token = std::make_shared<platform::Token>(watch->handlers.add(std::move(handler)));
  return platform::Token([watch, token]() mutable {
    token->reset();
    watch.reset();
  });
}

void CoveredWindow::damaged(const PixelRect& area) {
  const auto watch = watch_.lock();
  if (!watch) return;
  // What is drawn from now on is reported anew; what is read from now on holds what was drawn until now.
  xcb_damage_subtract(connection_.get(), watch->damage.get(), XCB_NONE, XCB_NONE);
  watch->handlers.forEach([&area](const auto& handler) { handler(area); });
}

CoveredWindows::CoveredWindows(Connection& connection, Render& render) : connection_(connection), render_(render) {
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
}

std::shared_ptr<CoveredWindow> CoveredWindows::cover(xcb_window_t window) {
  std::erase_if(windows_, [](const auto& entry) { return entry.second.expired(); });
  auto& known = windows_[window];
  if (auto held = known.lock()) return held;
  auto made = std::make_shared<CoveredWindow>(connection_, render_, window);
  known = made;
  return made;
}

void CoveredWindows::handle(const xcb_generic_event_t& event) {
  const auto damage = connection_.extension(Extension::damage);
  if (!damage || (event.response_type & 0x7f) != damage->firstEvent + XCB_DAMAGE_NOTIFY) return;
  const auto& notify = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
  const auto found = windows_.find(notify.drawable);
  if (found == windows_.end()) return;
  if (const auto held = found->second.lock())
    held->damaged({notify.area.x, notify.area.y, notify.area.width, notify.area.height});
}

}  // namespace hushpane::x11
