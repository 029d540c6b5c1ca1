#include "update/appcast.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace hushpane::update {

namespace {

constexpr std::size_t deepest = 16;  // elements within elements
constexpr std::size_t mostEntries = 1000;
constexpr std::size_t longestText = 2048;  // bytes of each value of an entry
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

std::string_view withoutPrefix(const char* name) {
  const std::string_view whole(name);
  const auto colon = whole.find(':');
  return colon == whole.npos ? whole : whole.substr(colon + 1);
}

std::string trimmed(const std::string& text) {
  constexpr const char* blanks = " \t\r\n";
  const auto first = text.find_first_not_of(blanks);
  return first == text.npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isPlain(const std::string& text) {
  return std::ranges::none_of(text,
                              [](char letter) { return static_cast<unsigned char>(letter) < ' ' || letter == '\x7f'; });
}

// Builds entries from the events of the parser. Refusing a feed ends the parsing.
class Reader {
 public:
  std::vector<AppcastEntry> entries;

  void begin(const char* name, const char** attributeNames, const char** attributeValues, GError** error) {
    path_.emplace_back(withoutPrefix(name));
    if (path_.size() > deepest) return refuse(error, "too deep");
    if (path_.size() == 1 && path_[0] != "rss") return refuse(error, "not RSS");
    if (isAt({"rss", "channel", "item"})) {
      if (++items_ > mostEntries) return refuse(error, "too many entries");
      entry_ = {};
      isOdd_ = false;
    }
    if (!isInItem()) return;
    text_.clear();
    if (path_.back() == "enclosure") readEnclosure(attributeNames, attributeValues);
  }

  void end() {
    if (isInItem() && path_.back() == "link") take(entry_.link, trimmed(text_));
    if (isInItem() && path_.back() == "minimumVersion") take(entry_.minimumVersion, trimmed(text_));
    if (isAt({"rss", "channel", "item"})) finishItem();
    path_.pop_back();
  }

  void text(std::string_view part) {
    if (isInItem() && text_.size() + part.size() <= 2 * longestText) text_ += part;
  }

  // Comments and the XML declaration pass; a document type could define entities.
  static void passThrough(std::string_view part, GError** error) {
    if (!part.starts_with("<!--") && !part.starts_with("<?")) refuse(error, "a document type");
  }

 private:
  static void refuse(GError** error, const char* reason) {
    g_set_error_literal(error, G_MARKUP_ERROR, G_MARKUP_ERROR_INVALID_CONTENT, reason);
  }

  bool isAt(std::initializer_list<const char*> path) const { return std::ranges::equal(path_, path); }

  // Directly in an entry.
  bool isInItem() const {
    return path_.size() == 4 && path_[0] == "rss" && path_[1] == "channel" && path_[2] == "item";
  }

  // What is told twice could be signed once.
  void take(std::string& value, std::string text) {
    if (!value.empty() || text.size() > longestText || !isPlain(text)) isOdd_ = true;
    value = std::move(text);
  }

  void readEnclosure(const char** names, const char** values) {
    for (; *names; ++names, ++values) {
      const auto name = withoutPrefix(*names);
      if (name == "version") take(entry_.version, *values);
      if (name == "shortVersionString") take(entry_.shortVersion, *values);
      if (name == "edSignature") take(entry_.signature, *values);
    }
  }

  void finishItem() {
    if (!isOdd_ && !entry_.version.empty() && !entry_.link.empty() && !entry_.signature.empty())
      entries.push_back(entry_);
  }

  std::vector<std::string> path_;  // from the root to where the parser is
  std::size_t items_ = 0;
  AppcastEntry entry_;
  bool isOdd_ = false;
  std::string text_;
};

Reader& reader(gpointer data) {
  return *static_cast<Reader*>(data);
}

const GMarkupParser events{[](GMarkupParseContext*, const char* name, const char** names, const char** values,
                              gpointer data, GError** error) { reader(data).begin(name, names, values, error); },
                           [](GMarkupParseContext*, const char*, gpointer data, GError**) { reader(data).end(); },
                           [](GMarkupParseContext*, const char* text, gsize size, gpointer data, GError**) {
                             reader(data).text({text, size});
                           },
                           [](GMarkupParseContext*, const char* text, gsize size, gpointer, GError** error) {
                             Reader::passThrough({text, size}, error);
                           },
                           nullptr};

}  // namespace

std::string signedText(const AppcastEntry& entry) {
  return entry.version + '\n' + entry.shortVersion + '\n' + entry.link + '\n' + entry.minimumVersion + '\n';
}

std::optional<std::vector<AppcastEntry>> parseAppcast(std::string_view feed) {
  if (feed.size() > largestFeed) return std::nullopt;
  if (feed.starts_with(byteOrderMark)) feed.remove_prefix(byteOrderMark.size());
  Reader reader;
  const std::unique_ptr<GMarkupParseContext, void (*)(GMarkupParseContext*)> context(
      g_markup_parse_context_new(&events, G_MARKUP_TREAT_CDATA_AS_TEXT, &reader, nullptr), g_markup_parse_context_free);
  const bool isWellFormed =
      g_markup_parse_context_parse(context.get(), feed.data(), static_cast<gssize>(feed.size()), nullptr) &&
      g_markup_parse_context_end_parse(context.get(), nullptr);
  return isWellFormed ? std::optional(std::move(reader.entries)) : std::nullopt;
}

}  // namespace hushpane::update
