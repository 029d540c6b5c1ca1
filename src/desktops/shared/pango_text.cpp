#include "desktops/shared/pango_text.h"

#include <cmath>
#include <functional>
#include <list>
#include <string_view>
#include <unordered_map>

#include "desktops/shared/text_setter.h"

namespace hushpane::desktops {

namespace {

constexpr std::size_t mostKept = 256;

// What a layout was asked for with.
struct Request {
  std::string_view text;  // of the layout itself, once it is kept
  platform::TextStyle style;
  double width = 0;
  bool operator==(const Request&) const = default;
};

struct RequestHash {
  std::size_t operator()(const Request& request) const {
    std::size_t hash = std::hash<std::string_view>()(request.text);
    const auto& font = request.style.font;
    for (const double number : {request.width, font.size, font.tracking, static_cast<double>(font.weight),
                                request.style.minimumScale, static_cast<double>(request.style.lineLimit)})
      hash = hash * 31 + std::hash<double>()(number);
    return hash;
  }
};

}  // namespace

// The layouts asked for last.
class PangoTextEngine::Cache {
 public:
  platform::TextLayoutPtr find(const Request& request) {
    const auto found = byRequest_.find(request);
    if (found == byRequest_.end()) return nullptr;
    kept_.splice(kept_.begin(), kept_, found->second);
    return found->second->layout;
  }

  void keep(Request request, const platform::TextLayoutPtr& layout) {
    request.text = layout->text();
    kept_.push_front({request, layout});
    byRequest_[request] = kept_.begin();
    if (kept_.size() <= mostKept) return;
    byRequest_.erase(kept_.back().request);
    kept_.pop_back();
  }

 private:
  struct Entry {
    Request request;
    platform::TextLayoutPtr layout;
  };
  std::list<Entry> kept_;  // the last asked for first
  std::unordered_map<Request, std::list<Entry>::iterator, RequestHash> byRequest_;
};

PangoTextEngine::PangoTextEngine() : cache_(std::make_unique<Cache>()) {}
PangoTextEngine::~PangoTextEngine() = default;

platform::TextLayoutPtr PangoTextEngine::layout(const std::string& text, const platform::TextStyle& style,
                                                double width) {
  const Request request{text, style, std::isnan(width) ? unlimited : width};
  if (auto kept = cache_->find(request)) return kept;
  if (!setter_) setter_ = std::make_unique<TextSetter>();
  auto layout = std::make_shared<PangoTextLayout>(setter_->set(text, style, request.width));
  // A request that holds what is no number would never be found again.
  if (request == request) cache_->keep(request, layout);
  return layout;
}

}  // namespace hushpane::desktops
