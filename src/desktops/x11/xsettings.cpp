#include "desktops/x11/xsettings.h"

#include <xcb/xfixes.h>

#include <utility>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

constexpr const char* propertyName = "_XSETTINGS_SETTINGS";
constexpr std::uint32_t longestProperty = 1 << 16;  // words

enum Kind : std::uint8_t { integer = 0, string = 1, color = 2 };

// Numbers in the writer's byte order, and texts filled up to words. Once it is broken, all that it reads is empty.
class Reader {
 public:
  explicit Reader(std::span<const std::uint8_t> bytes) : rest_(bytes) {
    isLowestFirst_ = number(1) == XCB_IMAGE_ORDER_LSB_FIRST;
    skip(3);
  }

  bool isBroken() const { return isBroken_; }

  std::uint32_t number(std::size_t size) {
    std::uint32_t value = 0;
    const auto bytes = take(size);
    for (std::size_t index = 0; index < bytes.size(); ++index)
      value = value << 8 | bytes[isLowestFirst_ ? bytes.size() - 1 - index : index];
    return value;
  }
  std::string text(std::size_t size) {
    const auto bytes = take(size);
    skip((4 - size % 4) % 4);
    return {bytes.begin(), bytes.end()};
  }
  void skip(std::size_t size) { take(size); }

 private:
  std::span<const std::uint8_t> take(std::size_t size) {
    isBroken_ |= size > rest_.size();
    if (isBroken_) return {};
    const auto taken = rest_.first(size);
    rest_ = rest_.subspan(size);
    return taken;
  }

  std::span<const std::uint8_t> rest_;
  bool isLowestFirst_ = false;
  bool isBroken_ = false;
};

}  // namespace

XsettingsValues xsettingsIn(std::span<const std::uint8_t> bytes) {
  constexpr std::size_t serial = 4, colorSize = 8;
  XsettingsValues values;
  Reader reader(bytes);
  reader.skip(serial);
  for (auto left = reader.number(4); left > 0 && !reader.isBroken(); --left) {
    const auto kind = reader.number(1);
    reader.skip(1);
    auto name = reader.text(reader.number(2));
    reader.skip(serial);
    XsettingsValues::mapped_type value;
    switch (kind) {
      case Kind::integer: value = static_cast<std::int32_t>(reader.number(4)); break;
      case Kind::string: value = reader.text(reader.number(4)); break;
      case Kind::color: reader.skip(colorSize); break;
      default: return values;
    }
    if (kind != Kind::color && !reader.isBroken()) values.insert_or_assign(std::move(name), std::move(value));
  }
  return values;
}

Xsettings::Xsettings(Connection& connection)
    : connection_(connection), selection_(connection.atom("_XSETTINGS_S" + std::to_string(connection.screenNumber()))) {
  connection_.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  xcb_xfixes_select_selection_input(connection_.get(), connection_.root(), selection_,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  findManager();
}

std::optional<std::int32_t> Xsettings::number(std::string_view name) const {
  const auto found = values_.find(name);
  const auto* value = found == values_.end() ? nullptr : std::get_if<std::int32_t>(&found->second);
  return value ? std::optional(*value) : std::nullopt;
}

std::optional<std::string> Xsettings::text(std::string_view name) const {
  const auto found = values_.find(name);
  const auto* value = found == values_.end() ? nullptr : std::get_if<std::string>(&found->second);
  return value ? std::optional(*value) : std::nullopt;
}

// A manager takes the selection first and may write its settings later.
void Xsettings::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  const auto xfixes = connection_.extension(Extension::xfixes);
  if (xfixes && type == xfixes->firstEvent + XCB_XFIXES_SELECTION_NOTIFY) {
    if (reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).selection == selection_) findManager();
  } else if (type == XCB_PROPERTY_NOTIFY) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window == manager_ && property.atom == connection_.atom(propertyName)) read();
  }
}

void Xsettings::findManager() {
  const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
  manager_ = owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
  // What the window tree asks of windows too: either may come last.
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  if (manager_ != XCB_WINDOW_NONE) xcb_change_window_attributes(connection_.get(), manager_, XCB_CW_EVENT_MASK, &mask);
  read();
}

void Xsettings::read() {
  XsettingsValues values;
  if (manager_ != XCB_WINDOW_NONE) {
    const auto cookie = xcb_get_property(connection_.get(), 0, manager_, connection_.atom(propertyName), XCB_ATOM_ANY,
                                         0, longestProperty);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get(), cookie, nullptr));
    if (reply && reply->format == 8)
      values = xsettingsIn({static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get())),
                            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
  }
  if (std::exchange(values_, std::move(values)) != values_) changes_.forEach([](const auto& handler) { handler(); });
}

}  // namespace hushpane::x11
