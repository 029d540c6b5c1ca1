#include "desktops/session/status_notifier_item.h"

#include <gio/gio.h>
#include <giomm/dbusintrospection.h>
#include <giomm/dbuswatchname.h>
#include <giomm/error.h>

#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "desktops/session/bar_ground.h"
#include "desktops/shared/debug_log.h"
#include "desktops/shared/template_picture.h"

namespace hushpane::session {

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* itemName = "org.kde.StatusNotifierItem";
constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* noMenuPath = "/NO_DBUSMENU";              // what items without a menu name by convention
constexpr int answerMilliseconds = 30'000;                      // while a user logs in, everything is slow
constexpr std::array pictureSides{16, 22, 24, 32, 44, 48, 64};  // pixels

constexpr const char* introspection = R"xml(
<node>
  <interface name="org.kde.StatusNotifierItem">
    <property name="Category" type="s" access="read"/>
    <property name="Id" type="s" access="read"/>
    <property name="Title" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="WindowId" type="i" access="read"/>
    <property name="IconName" type="s" access="read"/>
    <property name="IconPixmap" type="a(iiay)" access="read"/>
    <property name="OverlayIconName" type="s" access="read"/>
    <property name="AttentionIconName" type="s" access="read"/>
    <property name="IconAccessibleDesc" type="s" access="read"/>
    <property name="AttentionAccessibleDesc" type="s" access="read"/>
    <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
    <property name="ItemIsMenu" type="b" access="read"/>
    <property name="Menu" type="o" access="read"/>
    <method name="Activate">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="SecondaryActivate">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="ContextMenu">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="Scroll">
      <arg name="delta" type="i" direction="in"/>
      <arg name="orientation" type="s" direction="in"/>
    </method>
    <signal name="NewTitle"/>
    <signal name="NewIcon"/>
    <signal name="NewAttentionIcon"/>
    <signal name="NewOverlayIcon"/>
    <signal name="NewToolTip"/>
    <signal name="NewStatus">
      <arg name="status" type="s"/>
    </signal>
  </interface>
</node>)xml";

Glib::VariantBase text(const std::string& value) {
  return Glib::Variant<Glib::ustring>::create(Glib::ustring(value).make_valid());
}

// ARGB32 in network byte order, with straight colours.
GVariant* bytesOf(const platform::Image& picture) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(picture.pixels.size() * 4);
  for (const auto pixel : picture.pixels) {
    const auto alpha = pixel >> 24;
    const auto channel = [&](int shift) {
      return static_cast<std::uint8_t>(alpha == 0 ? 0 : ((pixel >> shift & 0xff) * 255 + alpha / 2) / alpha);
    };
    bytes.insert(bytes.end(), {static_cast<std::uint8_t>(alpha), channel(16), channel(8), channel(0)});
  }
  return g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), 1);
}

Glib::VariantBase picturesOf(const platform::TemplateImage& image, const platform::Color& color) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iiay)"));
  for (const int side : pictureSides) {
    const auto picture = desktops::rimmedTemplatePicture(image, side, color);
    g_variant_builder_add(&builder, "(ii@ay)", picture.width, picture.height, bytesOf(picture));
  }
  return Glib::VariantBase(g_variant_builder_end(&builder));
}

Glib::VariantBase toolTipOf(const std::string& text) {
  const auto title = Glib::ustring(text).make_valid();
  return Glib::VariantBase(
      g_variant_new("(s@a(iiay)ss)", "", g_variant_new_array(G_VARIANT_TYPE("(iiay)"), nullptr, 0), title.c_str(), ""));
}

Glib::VariantContainerBase arguments(std::vector<Glib::VariantBase> values) {
  return Glib::VariantContainerBase::create_tuple(values);
}

// Of the answer to a question for a property.
bool isTrue(const Glib::VariantContainerBase& answer) {
  if (!answer.is_of_type(Glib::VariantType("(v)"))) return false;
  Glib::Variant<Glib::VariantBase> boxed;
  answer.get_child(boxed, 0);
  const auto value = boxed.get();
  return value.is_of_type(Glib::VARIANT_TYPE_BOOL) && Glib::VariantBase::cast_dynamic<Glib::Variant<bool>>(value).get();
}

