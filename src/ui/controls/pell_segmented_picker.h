#pragma once

#include <concepts>
#include <functional>
#include <string>
#include <vector>

#include "declarative/element.h"
#include "localization/localization_key.h"
#include "ui/localized.h"

namespace hushpane {

// The looks of a picker, whatever its values are.
struct SegmentedPickerItem {
  LocalizationKey title;
  std::string tooltip;  // what a title that is a sign stands for; else empty
  bool isSelected = false;
  std::function<void()> choose;
};
declarative::Element segmentedPicker(const std::vector<SegmentedPickerItem>& items,
                                     const declarative::AdaptiveColor& activeTint, double itemWidth,
                                     declarative::Context& context);

// One value out of a few, side by side in a capsule. A highlight behind the title of the selected one slides when the
// selection changes; there is none while the selection is not among the options.
template <std::equality_comparable Value>
struct PellSegmentedPicker {
  struct Option {
    LocalizationKey title;
    Value value;
    std::string tooltip = {};
  };

  declarative::Binding<Value> selection;
  std::vector<Option> options;
  declarative::AdaptiveColor activeTint;
  double itemWidth = 0;  // points

  declarative::Element body(declarative::Context& context) const {
    std::vector<SegmentedPickerItem> items;
    const Value selected = selection.get();
    for (const auto& [title, value, tooltip] : options)
      items.push_back({title, tooltip, value == selected, [set = selection.set, value = value] { set(value); }});
    return segmentedPicker(items, activeTint, itemWidth, context);
  }
};

}  // namespace hushpane
