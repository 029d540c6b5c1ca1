#pragma once

#include <giomm/cancellable.h>

#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace hushpane::session {

// Calls `call` with what ends it when it has taken that long. For calls that wait for somebody who may never answer.
template <class Call>
auto limitedCall(std::chrono::milliseconds limit, Call call) {
  const auto cancellable = Gio::Cancellable::create();
  std::promise<void> over;
  const std::jthread watchdog([cancellable, limit, done = over.get_future()] {
    if (done.wait_for(limit) == std::future_status::timeout) cancellable->cancel();
  });
  auto result = call(cancellable);
  over.set_value();
  return result;
}

}  // namespace hushpane::session
