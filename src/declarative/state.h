#pragma once

#include <any>
#include <concepts>
#include <functional>
#include <memory>
#include <utility>

#include "declarative/animation.h"
#include "platform/token.h"

namespace hushpane::declarative {

// A value that lives elsewhere: how to read and to write it.
template <class Type>
struct Binding {
  std::function<Type()> get;
  std::function<void(Type)> set;
};

// Where a view's state is kept as long as its identity is on the page.
struct StateCell {
  std::any value;
  std::function<void()> changed;  // empty once the identity is gone
};

// A value that belongs to the identity of a view. A change renders the view again; once the view is gone from the page,
// changes have no effect. May be kept by closures.
template <class Type>
class State {
 public:
  explicit State(std::shared_ptr<StateCell> cell) : cell_(std::move(cell)) {}

  const Type& get() const { return *std::any_cast<Type>(&cell_->value); }
  void set(Type value) const {
    if constexpr (std::equality_comparable<Type>)
      if (get() == value) return;
    cell_->value = std::move(value);
    if (const auto changed = cell_->changed) changed();
  }
  Binding<Type> binding() const {
    return {[state = *this] { return state.get(); }, [state = *this](Type value) { state.set(std::move(value)); }};
  }

 private:
  std::shared_ptr<StateCell> cell_;
};

// What a view may ask of the page that shows it, for as long as the view's identity is on it; afterwards nothing
// happens. May be kept by closures.
class Updates {
 public:
  struct Target {
    std::function<void(const Animation&, const std::function<void()>&)> withAnimation;
    std::function<void(double, std::function<void()>)> after;
  };

  explicit Updates(std::weak_ptr<const Target> target) : target_(std::move(target)) {}

  // Runs `change` at once; what the page shows differently because of it moves there by the animation. Without a page,
  // the change is made all the same.
  void withAnimation(const Animation& animation, const std::function<void()>& change) const {
    if (const auto target = target_.lock())
      target->withAnimation(animation, change);
    else
      change();
  }
  // Runs the block that many seconds from now, on the main queue, unless the view is gone by then.
  void after(double seconds, std::function<void()> block) const {
    if (const auto target = target_.lock()) target->after(seconds, std::move(block));
  }

 private:
  std::weak_ptr<const Target> target_;
};

}  // namespace hushpane::declarative
