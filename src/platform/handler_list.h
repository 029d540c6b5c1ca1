#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/token.h"

namespace hushpane::platform {

// Handlers kept in the order of their registration. A handler may add and remove handlers, itself included, and may end
// the list: one added during a round is not part of it, one removed receives nothing more.
template <class Signature>
class HandlerList {
 public:
  using Handler = std::function<Signature>;

  Token add(Handler handler) {
    const auto id = ++table_->lastId;
    table_->byId.emplace(id, std::make_shared<const Handler>(std::move(handler)));
    return Token([table = std::weak_ptr(table_), id] {
      if (const auto held = table.lock()) held->byId.erase(id);
    });
  }

  bool empty() const { return table_->byId.empty(); }

  // Calls `visit` with every handler that is still there when its turn comes.
  template <class Visitor>
  void forEach(Visitor visit) const {
    const auto table = table_;
    std::vector<unsigned long> round;
    round.reserve(table->byId.size());
    for (const auto& entry : table->byId) round.push_back(entry.first);
    for (const auto id : round) {
      const auto found = table->byId.find(id);
      if (found == table->byId.end()) continue;
      const auto handler = found->second;
      visit(*handler);
    }
  }

 private:
  struct Table {
    std::map<unsigned long, std::shared_ptr<const Handler>> byId;
    unsigned long lastId = 0;
  };
  std::shared_ptr<Table> table_ = std::make_shared<Table>();
};

}  // namespace hushpane::platform
