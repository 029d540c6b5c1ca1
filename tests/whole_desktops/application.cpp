#include "tests/whole_desktops/application.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace hushpane::x11_tests {
namespace {

constexpr const char* normalType = "_NET_WM_WINDOW_TYPE_NORMAL";

std::set<xcb_window_t> normalWindows(const XConnection& x) {
  std::set<xcb_window_t> found;
  for (const xcb_window_t window : x.numbers(x.root(), "_NET_CLIENT_LIST")) {
    const auto types = x.numbers(window, "_NET_WM_WINDOW_TYPE");
    if (types.empty() || types.front() == x.atom(normalType)) found.insert(window);
  }
  return found;
}

}  // namespace

Application::Application(DesktopSession& session, const std::vector<std::string>& command, const Rect& where)
    : session_(session), name_(command.front()), process_([&]() -> Process& {
        const auto before = normalWindows(session.x());
        Process& process = session.open(command);
        const auto appears = [&] {
          for (const xcb_window_t window : normalWindows(session.x()))
            if (!before.count(window) && session.x().bounds(window).width > 100) window_ = window;
          return window_ != XCB_NONE;
        };
        if (!waitUntil(appears, 60s))
          throw std::runtime_error(command.front() + " opens no window: " + process.errors());
        return process;
      }()) {
  place(where);
  const auto isDrawn = [&] {
    const Pixel seen = session.x().pixel(center(inside()));
    return !isNear(seen, DesktopSession::upperColor, 20) && !isNear(seen, DesktopSession::lowerColor, 20) &&
           seen.brightness() > 0;
  };
  if (waitUntil(isDrawn, 15s)) return;
  session.choosePicture(DesktopSession::upperColor, DesktopSession::lowerColor);  // an overview may be in front
  if (!waitUntil(isDrawn, 15s)) throw std::runtime_error(name_ + " stays empty: " + process_.errors());
}

Rect Application::bounds() const {
  Rect bounds = session_.x().bounds(window_);
  const auto shadow = session_.x().numbers(window_, "_GTK_FRAME_EXTENTS");
  if (shadow.size() < 4) return bounds;
  const double left = shadow[0], right = shadow[1], top = shadow[2], bottom = shadow[3];
  return {bounds.x + left, bounds.y + top, bounds.width - left - right, bounds.height - top - bottom};
}

Rect Application::inside() const {
  const Rect all = bounds();
  return {all.x + all.width * 0.4, all.y + all.height * 0.4, all.width * 0.5, all.height * 0.4};
}

Point Application::title() const {
  const Rect all = bounds();
  const XConnection& x = session_.x();
  const bool drawsItself = x.bounds(x.frameOf(window_)).y > x.bounds(window_).y - 5;
  return {center(all).x, all.y + (drawsItself ? 5 : -12)};
}

// Asked again while it is still busy with its beginning.
void Application::place(const Rect& where) const {
  const auto isNearby = [&] {
    const Rect now = bounds();
    return std::abs(now.x - where.x) < 60 && std::abs(now.y - where.y) < 60 && std::abs(now.width - where.width) < 150;
  };
  for (int tries = 0; tries < 10 && !isNearby(); ++tries) {
    const Rect client = session_.x().bounds(window_), shown = bounds();
    session_.x().setBounds(window_,
                           {where.x - (shown.x - client.x), where.y - (shown.y - client.y),
                            where.width + client.width - shown.width, where.height + client.height - shown.height});
    waitUntil(isNearby, 1s);
  }
}

Applications& Applications::running(DesktopSession& session) {
  static DesktopSession* owner = nullptr;
  static std::unique_ptr<Applications> open;
  if (std::exchange(owner, &session) != &session) {
    auto fileManager = session.kind().fileManager;
    fileManager.push_back(session.home() / "files");
    open.reset(new Applications{
        .gtkEditor = Application(session, {"gedit", "--standalone"}, {180, 70, 420, 330}),
        .qtEditor = Application(session, session.kind().qtEditor, {180, 520, 420, 330}),
        .terminal = Application(session, {"xterm", "-T", "terminal", "-bg", "#205080", "-fn", "fixed", "-e", "cat"},
                                {980, 80, 484, 316}),
        .files = Application(session, fileManager, {980, 520, 420, 330})});
  }
  if (!open) throw std::runtime_error("the programs did not start before");
  return *open;
}

}  // namespace hushpane::x11_tests
