#include "desktops/shared/json_text.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace hushpane::desktops {

namespace {

using nlohmann::ordered_json;
using platform::Json;
using platform::JsonArray;
using platform::JsonObject;

constexpr std::size_t deepestNesting = 64;

// Builds the value from what the parser meets. Returning false ends the parser.
class Builder : public nlohmann::json_sax<ordered_json> {
 public:
  Json take() { return std::move(root_); }

  bool null() override { return put({nullptr}); }
  bool boolean(bool value) override { return put({value}); }
  bool number_integer(std::int64_t value) override { return put({value}); }
  bool number_unsigned(std::uint64_t value) override { return put({value}); }
  bool number_float(double value, const std::string&) override { return put({value}); }
  bool string(std::string& value) override { return put({std::move(value)}); }
  bool binary(binary_t&) override { return false; }
  bool start_array(std::size_t) override { return open({JsonArray{}}); }
  bool start_object(std::size_t) override { return open({JsonObject{}}); }
  bool end_array() override { return close(); }
  bool end_object() override { return close(); }
  bool key(std::string& name) override {
    std::get<JsonObject>(open_.back().storage).push_back({std::move(name), {}});
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

 private:
  bool open(Json container) {
    if (open_.size() == deepestNesting) return false;
    open_.push_back(std::move(container));
    return true;
  }
  bool close() {
    auto closed = std::move(open_.back());
    open_.pop_back();
    return put(std::move(closed));
  }
  bool put(Json value) {
    if (open_.empty())
      root_ = std::move(value);
    else if (auto* array = std::get_if<JsonArray>(&open_.back().storage))
      array->push_back(std::move(value));
    else
      std::get<JsonObject>(open_.back().storage).back().value = std::move(value);
    return true;
  }

  Json root_;
  std::vector<Json> open_;
};

ordered_json written(const Json& value);

ordered_json written(const JsonArray& array) {
  auto result = ordered_json::array();
  for (const auto& element : array) result.push_back(written(element));
  return result;
}

ordered_json written(const JsonObject& object) {
  auto result = ordered_json::object();
  for (const auto& [name, member] : object) result[name] = written(member);
  return result;
}

ordered_json written(const Json& value) {
  return std::visit(
      [](const auto& held) -> ordered_json {
        if constexpr (requires { written(held); })
          return written(held);
        else
          return held;
      },
      value.storage);
}

}  // namespace

std::optional<Json> JsonText::decode(const platform::Data& text) const {
  Builder builder;
  if (!ordered_json::sax_parse(text.begin(), text.end(), &builder)) return std::nullopt;
  return builder.take();
}

std::optional<platform::Data> JsonText::encode(const Json& value) const {
  try {
    const std::string text = written(value).dump();
    return platform::Data(text.begin(), text.end());
  } catch (const ordered_json::exception&) {
    return std::nullopt;
  }
}

}  // namespace hushpane::desktops
