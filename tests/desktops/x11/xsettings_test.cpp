#include "desktops/x11/xsettings.h"

#include <gtest/gtest.h>

namespace hushpane::x11::tests {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The property as a manager with that byte order writes it.
class Writer {
 public:
  Writer(bool isLowestFirst, std::uint32_t count) : isLowestFirst_(isLowestFirst) {
    bytes = {std::uint8_t(isLowestFirst ? 0 : 1), 0, 0, 0};
    number(7, 4);
    number(count, 4);
  }
  void number(std::uint32_t value, std::size_t size) {
    for (std::size_t index = 0; index < size; ++index)
      bytes.push_back(std::uint8_t(value >> 8 * (isLowestFirst_ ? index : size - 1 - index)));
  }
  void text(const std::string& value) {
    bytes.insert(bytes.end(), value.begin(), value.end());
    while (bytes.size() % 4 != 0) bytes.push_back(0);
  }
  void begin(std::uint8_t kind, const std::string& name) {
    number(kind, 1);
    number(0, 1);
    number(std::uint32_t(name.size()), 2);
    text(name);
    number(3, 4);
  }
  void string(const std::string& name, const std::string& value) {
    begin(1, name);
    number(std::uint32_t(value.size()), 4);
    text(value);
  }

  Bytes bytes;

 private:
  bool isLowestFirst_;
};

Bytes ordinary(bool isLowestFirst, std::uint32_t count = 4) {
  Writer writer(isLowestFirst, count);
  writer.begin(0, "Xft/DPI");
  writer.number(std::uint32_t(-98304), 4);
  writer.begin(2, "Net/Background");
  writer.number(0xffff0000, 4);
  writer.number(0x1234ffff, 4);
  writer.string("Net/ThemeName", "Adwaita-dark");
  writer.string("Gtk/Empty", "");
  return writer.bytes;
}

const XsettingsValues all{{"Xft/DPI", -98304}, {"Net/ThemeName", "Adwaita-dark"}, {"Gtk/Empty", ""}};

TEST(Xsettings, AreReadInBothByteOrders) {
  EXPECT_EQ(xsettingsIn(ordinary(true)), all);
  EXPECT_EQ(xsettingsIn(ordinary(false)), all);
}

TEST(Xsettings, ThatBreakOffTellWhatCameBefore) {
  const auto whole = ordinary(true);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    // At its own end, lest what lies behind be read unseen.
    const auto values = xsettingsIn(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(length)));
    EXPECT_LT(values.size(), all.size());
    for (const auto& [name, value] : values) EXPECT_EQ(all.at(name), value);
  }
}

TEST(Xsettings, OfHostileManagersAreHarmless) {
  Writer longText(true, 2), longName(true, 2), unknownKind(true, 3), twice(false, 2);
  longText.string("Net/ThemeName", "Arc");
  longText.begin(1, "Net/IconThemeName");
  longText.number(0xffffffff, 4);
  longName.string("Net/ThemeName", "Arc");
  longName.number(1, 2);
  longName.number(0xffff, 2);
  unknownKind.string("Net/ThemeName", "Arc");
  unknownKind.begin(9, "Net/Future");
  unknownKind.string("Net/Late", "never");
  twice.string("Net/ThemeName", "first");
  twice.string("Net/ThemeName", "Arc");
  const struct {
    const char* name;
    Bytes bytes;
    XsettingsValues values;
  } cases[]{
      {"more announced than there are", ordinary(true, 0xffffffff), all},
      {"fewer announced than there are", ordinary(true, 1), {{"Xft/DPI", -98304}}},
      {"a text longer than memory", longText.bytes, {{"Net/ThemeName", "Arc"}}},
      {"a name longer than the rest", longName.bytes, {{"Net/ThemeName", "Arc"}}},
      {"a kind that nobody knows", unknownKind.bytes, {{"Net/ThemeName", "Arc"}}},
      {"one told twice", twice.bytes, {{"Net/ThemeName", "Arc"}}},
  };
  for (const auto& [name, bytes, values] : cases) EXPECT_EQ(xsettingsIn(bytes), values) << name;
}

}  // namespace
}  // namespace hushpane::x11::tests
