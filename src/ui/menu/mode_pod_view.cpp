#include "ui/menu/mode_pod_view.h"

#include "ui/localized.h"

namespace hushpane {

namespace {

using namespace declarative;
using platform::FontWeight;

struct ModeLook {
  LocalizationKey title;
  std::string_view symbol;
  AdaptiveColor color;
};

ModeLook lookOf(VeilMode mode) {
  switch (mode) {
    case VeilMode::standard: return {"Standard"_key, "macwindow.on.rectangle", fixed({0.38, 0.62, 0.64, 1})};
    case VeilMode::cleanDesktop: return {"Ambience"_key, "rectangle.stack", fixed({0.48, 0.54, 0.78, 1})};
    case VeilMode::focus: return {"Focus"_key, "rectangle.on.rectangle", fixed({0.66, 0.38, 0.58, 1})};
    case VeilMode::reveal: break;
  }
  return {"Reveal"_key, "circle", secondary};
}

constexpr Shape outline = RoundedRectangle{12};
constexpr Animation hover = easeOut(0.16);

struct Border {
  AdaptiveColor color;
  double width = 1;  // points
};

// The looks of one pod in one state.
class PodStyle {
 public:
  PodStyle(VeilMode mode, bool isActive, bool isHovered)
      : look_(lookOf(mode)), isActive_(isActive), isHovered_(isHovered) {}

  Element icon() const {
    return symbol({.name = look_.symbol,
                   .font = {.size = 13, .weight = FontWeight::semibold},
                   .variant = isActive_ ? SymbolVariant::filled : SymbolVariant::plain})
        .foreground(isActive_ || isHovered_ ? look_.color : secondary)
        .scale(isHovered_ ? 1.08 : 1)
        .shadow(glow(0.6, 0.38), isActive_ ? 7 : 4);
  }
  Element activeMark() const {
    return fill(Circle{}, look_.color)
        .frame({.width = 4, .height = 4})
        .shadow(look_.color.opacity(0.9), 5)
        .opacity(isActive_ ? 1 : 0);
  }
  Element title() const {
    const platform::Font font{.size = 12, .weight = isActive_ ? FontWeight::semibold : FontWeight::regular};
    return text(localized(look_.title), font)
        .foreground(isActive_ || isHovered_ ? primary : secondary)
        .opacity(isActive_    ? 1
                 : isHovered_ ? 0.92
                              : 0.72);
  }
  std::vector<AdaptiveShadow> shadows() const {
    if (!isHovered_) return {{fixed({0, 0, 0, 0}), 0, {}}, {fixed({0, 0, 0, 0}), 0, {}}};
    return {{opaqueBlack.opacity(0.12), 12, {0, 6}}, {opaqueBlack.opacity(0.2), 2, {0, 1}}};
  }
  Element background() const {
    if (isActive_) return fill(outline, look_.color.opacity(isHovered_ ? 0.18 : 0.13));
    return fill(outline, isHovered_ ? look_.color.opacity(0.06) : primary.opacity(0.03));
  }
  Element border() const {
    const auto [color, width] = borderLine();
    return stroke(outline, color, width).shadow(glow(0.45, 0.18), isActive_ ? 6 : 3);
  }

 private:
  AdaptiveColor glow(double active, double hovered) const {
    return look_.color.opacity(isActive_ ? active : isHovered_ ? hovered : 0);
  }
  Border borderLine() const {
    if (isActive_) return {look_.color.opacity(isHovered_ ? 0.9 : 0.72), 1.6};
    return isHovered_ ? Border{look_.color.opacity(0.42), 1.2} : Border{primary.opacity(0.05), 1};
  }

  ModeLook look_;
  bool isActive_;
  bool isHovered_;
};

}  // namespace

Element ModePodView::body(Context& context) const {
  const auto isHovered = context.state("isHovered", false);
  const PodStyle style(mode, isActive, isHovered.get());
  const Element label =
      verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 6},
                    {horizontalStack({}, {style.icon(), spacer(), style.activeMark()}), style.title()})
          .padding(10)
          .frame({.maxWidth = infinity, .alignment = alignment::leading})
          .scale(isHovered.get() ? 1.025 : 1)
          .shadows(style.shadows())
          .background(style.background())
          .overlay(style.border())
          .animation(hover, isHovered.get())
          .contentShape(outline);
  return button(action, label)
      .onHover([isHovered](bool inside) { isHovered.set(inside); })
      .accessibility({.role = AccessibilityRole::button, .isOn = isActive});
}

}  // namespace hushpane
