#include "desktops/session/portal_open_panel.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "desktops/session/child_program.h"
#include "desktops/session/chooser_program.h"
#include "desktops/session/picture_sources.h"
#include "desktops/session/portal.h"

namespace hushpane::session {

namespace {

using Options = platform::OpenPanel::Options;

constexpr std::size_t longestPath = 1 << 16;  // bytes that a chooser program may print
constexpr guint32 filterByMimeType = 1;

GVariant* pictureFilter() {
  GVariantBuilder rules;
  g_variant_builder_init(&rules, G_VARIANT_TYPE("a(us)"));
  for (const auto& kind : pictureKinds()) g_variant_builder_add(&rules, "(us)", filterByMimeType, kind.mimeType);
  return g_variant_new("(sa(us))", pictureKindsTitle, &rules);
}

GVariant* portalOptions(const Options& options, const std::string& token) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&builder, "{sv}", "handle_token", g_variant_new_string(token.c_str()));
  if (!options.prompt.empty())
    g_variant_builder_add(&builder, "{sv}", "accept_label", g_variant_new_string(options.prompt.c_str()));
  if (options.imagesOnly) {
    GVariant* filters[] = {pictureFilter()};
    g_variant_builder_add(&builder, "{sv}", "filters", g_variant_new_array(nullptr, filters, 1));
  }
  if (!options.directory.empty())
    g_variant_builder_add(&builder, "{sv}", "current_folder", g_variant_new_bytestring(options.directory.c_str()));
  return g_variant_builder_end(&builder);
}

// The object of a request has a name that its sender can tell beforehand, so that no answer comes too early.
std::string requestPath(std::string sender, const std::string& token) {
  sender.erase(0, 1);
  std::ranges::replace(sender, '.', '_');
  return std::string(portal::path) + "/request/" + sender + '/' + token;
}

// The file in the results of the portal; nothing when it is not on this machine.
std::optional<std::filesystem::path> chosenIn(GVariant* results) {
  const std::unique_ptr<GVariant, void (*)(GVariant*)> uris(
      g_variant_lookup_value(results, "uris", G_VARIANT_TYPE_STRING_ARRAY), [](GVariant* held) {
        if (held) g_variant_unref(held);
      });
  if (!uris || g_variant_n_children(uris.get()) == 0) return std::nullopt;
  const char* uri = nullptr;
  g_variant_get_child(uris.get(), 0, "&s", &uri);
  return std::string_view(uri).starts_with("file:") ? localFile(uri) : std::nullopt;
}

bool isText(const std::string& text) {
  return g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr);
}

}  // namespace

PortalOpenPanel::PortalOpenPanel(BusService& portal, platform::MainQueue& queue) : portal_(portal), queue_(queue) {}

bool PortalOpenPanel::isAvailable() const {
  return portal_.isPresent() || hasChooserProgram();
}

void PortalOpenPanel::run(Options options, Completion completion) {
  if (completion_) return queue_.async([completion = std::move(completion)] { completion(std::nullopt); });
  options_ = std::move(options);
  completion_ = std::move(completion);
  if (!isText(options_.title)) options_.title.clear();
  if (!isText(options_.prompt)) options_.prompt.clear();
  queue_.async(lifetime_.weak([this] { portal_.isPresent() ? askPortal() : askProgram(); }));
}

void PortalOpenPanel::askPortal() {
  const std::string token = "hushpane" + std::to_string(++requests_);
  listenTo(requestPath(portal_.connection()->get_unique_name().raw(), token));
  auto closed = portal_.connection()->property_closed().signal_changed().connect(
      lifetime_.weak([this] { finish(std::nullopt); }));
  busGone_ = platform::Token([closed]() mutable { closed.disconnect(); });
  portal_.call(portal::path, "org.freedesktop.portal.FileChooser", "OpenFile",
               g_variant_new("(ss@a{sv})", "", options_.title.c_str(), portalOptions(options_, token)),
               lifetime_.weak([this, request = request_](const auto& reply) {
                 if (completion_ && request_ == request) portalReplied(reply);
               }));
}

// A portal may be there without a file chooser.
void PortalOpenPanel::portalReplied(const std::optional<Glib::VariantContainerBase>& reply) {
  if (!reply || !reply->check_format_string("(o)")) {
    response_.reset();
    return askProgram();
  }
  portalGone_ = portal_.onChanged([this] { finish(std::nullopt); });
  const char* request = nullptr;
  g_variant_get(const_cast<GVariant*>(reply->gobj()), "(&o)", &request);
  if (request != request_) listenTo(request);
}

void PortalOpenPanel::listenTo(const std::string& request) {
  request_ = request;
  response_ = portal_.onSignal(request_.c_str(), "org.freedesktop.portal.Request", "Response",
                               [this](const auto& arguments) { responded(arguments); });
}

void PortalOpenPanel::responded(const Glib::VariantContainerBase& arguments) {
  guint32 code = 1;
  GVariant* results = nullptr;
  if (!arguments.check_format_string("(ua{sv})")) return finish(std::nullopt);
  g_variant_get(const_cast<GVariant*>(arguments.gobj()), "(u@a{sv})", &code, &results);
  auto file = code == 0 ? chosenIn(results) : std::nullopt;
  g_variant_unref(results);
  finish(std::move(file));
}

void PortalOpenPanel::askProgram() {
  busGone_.reset();
  const auto command = chooserCommand(options_);
  if (command)
    program_ = startChild(*command, longestPath,
                          [this](const auto& output) { finish(output ? chosenFile(*output) : std::nullopt); });
  if (!program_) finish(std::nullopt);
}

// In a later turn of the queue, for it may be called from within what it drops.
void PortalOpenPanel::finish(std::optional<std::filesystem::path> file) {
  request_.clear();
  for (auto* token : {&response_, &portalGone_, &busGone_, &program_}) token->reset();
  if (auto completion = std::exchange(completion_, nullptr))
    queue_.async([completion = std::move(completion), file = std::move(file)] { completion(file); });
}

}  // namespace hushpane::session