// Nothing when the call failed.
std::optional<Glib::VariantContainerBase> answerOf(const DbusSession::Connection& connection,
                                                   const Glib::RefPtr<Gio::AsyncResult>& result) {
  try {
    return connection->call_finish(result);
  } catch (const Glib::Error& error) {
    desktops::debugLog(std::string("status notifier watcher: ") + error.what());
    return std::nullopt;
  }
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(DbusSession& session, platform::SystemAppearance& appearance, Handlers handlers)
    : session_(session),
      appearance_(appearance),
      handlers_(std::move(handlers)),
      table_([this](const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&, const Glib::ustring&,
                    const Glib::ustring&, const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                    const Invocation& invocation) { handleCall(method, arguments, invocation); },
             [this](Glib::VariantBase& value, const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&,
                    const Glib::ustring&, const Glib::ustring&, const Glib::ustring& name) { value = property(name); }),
      rejoined_(session.onRejoined([this] {
        if (image_.draw) join();
      })),
      appearanceChanges_(appearance.observe([this] { pictureChanged(); })) {}

StatusNotifierItem::~StatusNotifierItem() {
  leave();
}

void StatusNotifierItem::setImage(platform::TemplateImage image) {
  const bool isFirst = !image_.draw;
  image_ = std::move(image);
  pictureChanged();
  if (isFirst && image_.draw) join();
}

void StatusNotifierItem::setToolTip(std::string text) {
  if (std::exchange(toolTip_, std::move(text)) != toolTip_) emit("NewToolTip");
}

void StatusNotifierItem::pictureChanged() {
  pictures_ = {};
  emit("NewIcon");
}

void StatusNotifierItem::join() {
  leave();
  connection_ = session_.connection();
  if (!connection_ || !serve()) return setHosting(Hosting::absent);
  auto changed = lifetime_.weak([this] { askForHost(); });
  hostSignals_ = connection_->signal_subscribe(
      [changed](const DbusSession::Connection&, const Glib::ustring&, const Glib::ustring&, const Glib::ustring&,
                const Glib::ustring&, const Glib::VariantContainerBase&) mutable { changed(); },
      watcherName, watcherName, {}, watcherPath);
  auto appeared = lifetime_.weak([this] { watcherAppeared(); });
  auto vanished = lifetime_.weak([this] { watcherVanished(); });
  watch_ = Gio::DBus::watch_name(
      connection_, watcherName,
      [appeared](const DbusSession::Connection&, const Glib::ustring&, const Glib::ustring&) mutable { appeared(); },
      [vanished](const DbusSession::Connection&, const Glib::ustring&) mutable { vanished(); });
}

void StatusNotifierItem::leave() {
  ++watcher_;
  isRegistered_ = false;
  if (const auto watch = std::exchange(watch_, 0)) Gio::DBus::unwatch_name(watch);
  const auto connection = std::exchange(connection_, {});
  const auto signals = std::exchange(hostSignals_, 0);
  const auto registration = std::exchange(registration_, 0);
  if (!connection) return;
  if (signals != 0) connection->signal_unsubscribe(signals);
  if (registration != 0) connection->unregister_object(registration);
}

bool StatusNotifierItem::serve() {
  try {
    static const auto node = Gio::DBus::NodeInfo::create_for_xml(introspection);
    registration_ = connection_->register_object(itemPath, node->lookup_interface(itemName), table_);
  } catch (const Glib::Error& error) {
    desktops::debugLog(std::string("cannot serve the status item: ") + error.what());
  }
  return registration_ != 0;
}

void StatusNotifierItem::watcherAppeared() {
  ++watcher_;
  isRegistered_ = false;
  registerWithWatcher();
}

void StatusNotifierItem::watcherVanished() {
  ++watcher_;
  isRegistered_ = false;
  setHosting(Hosting::absent);
}

// By its path, to which watchers add the sender: a name of its own would mean nothing more.
void StatusNotifierItem::registerWithWatcher() {
  const auto answered = [this, connection = connection_, watcher = watcher_](const auto& result) {
    const auto answer = answerOf(connection, result);
    if (watcher != watcher_) return;
    isRegistered_ = answer.has_value();
    return isRegistered_ ? askForHost() : setHosting(Hosting::absent);
  };
  connection_->call(watcherPath, watcherName, "RegisterStatusNotifierItem", arguments({text(itemPath)}),
                    lifetime_.weak(answered), watcherName, answerMilliseconds, Gio::DBus::CallFlags::NO_AUTO_START);
}

void StatusNotifierItem::askForHost() {
  if (!isRegistered_) return;
  const auto answered = [this, connection = connection_, watcher = watcher_](const auto& result) {
    const auto answer = answerOf(connection, result);
    if (watcher != watcher_) return;
    setHosting(answer && isTrue(*answer) ? Hosting::present : Hosting::absent);
  };
  connection_->call(watcherPath, "org.freedesktop.DBus.Properties", "Get",
                    arguments({text(watcherName), text("IsStatusNotifierHostRegistered")}), lifetime_.weak(answered),
                    watcherName, answerMilliseconds, Gio::DBus::CallFlags::NO_AUTO_START);
}

void StatusNotifierItem::setHosting(Hosting hosting) {
  if (std::exchange(hosting_, hosting) != hosting && handlers_.hostingChanged) handlers_.hostingChanged();
}

void StatusNotifierItem::handleCall(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                                    const Invocation& invocation) {
  const bool isClick = method == "Activate" || method == "SecondaryActivate" || method == "ContextMenu";
  invocation->return_value({});
  if (!isClick || !handlers_.activated) return;
  Glib::Variant<std::int32_t> x, y;
  arguments.get_child(x, 0);
  arguments.get_child(y, 1);
  handlers_.activated(x.get(), y.get());
}

Glib::VariantBase StatusNotifierItem::property(const Glib::ustring& name) {
  if (name == "Category") return text("ApplicationStatus");
  if (name == "Id") return text("hushpane");
  if (name == "Title") return text("Hushpane");
  if (name == "Status") return text("Active");
  if (name == "WindowId") return Glib::Variant<std::int32_t>::create(0);
  if (name == "ItemIsMenu") return Glib::Variant<bool>::create(false);
  if (name == "Menu") return Glib::Variant<Glib::DBusObjectPathString>::create(noMenuPath);
  if (name == "ToolTip") return toolTipOf(toolTip_);
  if (name == "IconAccessibleDesc" || name == "AttentionAccessibleDesc") return text(toolTip_);
  if (name != "IconPixmap") return text({});  // the icons by name
  if (!pictures_) {
    const bool isDark = isBarDark().value_or(appearance_.isDark());
    pictures_ = picturesOf(image_, isDark ? desktops::inkOnDark : desktops::inkOnLight);
  }
  return pictures_;
}

void StatusNotifierItem::emit(const char* signal) {
  if (!connection_ || !isRegistered_) return;
  try {
    connection_->emit_signal(itemPath, itemName, signal);
  } catch (const Glib::Error& error) {
    desktops::debugLog(std::string("cannot tell of the status item: ") + error.what());
  }
}

}  // namespace hushpane::session
