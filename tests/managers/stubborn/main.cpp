#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {
namespace {

// A small window manager without frames that has its own mind about windows. "raises": it brings every window that
// overrides it back to the top. "ignores": it grants nobody's wish for a place in the order. "composites": it says that
// it composites. "families": what is to be below a window goes below all windows of that application, what is to be
// above one goes to the top, and then it raises what is active. "fills": windows as high as the screen are of full
// screen, unless they are told otherwise.
class StubbornManager {
 public:
  StubbornManager(const std::string& display, const std::set<std::string>& habits)
      : x_(display), habits_(habits), raises_(habits.contains("raises")), ignores_(habits.contains("ignores")) {
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x_.get(), x_.root(), XCB_CW_EVENT_MASK, &events);
    announce();
    for (const xcb_window_t window : x_.stacking()) adopt(window);
  }

  void run() {
    while (const auto event = own(xcb_wait_for_event(x_.get()))) {
      handle(*event);
      xcb_flush(x_.get());
    }
  }

 private:
  void announce() {
    const xcb_window_t check = xcb_generate_id(x_.get());
    xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, check, x_.root(), -9, -9, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    for (const xcb_window_t window : {check, x_.root()})
      x_.setNumbers(window, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    x_.setNumbers(x_.root(), "_NET_SUPPORTED", "ATOM",
                  {x_.atom("_NET_ACTIVE_WINDOW"), x_.atom("_NET_RESTACK_WINDOW"), x_.atom("_NET_CLIENT_LIST"),
                   x_.atom("_NET_CLIENT_LIST_STACKING"), x_.atom("_NET_WM_STATE")});
    if (habits_.contains("composites"))
      xcb_set_selection_owner(x_.get(), check, x_.atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    publish();
  }

  void handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
      case XCB_MAP_REQUEST: return manage(reinterpret_cast<const xcb_map_request_event_t&>(event).window);
      case XCB_CONFIGURE_REQUEST: return configure(reinterpret_cast<const xcb_configure_request_event_t&>(event));
      case XCB_CLIENT_MESSAGE: return obey(reinterpret_cast<const xcb_client_message_event_t&>(event));
      case XCB_BUTTON_PRESS: {
        activate(reinterpret_cast<const xcb_button_press_event_t&>(event).event);
        xcb_allow_events(x_.get(), XCB_ALLOW_REPLAY_POINTER, XCB_CURRENT_TIME);
        return;
      }
      case XCB_UNMAP_NOTIFY: return forget(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window);
      case XCB_CONFIGURE_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (notify.override_redirect) insist(notify.window);
        return;
      }
      case XCB_MAP_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (notify.override_redirect) insist(notify.window);
        return;
      }
      default: return;
    }
  }

  void adopt(xcb_window_t window) {
    const auto reply = own(xcb_get_window_attributes_reply(x_.get(), xcb_get_window_attributes(x_.get(), window), {}));
    if (reply && reply->map_state == XCB_MAP_STATE_VIEWABLE && !reply->override_redirect) manage(window);
  }

  void manage(xcb_window_t window) {
    xcb_map_window(x_.get(), window);
    if (std::find(clients_.begin(), clients_.end(), window) != clients_.end()) return;
    clients_.push_back(window);
    xcb_grab_button(x_.get(), 0, window, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_SYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE,
                    XCB_NONE, XCB_BUTTON_INDEX_1, XCB_MOD_MASK_ANY);
    constexpr std::uint32_t normalState = 1;
    x_.setNumbers(window, "WM_STATE", "WM_STATE", {normalState, XCB_NONE});
    const auto hints = x_.numbers(window, "WM_HINTS");
    const bool refusesInput = hints.size() > 1 && (hints[0] & 1) != 0 && hints[1] == 0;
    refusesInput ? publish() : activate(window);
    if (habits_.contains("fills") && x_.bounds(window).height >= x_.screen().height_in_pixels) {
      auto states = x_.numbers(window, "_NET_WM_STATE");
      states.push_back(x_.atom("_NET_WM_STATE_FULLSCREEN"));
      x_.setNumbers(window, "_NET_WM_STATE", "ATOM", states);
    }
  }

  void forget(xcb_window_t window) {
    std::erase(clients_, window);
    if (active_ == window) active_ = XCB_NONE;
    publish();
  }

  void activate(xcb_window_t window) {
    active_ = window;
    restack(window, XCB_NONE, XCB_STACK_MODE_ABOVE);
    xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    publish();
    for (const xcb_window_t other : x_.stacking()) insist(other);
  }

  void configure(const xcb_configure_request_event_t& request) {
    std::vector<std::uint32_t> values;
    std::uint16_t mask = 0;
    const auto take = [&](std::uint16_t bit, std::uint32_t value) {
      if ((request.value_mask & bit) == 0) return;
      mask = static_cast<std::uint16_t>(mask | bit);
      values.push_back(value);
    };
    take(XCB_CONFIG_WINDOW_X, std::uint32_t(request.x));
    take(XCB_CONFIG_WINDOW_Y, std::uint32_t(request.y));
    take(XCB_CONFIG_WINDOW_WIDTH, request.width);
    take(XCB_CONFIG_WINDOW_HEIGHT, request.height);
    if (!ignores_) {
      take(XCB_CONFIG_WINDOW_SIBLING, request.sibling);
      take(XCB_CONFIG_WINDOW_STACK_MODE, request.stack_mode);
    }
    xcb_configure_window(x_.get(), request.window, mask, values.data());
    publish();
  }

  void obey(const xcb_client_message_event_t& message) {
    if (message.type == x_.atom("_NET_ACTIVE_WINDOW")) activate(message.window);
    if (message.type == x_.atom("_NET_WM_STATE") && message.data.data32[0] == 0) {
      auto states = x_.numbers(message.window, "_NET_WM_STATE");
      std::erase(states, message.data.data32[1]);
      x_.setNumbers(message.window, "_NET_WM_STATE", "ATOM", states);
    }
    if (message.type == x_.atom("_NET_RESTACK_WINDOW") && !ignores_) {
      if (habits_.contains("families"))
        restackFamily(message.window, message.data.data32[1], message.data.data32[2]);
      else
        restack(message.window, message.data.data32[1], message.data.data32[2]);
      publish();
    }
  }

  void restackFamily(xcb_window_t window, xcb_window_t sibling, std::uint32_t mode) {
    if (mode == XCB_STACK_MODE_ABOVE) return restack(window, XCB_NONE, XCB_STACK_MODE_ABOVE);
    const auto application = [this](xcb_window_t of) { return of & ~xcb_get_setup(x_.get())->resource_id_mask; };
    for (const xcb_window_t each : x_.stacking()) {
      if (application(each) != application(sibling) ||
          std::find(clients_.begin(), clients_.end(), each) == clients_.end())
        continue;
      restack(window, each, XCB_STACK_MODE_BELOW);
      break;
    }
    restack(active_, XCB_NONE, XCB_STACK_MODE_ABOVE);
  }

  void restack(xcb_window_t window, xcb_window_t sibling, std::uint32_t mode) {
    const std::uint32_t both[]{sibling, mode};
    if (sibling == XCB_NONE)
      xcb_configure_window(x_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
    else
      xcb_configure_window(x_.get(), window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, both);
  }

  // Again and again, for as long as somebody else does otherwise.
  void insist(xcb_window_t window) {
    if (!raises_ || std::find(clients_.begin(), clients_.end(), window) != clients_.end()) return;
    const auto order = x_.stacking();
    const auto at = std::find(order.begin(), order.end(), window);
    const bool isBelowClient = std::any_of(at, order.end(), [this](xcb_window_t other) {
      return std::find(clients_.begin(), clients_.end(), other) != clients_.end();
    });
    if (at != order.end() && isBelowClient) restack(window, XCB_NONE, XCB_STACK_MODE_ABOVE);
  }

  void publish() {
    std::vector<std::uint32_t> stacking;
    for (const xcb_window_t window : x_.stacking())
      if (std::find(clients_.begin(), clients_.end(), window) != clients_.end()) stacking.push_back(window);
    x_.setNumbers(x_.root(), "_NET_CLIENT_LIST", "WINDOW", clients_);
    x_.setNumbers(x_.root(), "_NET_CLIENT_LIST_STACKING", "WINDOW", stacking);
    x_.setNumbers(x_.root(), "_NET_ACTIVE_WINDOW", "WINDOW", {active_});
  }

  XConnection x_;
  std::set<std::string> habits_;
  bool raises_, ignores_;
  std::vector<xcb_window_t> clients_;
  xcb_window_t active_ = XCB_NONE;
};

}  // namespace
}  // namespace hushpane::x11_tests

int main(int count, char** words) {
  using namespace hushpane::x11_tests;
  StubbornManager(std::getenv("DISPLAY"), std::set<std::string>(words + 1, words + count)).run();
}
