#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "declarative/environment.h"
#include "declarative/equatable.h"
#include "declarative/state.h"
#include "platform/token.h"

namespace hushpane::declarative {

// What belongs to the identity of a view: its state, what it observes, what it has asked for later. All of it goes with
// the identity.
struct Identity {
  std::map<std::string, std::shared_ptr<StateCell>, std::less<>> states;
  std::vector<platform::Token> observations;
  std::vector<platform::Token> delayedWork;
  std::shared_ptr<const Updates::Target> updates;
  std::function<void()> invalidate;  // renders the view again, soon

  ~Identity() {
    for (const auto& [name, cell] : states) cell->changed = nullptr;
  }
};

// What a view's body works with; valid during the call.
class Context {
 public:
  Context(Identity& identity, const Environment& environment) : identity_(identity), environment_(environment) {}

  const Environment& environment() const { return environment_; }

  // The state of that name in this view, at first `initial`.
  template <class Type>
  State<Type> state(std::string_view name, Type initial) {
    auto found = identity_.states.find(name);
    if (found == identity_.states.end()) {
      auto cell = std::make_shared<StateCell>(StateCell{std::move(initial), identity_.invalidate});
      found = identity_.states.emplace(name, std::move(cell)).first;
    }
    return State<Type>(found->second);
  }

  // Renders the view again after each announcement of the object, anything with observe(std::function<void()>).
  template <class Observable>
  void observe(Observable& object) {
    identity_.observations.push_back(object.observe(identity_.invalidate));
  }

  Updates updates() const { return Updates(identity_.updates); }

  // For matched geometry within this view.
  Equatable nameSpace() const { return static_cast<const void*>(&identity_); }

 private:
  Identity& identity_;
  const Environment& environment_;
};

}  // namespace hushpane::declarative
