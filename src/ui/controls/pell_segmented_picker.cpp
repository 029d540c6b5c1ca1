#include "ui/controls/pell_segmented_picker.h"

namespace hushpane {

namespace {

using namespace declarative;

constexpr double itemHeight = 22;           // points
constexpr double smallestTitleScale = 0.8;  // so much a long title shrinks before it is cut
constexpr Animation slide = spring(0.45, 0.85);

const platform::TextStyle titleStyle{.font = {.size = 11, .weight = platform::FontWeight::medium},
                                     .alignment = platform::TextAlignment::center,
                                     .lineLimit = 1,
                                     .minimumScale = smallestTitleScale};

Element titleOf(const SegmentedPickerItem& item, double width, const Updates& updates) {
  const Element title =
      text(localized(item.title), titleStyle)
          .foreground(item.isSelected ? opaqueBlack : primary.opacity(0.6))
          .frame({.width = width, .height = itemHeight})
          .contentShape(Capsule{})
          .onTap([choose = item.choose, updates] { updates.withAnimation(slide, choose); })
          .accessibility({.role = AccessibilityRole::button, .label = item.tooltip, .isOn = item.isSelected});
  return item.tooltip.empty() ? title : title.tooltip(item.tooltip);
}

Element highlightOf(const SegmentedPickerItem& item, double width, const AdaptiveColor& tint, Context& context) {
  const Element highlight =
      item.isSelected ? fill(Capsule{}, tint).matchedGeometry({"PellPill", context.nameSpace()}) : spacer(0);
  return highlight.frame({.width = width, .height = itemHeight});
}

}  // namespace

// The highlight lies in a row of its own behind all titles, so that it covers none on its way.
Element segmentedPicker(const std::vector<SegmentedPickerItem>& items, const AdaptiveColor& activeTint,
                        double itemWidth, Context& context) {
  std::vector<Element> titles, highlights;
  for (const auto& item : items) {
    titles.push_back(titleOf(item, itemWidth, context.updates()));
    highlights.push_back(highlightOf(item, itemWidth, activeTint, context));
  }
  return horizontalStack({.spacing = 0}, std::move(titles))
      .focusGroup()
      .background(horizontalStack({.spacing = 0}, std::move(highlights)))
      .padding(2)
      .background(fill(Rectangle{}, primary.opacity(0.1)))
      .clip(Capsule{});
}

}  // namespace hushpane
