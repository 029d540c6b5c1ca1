#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/animator.h"
#include "platform/color.h"
#include "platform/image.h"

namespace hushpane::platform {

enum class EffectMaterial {
  none,
  darkHud,  // what lies behind the window, blurred, under a dark tint
};

// One surface of a window; it always fills the window. A desktop draws a view as its effect material, over that its
// layer colour, over that its contents (aspect fill, clipped), over that its drawable, over that its subviews in order,
// all faded by the presentation alpha. Views live on the main thread and belong to the view they were added to.
class View {
 public:
  // `changed` is called after every change of what is to be seen.
  View(Animator& animator, std::function<void()> changed);
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  View& addSubview();
  const std::vector<std::unique_ptr<View>>& subviews() const { return subviews_; }

  bool isHidden() const { return isHidden_; }
  void setHidden(bool hidden);

  double alpha() const { return alpha_.model(); }
  double presentationAlpha() const { return alpha_.presentation(); }
  void setAlpha(double alpha);
  // From what is on screen to `alpha`. The completion is called when the end is reached; never after another change of
  // alpha.
  void animateAlpha(double alpha, Animation animation, std::function<void()> completion = {});

  EffectMaterial material() const { return material_; }
  void setMaterial(EffectMaterial material);

  // Nothing until a colour was set.
  std::optional<Color> layerColor() const;
  std::optional<Color> presentationLayerColor() const;
  void setLayerColor(Color color);
  // From what is on screen to `color`; replaces a change under way.
  void animateLayerColor(Color color, Animation animation);

  const ImagePtr& contents() const { return contents_; }
  // Contents that are fading out beneath contents(), and how far the fade has come; null outside a fade.
  const ImagePtr& outgoingContents() const { return outgoing_; }
  double contentsFade() const { return fade_.presentation(); }
  void setContents(ImagePtr contents);
  // Cross-fades from the contents shown now.
  void setContents(ImagePtr contents, Animation fade);

  // A picture stretched over the whole view, for what is drawn anew frame by frame; null when there is none. The
  // centres of its corner pixels lie on those of the view. Its pixels may change only between two presentations.
  const ImagePtr& drawable() const { return drawable_; }
  // Another number for each presentation.
  std::uint64_t drawableFrame() const { return drawableFrame_; }
  void presentDrawable(ImagePtr drawable);

 private:
  Animator& animator_;
  std::function<void()> changed_;
  std::vector<std::unique_ptr<View>> subviews_;
  bool isHidden_ = false;
  EffectMaterial material_ = EffectMaterial::none;
  Animated<double> alpha_{1};
  bool hasColor_ = false;
  Animated<Color> color_{Color{0, 0, 0, 0}};
  ImagePtr contents_;
  ImagePtr outgoing_;
  Animated<double> fade_{1};
  ImagePtr drawable_;
  std::uint64_t drawableFrame_ = 0;
};

}  // namespace hushpane::platform
