#include <glibmm/markup.h>

#include <algorithm>
#include <vector>

#include "desktops/session/picture_sources.h"
#include "desktops/shared/files.h"
#include "desktops/shared/xdg_directories.h"

namespace hushpane::session {

namespace {

constexpr std::size_t largestFile = 1 << 20;
constexpr std::string_view monitorPrefix = "monitor";

struct Backdrop {
  std::string monitor;  // its connector, mostly
  std::string image;
  bool isShown = true;
};

// Collects the backdrops of the first workspace from nested properties: backdrop, screen0, monitorNAME, workspace0.
class ChannelParser : public Glib::Markup::Parser {
 public:
  std::vector<Backdrop> backdrops;

 protected:
  void on_start_element(Glib::Markup::ParseContext&, const Glib::ustring& element,
                        const AttributeMap& attributes) override {
    const auto value = [&attributes](const char* name) {
      const auto found = attributes.find(name);
      return found == attributes.end() ? std::string() : found->second.raw();
    };
    path_.push_back(element == "property" ? value("name") : std::string());
    if (path_.size() == depth && isInFirstWorkspace()) take(path_.back(), value("value"));
  }

  void on_end_element(Glib::Markup::ParseContext&, const Glib::ustring&) override { path_.pop_back(); }

 private:
  static constexpr std::size_t depth = 6;  // the channel, the four above and what they hold

  bool isInFirstWorkspace() const {
    return path_[1] == "backdrop" && path_[2] == "screen0" && path_[3].starts_with(monitorPrefix) &&
           path_[4] == "workspace0";
  }

  void take(const std::string& name, const std::string& value) {
    const auto monitor = path_[3].substr(monitorPrefix.size());
    if (backdrops.empty() || backdrops.back().monitor != monitor) backdrops.push_back({monitor, {}, true});
    if (name == "last-image") backdrops.back().image = value;
    if (name == "image-style") backdrops.back().isShown = value != "0";
  }

  std::vector<std::string> path_;
};

std::vector<Backdrop> backdropsIn(const std::string& text) try {
  ChannelParser parser;
  Glib::Markup::ParseContext context(parser);
  context.parse(text);
  context.end_parse();
  return std::move(parser.backdrops);
} catch (const Glib::Error&) {
  return {};
}

}  // namespace

std::optional<std::filesystem::path> xfcePicture(const platform::Screen& screen) {
  const auto home = desktops::configHome();
  const auto file = home ? desktops::readFile(*home / "xfce4/xfconf/xfce-perchannel-xml/xfce4-desktop.xml", largestFile)
                         : std::nullopt;
  auto backdrops = file ? backdropsIn(file->bytes) : std::vector<Backdrop>();
  std::erase_if(backdrops, [](const auto& backdrop) { return backdrop.image.empty(); });
  auto chosen = std::ranges::find(backdrops, screen.localizedName, &Backdrop::monitor);
  if (chosen == backdrops.end()) chosen = backdrops.begin();
  return chosen != backdrops.end() && chosen->isShown ? localFile(chosen->image) : std::nullopt;
}

}  // namespace hushpane::session
