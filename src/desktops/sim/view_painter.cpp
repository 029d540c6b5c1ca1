#include "desktops/sim/view_painter.h"

#include <algorithm>

#include "desktops/shared/drawable_stretch.h"
#include "desktops/shared/look.h"
#include "desktops/shared/picture_blur.h"

namespace hushpane::sim {

namespace {

// Centred, as large as needed to fill the frame.
void paintAspectFill(const desktops::ContextPtr& context, const platform::ImagePtr& image, const platform::Rect& frame,
                     double alpha) {
  const auto surface = image ? desktops::surfaceOf(*image) : desktops::SurfacePtr();
  if (!surface) return;
  const double scale = std::max(frame.width / image->width, frame.height / image->height);
  context->save();
  context->translate(frame.x + (frame.width - scale * image->width) / 2,
                     frame.y + (frame.height - scale * image->height) / 2);
  context->scale(scale, scale);
  const auto pattern = Cairo::SurfacePattern::create(surface);
  pattern->set_filter(Cairo::SurfacePattern::Filter::GOOD);
  pattern->set_extend(Cairo::Pattern::Extend::PAD);
  context->set_source(pattern);
  context->paint_with_alpha(alpha);
  context->restore();
}

void paintDrawable(const desktops::ContextPtr& context, const platform::ImagePtr& drawable,
                   const platform::Rect& frame) {
  const auto surface = drawable ? desktops::surfaceOf(*drawable) : desktops::SurfacePtr();
  if (!surface) return;
  const auto across = desktops::drawableStretch(drawable->width, frame.width, frame.width);
  const auto down = desktops::drawableStretch(drawable->height, frame.height, frame.height);
  const auto pattern = Cairo::SurfacePattern::create(surface);
  pattern->set_filter(Cairo::SurfacePattern::Filter::BILINEAR);
  pattern->set_extend(Cairo::Pattern::Extend::PAD);
  pattern->set_matrix(Cairo::Matrix(across.scale, 0, 0, down.scale, across.offset - across.scale * frame.x,
                                    down.offset - down.scale * frame.y));
  context->set_source(pattern);
  context->paint();
}

void paintContents(const desktops::ContextPtr& context, const platform::View& view, const platform::Rect& frame) {
  if (!view.outgoingContents()) return paintAspectFill(context, view.contents(), frame, 1);
  const double fade = view.contentsFade();
  context->push_group();
  paintAspectFill(context, view.outgoingContents(), frame, 1 - fade);
  context->set_operator(Cairo::Context::Operator::ADD);
  paintAspectFill(context, view.contents(), frame, fade);
  context->pop_group_to_source();
  context->paint();
}

}  // namespace

void Backdrop::paintDarkHud(const desktops::ContextPtr& context) {
  if (!blurred_) blurred_ = desktops::blurred(picture_, desktops::darkHud::blurRadius / 2 * scale_);
  context->save();
  context->translate(origin_.x, origin_.y);
  context->scale(1 / scale_, 1 / scale_);
  context->set_source(blurred_, 0, 0);
  context->paint();
  context->restore();
  desktops::setColor(context, desktops::darkHud::tint);
  context->paint();
}

void paintView(const desktops::ContextPtr& context, const platform::View& view, const platform::Rect& frame,
               Backdrop& backdrop) {
  const double alpha = std::clamp(view.presentationAlpha(), 0.0, 1.0);
  if (view.isHidden() || alpha <= 0) return;
  if (alpha < 1) context->push_group();
  if (view.material() == platform::EffectMaterial::darkHud) backdrop.paintDarkHud(context);
  if (const auto color = view.presentationLayerColor()) {
    desktops::setColor(context, *color);
    context->paint();
  }
  paintContents(context, view, frame);
  paintDrawable(context, view.drawable(), frame);
  for (const auto& subview : view.subviews()) paintView(context, *subview, frame, backdrop);
  if (alpha < 1) {
    context->pop_group_to_source();
    context->paint_with_alpha(alpha);
  }
}

}  // namespace hushpane::sim
