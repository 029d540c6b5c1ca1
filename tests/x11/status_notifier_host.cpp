#include "tests/x11/status_notifier_host.h"

#include <gio/gio.h>
#include <giomm/dbusintrospection.h>
#include <giomm/init.h>

namespace hushpane::x11_tests {
namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* introspection = R"xml(
<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <signal name="StatusNotifierHostRegistered"/>
    <signal name="StatusNotifierHostUnregistered"/>
  </interface>
</node>)xml";

template <class... Values>
Glib::VariantContainerBase tupleOf(const Values&... values) {
  return Glib::VariantContainerBase::create_tuple({values...});
}

Glib::VariantBase text(const std::string& value) {
  return Glib::Variant<Glib::ustring>::create(value);
}

}  // namespace

StatusNotifierHost::StatusNotifierHost(const std::string& busAddress, bool hasHost)
    : table_(
          [this](const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring& sender, const Glib::ustring&,
                 const Glib::ustring&, const Glib::ustring&, const Glib::VariantContainerBase& arguments,
                 const Glib::RefPtr<Gio::DBus::MethodInvocation>& invocation) {
            Glib::Variant<Glib::ustring> service;
            arguments.get_child(service, 0);
            const std::string given = service.get();
            item_ = given.starts_with('/') ? sender.raw() : given;
            path_ = given.starts_with('/') ? given : "/StatusNotifierItem";
            invocation->return_value({});
          },
          [this](Glib::VariantBase& value, const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&,
                 const Glib::ustring&, const Glib::ustring&,
                 const Glib::ustring&) { value = Glib::Variant<bool>::create(hasHost_); }),
      hasHost_(hasHost) {
  Gio::init();
  connection_ = Gio::DBus::Connection::create_for_address_sync(
      busAddress,
      Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT | Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION);
  connection_->set_exit_on_close(false);
  serve();
}

StatusNotifierHost::~StatusNotifierHost() {
  if (!connection_->is_closed()) connection_->close_sync();
}

void StatusNotifierHost::serve() {
  static const auto node = Gio::DBus::NodeInfo::create_for_xml(introspection);
  connection_->register_object(watcherPath, node->lookup_interface(watcherName), table_);
  connection_->signal_subscribe([this](const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring& sender,
                                       const Glib::ustring&, const Glib::ustring&, const Glib::ustring& name,
                                       const Glib::VariantContainerBase&) { signals_[name] += sender.raw() == item_; },
                                {}, itemInterface);
  constexpr std::uint32_t doNotQueue = 4;
  connection_->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                         tupleOf(text(watcherName), Glib::Variant<std::uint32_t>::create(doNotQueue)),
                         "org.freedesktop.DBus");
}

bool StatusNotifierHost::waitUntil(const std::function<bool()>& condition, milliseconds limit) {
  const auto end = Clock::now() + limit;
  while (!condition()) {
    if (Clock::now() > end) return false;
    if (!g_main_context_iteration(nullptr, FALSE)) std::this_thread::sleep_for(1ms);
  }
  return true;
}

void StatusNotifierHost::setHost(bool hasHost) {
  hasHost_ = hasHost;
  connection_->emit_signal(watcherPath, watcherName,
                           hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered");
}

int StatusNotifierHost::signals(const std::string& name) const {
  const auto found = signals_.find(name);
  return found == signals_.end() ? 0 : found->second;
}

Glib::VariantContainerBase StatusNotifierHost::call(const std::string& interface, const std::string& method,
                                                    const Glib::VariantContainerBase& arguments) {
  struct Answer {
    bool isThere = false;
    Glib::VariantContainerBase value;
  };
  const auto answer = std::make_shared<Answer>();
  connection_->call(
      path_, interface, method, arguments,
      [answer, connection = connection_](Glib::RefPtr<Gio::AsyncResult>& result) {
        answer->isThere = true;
        try {
          answer->value = connection->call_finish(result);
        } catch (const Glib::Error&) {
        }
      },
      item_);
  waitUntil([&] { return answer->isThere; });
  return answer->value;
}

Glib::VariantBase StatusNotifierHost::property(const std::string& name) {
  const auto answer = call("org.freedesktop.DBus.Properties", "Get", tupleOf(text(itemInterface), text(name)));
  if (!answer) return {};
  Glib::Variant<Glib::VariantBase> boxed;
  answer.get_child(boxed, 0);
  return boxed.get();
}

std::string StatusNotifierHost::toolTip() {
  const auto value = property("ToolTip");
  if (!value || !value.is_of_type(Glib::VariantType("(sa(iiay)ss)"))) return "no tool tip";
  const gchar* title = nullptr;
  g_variant_get_child(const_cast<GVariant*>(value.gobj()), 2, "&s", &title);
  return title;
}

std::vector<std::uint32_t> StatusNotifierHost::picture(int side) {
  const auto value = property("IconPixmap");
  std::vector<std::uint32_t> pixels;
  if (!value || !value.is_of_type(Glib::VariantType("a(iiay)"))) return pixels;
  GVariantIter pictures;
  g_variant_iter_init(&pictures, const_cast<GVariant*>(value.gobj()));
  gint32 width = 0, height = 0;
  GVariant* data = nullptr;
  while (g_variant_iter_loop(&pictures, "(ii@ay)", &width, &height, &data)) {
    gsize length = 0;
    const auto* bytes = static_cast<const std::uint8_t*>(g_variant_get_fixed_array(data, &length, 1));
    if (width != side || height != side || length != static_cast<gsize>(side) * side * 4) continue;
    for (gsize at = 0; at < length; at += 4)
      pixels.push_back(std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
                       std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3]);
  }
  return pixels;
}

bool StatusNotifierHost::click(int x, int y, const std::string& method) {
  const auto number = [](int value) { return Glib::Variant<std::int32_t>::create(value); };
  return static_cast<bool>(call(itemInterface, method, tupleOf(number(x), number(y))));
}

}  // namespace hushpane::x11_tests
