#include "desktops/sim/shown_texts.h"

#include <algorithm>
#include <utility>

namespace hushpane::sim {

namespace {

// Notes the texts and draws nothing.
class TextReader : public platform::Canvas {
 public:
  explicit TextReader(platform::Point origin) : origin_(origin) {}

  std::vector<ShownText> texts() && { return std::move(texts_); }

  void fill(const platform::Path&, const platform::Paint&) override {}
  void stroke(const platform::Path&, const platform::Color&, const platform::Stroke&) override {}
  void drawText(const platform::TextLayout& layout, platform::Point at, double scale,
                const platform::Color& color) override {
    if (color.alpha <= 0) return;
    const auto size = layout.size();
    texts_.push_back({layout.text(),
                      {origin_.x + at.x, origin_.y + at.y, size.width * scale, size.height * scale},
                      layout.isTruncated() || layout.fontScale() < 1});
  }
  void drawImage(const platform::Image&, const platform::Rect&) override {}
  void drawTemplate(const platform::Image&, const platform::Rect&, const platform::Color&) override {}
  void clip(const platform::Path&) override {}
  void restoreClip() override {}
  void beginLayer(const platform::LayerEffect&, const platform::Rect&) override {}
  void endLayer() override {}

 private:
  platform::Point origin_;
  std::vector<ShownText> texts_;
};

}  // namespace

std::vector<ShownText> textsOf(const std::function<void(platform::Canvas&)>& paint, platform::Point origin) {
  TextReader reader(origin);
  paint(reader);
  return std::move(reader).texts();
}

std::vector<ShownText> shownTexts(const SimPanel& panel) {
  const auto frame = panel.frame();
  const auto paint = [&](platform::Canvas& canvas) {
    panel.contents().paint(canvas, {0, 0, frame.width, frame.height});
  };
  return textsOf(paint, {frame.x, frame.y});
}

std::optional<ShownText> findText(const SimPanels& panels, const std::string& text) {
  for (const auto* panel : panels.shown()) {
    const auto texts = shownTexts(*panel);
    const auto found = std::ranges::find(texts, text, &ShownText::text);
    if (found != texts.end()) return *found;
  }
  return std::nullopt;
}

}  // namespace hushpane::sim
