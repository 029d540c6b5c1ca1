#include <glibmm/markup.h>

#include <algorithm>
#include <array>
#include <vector>

#include "desktops/session/picture_sources.h"
#include "desktops/shared/files.h"

namespace hushpane::session {

namespace {

constexpr std::size_t largestFile = 1 << 20;

// Finds the first path below <background><static><file>, there or in one of several <size>.
class PlanParser : public Glib::Markup::Parser {
 public:
  std::string picture;

 protected:
  void on_start_element(Glib::Markup::ParseContext&, const Glib::ustring& element, const AttributeMap&) override {
    path_.push_back(element);
  }
  void on_end_element(Glib::Markup::ParseContext&, const Glib::ustring&) override { path_.pop_back(); }
  void on_text(Glib::Markup::ParseContext&, const Glib::ustring& text) override {
    constexpr std::array way{"background", "static", "file"};
    constexpr auto blanks = " \t\r\n";
    if (!picture.empty() || path_.size() < way.size() || !std::equal(way.begin(), way.end(), path_.begin())) return;
    const auto& bytes = text.raw();
    const auto first = bytes.find_first_not_of(blanks);
    if (first != bytes.npos) picture = bytes.substr(first, bytes.find_last_not_of(blanks) - first + 1);
  }

 private:
  std::vector<Glib::ustring> path_;
};

}  // namespace

std::optional<std::filesystem::path> firstOfTimedPicture(const std::filesystem::path& plan) try {
  const auto file = desktops::readFile(plan, largestFile);
  if (!file) return std::nullopt;
  PlanParser parser;
  Glib::Markup::ParseContext context(parser);
  context.parse(file->bytes);
  context.end_parse();
  return localFile(parser.picture);
} catch (const Glib::Error&) {
  return std::nullopt;
}

}  // namespace hushpane::session
