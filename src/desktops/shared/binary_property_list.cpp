#include "desktops/shared/binary_property_list.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

#include "desktops/shared/property_list_limits.h"
#include "desktops/shared/unicode_text.h"

namespace hushpane::desktops {

namespace {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Value;

constexpr std::string_view magic = "bplist";
constexpr std::string_view header = "bplist00";
constexpr std::size_t trailerSize = 32;
constexpr double secondsTo2001 = 978307200;  // from 1970, where dates of this form start to count

struct Broken {};

void require(bool condition) {
  if (!condition) throw Broken{};
}

enum Kind : unsigned {
  simple = 0x0,
  integer = 0x1,
  real = 0x2,
  date = 0x3,
  data = 0x4,
  asciiText = 0x5,
  utf16Text = 0x6,
  identifier = 0x8,
  array = 0xA,
  dictionary = 0xD,
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {
    require(bytes.size() >= header.size() + trailerSize && bytes.starts_with(header));
    const std::size_t trailer = bytes.size() - trailerSize;
    offsetSize_ = number(trailer + 6, 1);
    referenceSize_ = number(trailer + 7, 1);
    count_ = number(trailer + 8, 8);
    root_ = number(trailer + 16, 8);
    table_ = number(trailer + 24, 8);
    require(offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8);
    require(table_ <= trailer && count_ <= (trailer - table_) / offsetSize_);
    end_ = table_;
  }

  std::optional<Value> root() { return object(root_, 0); }

 private:
  // A whole number with its highest byte first; at most 8 bytes.
  std::uint64_t number(std::uint64_t at, std::uint64_t size) const {
    std::uint64_t result = 0;
    for (const char byte : slice(at, size)) result = result << 8 | static_cast<std::uint8_t>(byte);
    return result;
  }

  std::string_view slice(std::uint64_t at, std::uint64_t size) const {
    require(at <= end_ && size <= end_ - at);
    return bytes_.substr(at, size);
  }

  std::string_view content(std::uint64_t at, std::uint64_t size) {
    copied_ += slice(at, size).size();
    require(copied_ <= propertyListLimit::bytes);
    return slice(at, size);
  }

  std::uint64_t offset(std::uint64_t index) {
    require(index < count_);
    end_ = bytes_.size();
    const auto found = number(table_ + index * offsetSize_, offsetSize_);
    end_ = table_;
    return found;
  }

  // The number of elements of an object; `at` moves from its marker to its first element.
  std::uint64_t elements(std::uint64_t& at, unsigned low) const {
    ++at;
    if (low != 0xF) return low;
    const unsigned marker = static_cast<unsigned>(number(at, 1));
    require(marker >> 4 == integer && (marker & 0xF) <= 3);
    const std::uint64_t size = 1u << (marker & 0xF);
    const std::uint64_t result = number(at + 1, size);
    at += 1 + size;
    return result;
  }

  std::optional<Value> object(std::uint64_t index, std::size_t depth) {
    require(++values_ <= propertyListLimit::values);
    std::uint64_t at = offset(index);
    require(at >= header.size());
    const auto marker = static_cast<unsigned>(number(at, 1));
    const unsigned low = marker & 0xF;
    switch (marker >> 4) {
      case simple: return truth(low);
      case integer: return wholeNumber(at + 1, low);
      case real: return realNumber(at + 1, low);
      case date: require(low == 3); return Date{realOf<double>(at + 1) + secondsTo2001};
      case data: return bytesAt(at, low);
      case asciiText:
      case utf16Text: return textAt(at, marker);
      case identifier: slice(at + 1, low + 1); return std::nullopt;
      case array: return arrayAt(at, low, depth + 1);
      case dictionary: return dictionaryAt(at, low, depth + 1);
      default: throw Broken{};
    }
  }

  static std::optional<Value> truth(unsigned low) {
    require(low == 0x0 || low == 0x8 || low == 0x9);
    if (low == 0x0) return std::nullopt;
    return Value(low == 0x9);
  }

  // One, two and four bytes are unsigned; eight are signed; sixteen hold what eight cannot.
  std::optional<Value> wholeNumber(std::uint64_t at, unsigned low) const {
    require(low <= 4);
    if (low < 4) return Value(static_cast<std::int64_t>(number(at, 1u << low)));
    const std::uint64_t high = number(at, 8);
    const auto rest = static_cast<std::int64_t>(number(at + 8, 8));
    if (high != (rest < 0 ? std::numeric_limits<std::uint64_t>::max() : 0)) return std::nullopt;
    return Value(rest);
  }

  std::optional<Value> realNumber(std::uint64_t at, unsigned low) const {
    require(low == 2 || low == 3);
    return low == 2 ? Value(double{realOf<float>(at)}) : Value(realOf<double>(at));
  }

  template <class Real>
  Real realOf(std::uint64_t at) const {
    if constexpr (sizeof(Real) == 4)
      return std::bit_cast<float>(static_cast<std::uint32_t>(number(at, 4)));
    else
      return std::bit_cast<double>(number(at, 8));
  }

  Value bytesAt(std::uint64_t at, unsigned low) {
    const auto size = elements(at, low);
    const auto found = content(at, size);
    return Data(found.begin(), found.end());
  }

  std::string textAt(std::uint64_t at, unsigned marker) {
    const auto size = elements(at, marker & 0xF);
    std::optional<std::string> text;
    if (marker >> 4 == utf16Text) {
      require(size <= bytes_.size());
      text = utf8FromUtf16(content(at, size * 2), ByteOrder::highFirst);
    } else {
      text = content(at, size);
      require(std::none_of(text->begin(), text->end(), [](char byte) { return static_cast<signed char>(byte) < 0; }));
    }
    require(text.has_value());
    return std::move(*text);
  }

  std::uint64_t reference(std::uint64_t first, std::uint64_t position) const {
    return number(first + position * referenceSize_, referenceSize_);
  }

  // A container within itself runs into the limit of nesting.
  Array arrayAt(std::uint64_t at, unsigned low, std::size_t depth) {
    require(depth <= propertyListLimit::nesting);
    const auto count = elements(at, low);
    require(count <= propertyListLimit::values);
    Array result;
    for (std::uint64_t position = 0; position < count; ++position)
      if (auto element = object(reference(at, position), depth)) result.push_back(std::move(*element));
    return result;
  }

  Dictionary dictionaryAt(std::uint64_t at, unsigned low, std::size_t depth) {
    require(depth <= propertyListLimit::nesting);
    const auto count = elements(at, low);
    require(count <= propertyListLimit::values);
    Dictionary result;
    for (std::uint64_t position = 0; position < count; ++position) {
      auto key = object(reference(at, position), depth);
      require(key && std::holds_alternative<std::string>(key->storage));
      if (auto element = object(reference(at, count + position), depth))
        result.insert_or_assign(std::get<std::string>(std::move(key->storage)), std::move(*element));
    }
    return result;
  }

  std::string_view bytes_;
  std::uint64_t end_ = bytes_.size();  // of what may be read: the table of offsets is no place for objects
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::uint64_t count_ = 0;
  std::uint64_t root_ = 0;
  std::uint64_t table_ = 0;
  std::size_t values_ = 0;
  std::size_t copied_ = 0;
};

}  // namespace

bool isBinaryPropertyList(std::string_view bytes) {
  return bytes.starts_with(magic);
}

std::optional<Value> parseBinaryPropertyList(std::string_view bytes) {
  if (bytes.size() > propertyListLimit::bytes) return std::nullopt;
  try {
    return Reader(bytes).root();
  } catch (Broken) {
    return std::nullopt;
  }
}

}  // namespace hushpane::desktops
