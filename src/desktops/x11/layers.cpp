#include "desktops/x11/layers.h"

#include <algorithm>

namespace hushpane::x11 {

namespace {

void collect(const platform::View& view, double opacity, std::vector<Layer>& layers) {
  opacity *= view.presentationAlpha();
  if (view.isHidden() || opacity <= 0) return;
  if (view.material() == platform::EffectMaterial::darkHud)
    layers.push_back({Layer::Kind::material, {}, nullptr, opacity});
  if (const auto color = view.presentationLayerColor(); color && color->alpha > 0)
    layers.push_back({Layer::Kind::color, *color, nullptr, opacity});
  if (view.outgoingContents()) {
    // An incoming picture appears over the one that goes; without one, the old picture fades by itself.
    const double outgoing = view.contents() ? 1 : 1 - view.contentsFade();
    layers.push_back({Layer::Kind::image, {}, view.outgoingContents(), opacity * outgoing});
  }
  if (view.contents()) layers.push_back({Layer::Kind::image, {}, view.contents(), opacity * view.contentsFade()});
  if (view.drawable()) layers.push_back({Layer::Kind::drawable, {}, view.drawable(), opacity, view.drawableFrame()});
  for (const auto& subview : view.subviews()) collect(*subview, opacity, layers);
}

}  // namespace

std::vector<Layer> layersOf(const platform::View& view) {
  std::vector<Layer> layers;
  collect(view, 1, layers);
  std::erase_if(layers, [](const Layer& layer) { return layer.opacity <= 0; });
  const auto opaque = std::find_if(layers.rbegin(), layers.rend(), [](const Layer& layer) { return layer.isOpaque(); });
  if (opaque != layers.rend()) layers.erase(layers.begin(), opaque.base() - 1);
  return layers;
}

}  // namespace hushpane::x11
