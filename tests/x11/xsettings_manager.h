#pragma once

#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// The part of a desktop that tells all programs its settings, played by the test. Goes with this object.
class XsettingsManager {
 public:
  enum class Order : std::uint8_t { lowestFirst = 0, highestFirst = 1 };

  explicit XsettingsManager(const std::string& display, Order order = Order::lowestFirst)
      : x_(display), order_(order), window_(xcb_generate_id(x_.get())) {
    xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, window_, x_.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(x_.get(), window_, x_.atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
    x_.sync();
  }

  // From now on this is the only setting.
  void setText(const std::string& name, const std::string& value) {
    bytes_ = {std::uint8_t(order_), 0, 0, 0};
    number(++serial_, 4);
    number(1, 4);
    bytes_.insert(bytes_.end(), {1, 0});
    number(std::uint32_t(name.size()), 2);
    text(name);
    number(serial_, 4);
    number(std::uint32_t(value.size()), 4);
    text(value);
    const auto property = x_.atom("_XSETTINGS_SETTINGS");
    xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, window_, property, property, 8, std::uint32_t(bytes_.size()),
                        bytes_.data());
    x_.sync();
  }
  void destroyWindow() const {
    xcb_destroy_window(x_.get(), window_);
    x_.sync();
  }

 private:
  void number(std::uint32_t value, int size) {
    for (int index = 0; index < size; ++index)
      bytes_.push_back(std::uint8_t(value >> 8 * (order_ == Order::lowestFirst ? index : size - 1 - index)));
  }
  void text(const std::string& value) {
    bytes_.insert(bytes_.end(), value.begin(), value.end());
    while (bytes_.size() % 4 != 0) bytes_.push_back(0);
  }

  XConnection x_;
  Order order_;
  xcb_window_t window_;
  std::uint32_t serial_ = 0;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace hushpane::x11_tests
