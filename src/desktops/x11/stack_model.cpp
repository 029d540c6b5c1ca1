#include "desktops/x11/stack_model.h"

#include <algorithm>
#include <utility>

namespace hushpane::x11 {

namespace {

template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

PixelRect outerBounds(int x, int y, int width, int height, int border) {
  return {x, y, width + 2 * border, height + 2 * border};
}

}  // namespace

PixelRect StackEntry::bodyBounds() const {
  const auto& shadow = facts.shadow;
  const PixelRect body{bounds.x + shadow.left, bounds.y + shadow.top, bounds.width - shadow.left - shadow.right,
                       bounds.height - shadow.top - shadow.bottom};
  return body.isEmpty() ? bounds : body;
}

StackModel::Iterator StackModel::locate(xcb_window_t id) {
  return std::ranges::find(entries_, id, &StackEntry::id);
}

StackEntry* StackModel::find(xcb_window_t id) {
  const auto found = locate(id);
  return found == entries_.end() ? nullptr : &*found;
}

void StackModel::setOrder(const xcb_window_t* ids, int count) {
  std::vector<StackEntry> fresh(static_cast<std::size_t>(count));
  for (int index = 0; index < count; ++index) {
    auto& entry = fresh[static_cast<std::size_t>(index)];
    if (auto* known = find(ids[index]))
      entry = std::move(*known);
    else
      entry.id = ids[index];
  }
  entries_ = std::move(fresh);
}

bool StackModel::apply(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7f) {
    case XCB_CREATE_NOTIFY: return create(as<xcb_create_notify_event_t>(event));
    case XCB_DESTROY_NOTIFY: {
      const auto& destroyed = as<xcb_destroy_notify_event_t>(event);
      return destroyed.event == root_ && erase(destroyed.window);
    }
    case XCB_CONFIGURE_NOTIFY: return configure(as<xcb_configure_notify_event_t>(event));
    case XCB_REPARENT_NOTIFY: return reparent(as<xcb_reparent_notify_event_t>(event));
    case XCB_CIRCULATE_NOTIFY: return circulate(as<xcb_circulate_notify_event_t>(event));
    case XCB_MAP_NOTIFY: {
      const auto& mapped = as<xcb_map_notify_event_t>(event);
      return mapped.event == root_ && setMapped(mapped.window, true);
    }
    case XCB_UNMAP_NOTIFY: {
      const auto& unmapped = as<xcb_unmap_notify_event_t>(event);
      return unmapped.event == root_ && setMapped(unmapped.window, false);
    }
    default: return false;
  }
}

bool StackModel::create(const xcb_create_notify_event_t& event) {
  if (event.parent != root_ || find(event.window)) return false;
  StackEntry entry;
  entry.id = event.window;
  entry.border = event.border_width;
  entry.bounds = outerBounds(event.x, event.y, event.width, event.height, event.border_width);
  entry.isOverrideRedirect = event.override_redirect != 0;
  entries_.push_back(entry);
  return true;
}

bool StackModel::configure(const xcb_configure_notify_event_t& event) {
  if (event.event != root_) return false;
  auto* entry = find(event.window);
  if (!entry) return false;
  const auto bounds = outerBounds(event.x, event.y, event.width, event.height, event.border_width);
  const bool isResized = bounds.width != entry->bounds.width || bounds.height != entry->bounds.height ||
                         event.border_width != entry->border;
  bool isChanged = isResized || bounds != entry->bounds;
  if (isResized) ++entry->contentGeneration;
  entry->bounds = bounds;
  entry->border = event.border_width;
  entry->isOverrideRedirect = event.override_redirect != 0;
  return followMove(event.window, event.above_sibling) || isChanged;
}

bool StackModel::reparent(const xcb_reparent_notify_event_t& event) {
  if (event.event != root_) return false;
  if (event.parent != root_) return erase(event.window);
  if (find(event.window)) return false;
  StackEntry entry;
  entry.id = event.window;
  entry.isOverrideRedirect = event.override_redirect != 0;
  entries_.push_back(entry);
  return true;
}

bool StackModel::circulate(const xcb_circulate_notify_event_t& event) {
  if (event.event != root_) return false;
  xcb_window_t sibling = XCB_WINDOW_NONE;
  if (event.place == XCB_PLACE_ON_TOP && !entries_.empty()) sibling = entries_.back().id;
  return followMove(event.window, sibling);
}

bool StackModel::setMapped(xcb_window_t id, bool isMapped) {
  auto* entry = find(id);
  if (!entry || entry->isMapped == isMapped) return false;
  entry->isMapped = isMapped;
  if (isMapped) ++entry->contentGeneration;
  entry->isSearched = false;
  return true;
}

bool StackModel::erase(xcb_window_t id) {
  const auto found = locate(id);
  if (found == entries_.end()) return false;
  entries_.erase(found);
  return true;
}

bool StackModel::followMove(xcb_window_t id, xcb_window_t sibling) {
  if (!moveAbove(id, sibling)) return false;
  ++find(id)->moves;
  return true;
}

bool StackModel::moveAbove(xcb_window_t id, xcb_window_t sibling) {
  const auto from = locate(id);
  if (from == entries_.end() || id == sibling) return false;
  auto target = entries_.begin();
  if (sibling != XCB_WINDOW_NONE) {
    target = locate(sibling);
    if (target == entries_.end()) return false;
    ++target;
  }
  if (target == from || target == from + 1) return false;
  if (target < from)
    std::rotate(target, from, from + 1);
  else
    std::rotate(from, from + 1, target);
  return true;
}

}  // namespace hushpane::x11
