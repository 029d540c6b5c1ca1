#include "desktops/shared/xml_property_list.h"

#include <glibmm/markup.h>

#include <map>
#include <vector>

#include "desktops/shared/property_list_limits.h"
#include "desktops/shared/xml_scalars.h"

namespace hushpane::desktops {

namespace {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Value;

constexpr std::string_view preamble =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

void require(bool condition) {
  if (!condition) throw Glib::MarkupError(Glib::MarkupError::INVALID_CONTENT, "not a property list");
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view space = " \t\r\n";
  const auto first = text.find_first_not_of(space);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(space) - first + 1);
}

enum class Element { plist, dictionary, array, key, text, integer, real, yes, no, date, data };

const std::map<std::string, Element, std::less<>> elements{
    {"plist", Element::plist}, {"dict", Element::dictionary}, {"array", Element::array}, {"key", Element::key},
    {"string", Element::text}, {"integer", Element::integer}, {"real", Element::real},   {"true", Element::yes},
    {"false", Element::no},    {"date", Element::date},       {"data", Element::data},
};

// An element that is open.
struct Open {
  Element element;
  std::string text;
  Array array;
  Dictionary dictionary;
  std::optional<std::string> key;
};

bool isContainer(Element element) {
  return element == Element::plist || element == Element::dictionary || element == Element::array;
}

// The value of an element that has just closed; nothing when it counts as absent.
std::optional<Value> scalar(const Open& closed) {
  const std::string_view text = trimmed(closed.text);
  const auto checked = [](auto parsed) {
    require(parsed.has_value());
    return std::move(*parsed);
  };
  switch (closed.element) {
    case Element::text: return Value(closed.text);
    case Element::integer: {
      const auto parsed = checked(xmlScalar::parseInteger(text));
      return parsed.value ? std::optional(Value(*parsed.value)) : std::nullopt;
    }
    case Element::real: return Value(checked(xmlScalar::parseReal(text)));
    case Element::date: return Value(checked(xmlScalar::parseDate(text)));
    case Element::data: return Value(checked(xmlScalar::parseData(text)));
    default: require(text.empty()); return Value(closed.element == Element::yes);
  }
}

class Reader : public Glib::Markup::Parser {
 public:
  std::optional<Value> root;
  bool hasRoot = false;

 private:
  void on_start_element(Glib::Markup::ParseContext&, const Glib::ustring& name, const AttributeMap&) override {
    const auto found = elements.find(name.raw());
    require(found != elements.end() && open_.size() <= propertyListLimit::nesting);
    const Element element = found->second;
    require(element == Element::plist ? open_.empty() && !hasRoot : mayHold(element));
    require(++values_ <= 2 * propertyListLimit::values);  // keys count too
    open_.push_back({element, {}, {}, {}, {}});
  }

  bool mayHold(Element element) const {
    if (open_.empty()) return !hasRoot && element != Element::key;
    const Open& parent = open_.back();
    switch (parent.element) {
      case Element::plist: return !hasRoot && element != Element::key;
      case Element::array: return element != Element::key;
      case Element::dictionary: return (element == Element::key) != parent.key.has_value();
      default: return false;
    }
  }

  void on_text(Glib::Markup::ParseContext&, const Glib::ustring& text) override {
    if (open_.empty() || isContainer(open_.back().element))
      require(trimmed(text.raw()).empty());
    else
      open_.back().text += text.raw();
  }

  void on_end_element(Glib::Markup::ParseContext&, const Glib::ustring&) override {
    Open closed = std::move(open_.back());
    open_.pop_back();
    switch (closed.element) {
      case Element::plist: return require(hasRoot);
      case Element::key: open_.back().key = std::move(closed.text); return;
      case Element::array: return take(std::move(closed.array));
      case Element::dictionary: require(!closed.key); return take(std::move(closed.dictionary));
      default: return take(scalar(closed));
    }
  }

  void take(std::optional<Value> value) {
    if (open_.empty() || open_.back().element == Element::plist) {
      hasRoot = true;
      root = std::move(value);
      return;
    }
    Open& parent = open_.back();
    if (value && parent.element == Element::array) parent.array.push_back(std::move(*value));
    if (value && parent.key) parent.dictionary.insert_or_assign(std::move(*parent.key), std::move(*value));
    parent.key.reset();
  }

  std::vector<Open> open_;
  std::size_t values_ = 0;
};

class Writer {
 public:
  std::string write(const Dictionary& root) {
    text_ = preamble;
    dictionary(root, 0);
    return std::move(text_) + "</plist>\n";
  }

 private:
  void line(std::size_t depth, std::string_view content) { text_.append(depth, '\t').append(content).append("\n"); }

  void element(std::size_t depth, std::string_view name, std::string_view content) {
    text_.append(depth, '\t').append("<").append(name).append(">").append(content);
    text_.append("</").append(name).append(">\n");
  }

  static bool canWrite(const Value& value, std::size_t depth) {
    if (const auto* date = std::get_if<Date>(&value.storage)) return xmlScalar::writeDate(*date).has_value();
    const bool isContainer =
        std::holds_alternative<Array>(value.storage) || std::holds_alternative<Dictionary>(value.storage);
    return !isContainer || depth < propertyListLimit::nesting;
  }

  void dictionary(const Dictionary& entries, std::size_t depth) {
    line(depth, "<dict>");
    for (const auto& [key, value] : entries) {
      if (!canWrite(value, depth + 1)) continue;
      element(depth + 1, "key", xmlScalar::writeText(key));
      write(value, depth + 1);
    }
    line(depth, "</dict>");
  }

  void array(const Array& values, std::size_t depth) {
    line(depth, "<array>");
    for (const auto& value : values)
      if (canWrite(value, depth + 1)) write(value, depth + 1);
    line(depth, "</array>");
  }

  void write(const Value& value, std::size_t depth) {
    std::visit([this, depth](const auto& held) { write(held, depth); }, value.storage);
  }
  void write(bool value, std::size_t depth) { line(depth, value ? "<true/>" : "<false/>"); }
  void write(std::int64_t value, std::size_t depth) { element(depth, "integer", std::to_string(value)); }
  void write(double value, std::size_t depth) { element(depth, "real", xmlScalar::writeReal(value)); }
  void write(const std::string& value, std::size_t depth) { element(depth, "string", xmlScalar::writeText(value)); }
  void write(const Data& value, std::size_t depth) { element(depth, "data", xmlScalar::writeData(value)); }
  void write(Date value, std::size_t depth) { element(depth, "date", *xmlScalar::writeDate(value)); }
  void write(const Array& value, std::size_t depth) { array(value, depth); }
  void write(const Dictionary& value, std::size_t depth) { dictionary(value, depth); }

  std::string text_;
};

}  // namespace

std::optional<Value> parseXmlPropertyList(std::string_view text) {
  Reader reader;
  Glib::Markup::ParseContext context(reader, Glib::Markup::ParseFlags::TREAT_CDATA_AS_TEXT);
  try {
    context.parse(text.data(), text.data() + text.size());
    context.end_parse();
  } catch (const Glib::MarkupError&) {
    return std::nullopt;
  }
  return std::move(reader.root);
}

std::string writeXmlPropertyList(const Dictionary& root) {
  return Writer().write(root);
}

}  // namespace hushpane::desktops
