#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "declarative/node.h"
#include "platform/keyboard.h"

namespace hushpane::declarative {

// Which elements the keyboard reaches, and where it goes from one to another. Elements on their way out, and those that
// cannot be seen, are reached by nobody.
class FocusOrder {
 public:
  explicit FocusOrder(const std::shared_ptr<Node>& root) { collect(root, {}); }

  using Index = std::optional<std::size_t>;
  std::shared_ptr<Node> at(std::size_t index) const { return stops_[index].node; }
  Index indexOf(const Node* node) const;

  // Where Tab leads from there, around the ends. From nothing, to what comes after or before the place of what had the
  // focus last.
  Index next(Index from, std::size_t lastPlace, bool isBackwards) const;
  // Where another key leads within the group; nothing for keys that mean nothing there.
  Index neighbour(std::size_t from, platform::Key key) const;
  // Where the focus of a page begins that is a menu; nothing in other pages.
  Index startOfMenu() const;

 private:
  struct Around {
    const Node* group = nullptr;
    bool isOn = false;
  };
  struct Stop {
    std::shared_ptr<Node> node;
    Around around;
  };

  void collect(const std::shared_ptr<Node>& node, Around around);
  std::size_t entryOf(std::size_t index) const;

  std::vector<Stop> stops_;  // in reading order; those of one group follow each other
};

// Whether the focus can stay there.
bool keepsFocus(const Node& node);
// The style of the group around it.
std::optional<FocusGroupStyle> groupStyle(const Node& node);
// Elements around it, from the outside in, that want to know whether the focus is inside.
std::vector<std::shared_ptr<Node>> focusListeners(Node& node);

}  // namespace hushpane::declarative
