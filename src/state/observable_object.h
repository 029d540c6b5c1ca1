#pragma once

#include <functional>
#include <utility>

#include "platform/handler_list.h"
#include "platform/token.h"

namespace hushpane {

// An object whose changes others follow. A view that shows it renders again after an announcement.
class ObservableObject {
 public:
  platform::Token observe(std::function<void()> observer) { return observers_.add(std::move(observer)); }

  // Announces a change.
  void objectWillChange() const {
    observers_.forEach([](const auto& observer) { observer(); });
  }

 private:
  platform::HandlerList<void()> observers_;
};

}  // namespace hushpane
