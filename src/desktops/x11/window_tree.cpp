#include "desktops/x11/window_tree.h"

#include <utility>

#include "desktops/x11/property.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {
constexpr std::uint32_t longestClientList = 4096;
constexpr int deepestFrame = 8;  // windows between a frame and the application's window

// Whether the server sent the event before it handled the request with that sequence number.
bool isBefore(const xcb_generic_event_t& event, std::uint32_t sequence) {
  return static_cast<std::int32_t>(event.full_sequence - sequence) < 0;
}
}  // namespace

WindowTree::WindowTree(Connection& connection, ManagerWatch& manager, CompositorWatch& compositor,
                       CurrentWorkspace& workspace)
    : connection_(connection),
      manager_(manager),
      compositor_(compositor),
      workspace_(workspace),
      factsReader_(connection),
      model_(connection.root()) {
  connection_.selectRootEvents(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  managerChanges_ = manager_.addChangeHandler([this] {
    frameOfClient_.clear();
    frameOfUnlisted_.clear();
    watched_.clear();
    for (auto& entry : model_.entries()) entry.hasFacts = entry.isSearched = false;
    areClientsKnown_ = false;
    changed();
  });
  compositorChanges_ = compositor_.addChangeHandler([this] { changed(); });
  workspaceChanges_ = workspace_.addChangeHandler([this] { changed(); });
}

void WindowTree::changed() {
  ++revision_;
  hasUnread_ = true;
  handlers_.forEach([](const auto& handler) { handler(); });
}

// Window ids are used again. What the root does not report, the end of a window inside a frame, shows at the latest
// when its id returns. Returns whether something has to be read again.
bool WindowTree::forgetReused(const xcb_generic_event_t& event) {
  xcb_window_t window = XCB_WINDOW_NONE;
  switch (event.response_type & 0x7f) {
    case XCB_CREATE_NOTIFY: window = reinterpret_cast<const xcb_create_notify_event_t&>(event).window; break;
    case XCB_DESTROY_NOTIFY: window = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window; break;
    case XCB_REPARENT_NOTIFY:
      frameOfClient_.erase(reinterpret_cast<const xcb_reparent_notify_event_t&>(event).window);
      frameOfUnlisted_.erase(reinterpret_cast<const xcb_reparent_notify_event_t&>(event).window);
      areClientsKnown_ = false;
      return true;
    default: return false;
  }
  watched_.erase(window);
  std::erase_if(frameOfUnlisted_, [&](const auto& known) { return known.first == window || known.second == window; });
  if (frameOfClient_.erase(window) == 0) return false;
  areClientsKnown_ = false;
  return true;
}

// The window that a compositor paints on is the server's, above all others, and in no list of children.
bool WindowTree::isOfServer(const xcb_generic_event_t& event) const {
  if ((event.response_type & 0x7f) != XCB_CREATE_NOTIFY) return false;
  const auto window = reinterpret_cast<const xcb_create_notify_event_t&>(event).window;
  return (window & ~xcb_get_setup(connection_.get())->resource_id_mask) == 0;
}

void WindowTree::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (isOfServer(event)) return;
  if (type == XCB_PROPERTY_NOTIFY) return handleProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
  const bool isReadNeeded = forgetReused(event);
  // Events from before the order was read are already part of it.
  if (!isOrderKnown_ || isBefore(event, orderSequence_)) {
    if (isReadNeeded) changed();
    return;
  }
  if (!model_.apply(event) && !isReadNeeded) return;
  // The server did this first and then what was asked for, the model the other way round.
  if (expectedSequence_ && isBefore(event, *expectedSequence_)) isOrderKnown_ = false;
  changed();
}

void WindowTree::handleProperty(const xcb_property_notify_event_t& event) {
  if (event.window == connection_.root()) {
    if (event.atom != connection_.atom("_NET_CLIENT_LIST")) return;
    areClientsKnown_ = false;
    return changed();
  }
  if (!factsReader_.isRelevant(event.atom)) return;
  for (auto& entry : model_.entries()) {
    if (entry.id != event.window && entry.client != event.window) continue;
    if (entry.isOwn) return;
    entry.hasFacts = false;
    return changed();
  }
}

const std::vector<StackEntry>& WindowTree::entries() {
  if (!hasUnread_) return model_.entries();
  hasUnread_ = false;
  if (!isOrderKnown_) readOrder();
  for (auto& entry : model_.entries()) entry.isOwn = own_.contains(entry.id) || own_.contains(entry.client);
  readAttributes();
  if (!areClientsKnown_) readClientList();
  assignClients();
  searchClients();
  assignClients();
  readFacts();
  findAway();
  return model_.entries();
}

void WindowTree::readOrder() {
  const auto cookie = xcb_query_tree(connection_.get(), connection_.root());
  const Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(connection_.get(), cookie, nullptr));
  if (!reply) return;
  isOrderKnown_ = true;
  orderSequence_ = cookie.sequence;
  expectedSequence_.reset();
  model_.setOrder(xcb_query_tree_children(reply.get()), xcb_query_tree_children_length(reply.get()));
  // Events that are skipped from now on may have told of a map, a size or a new pixmap; without bounds every window is
  // asked about.
  for (auto& entry : model_.entries()) {
    entry.hasAttributes = false;
    entry.bounds = {};
    ++entry.contentGeneration;
  }
}

void WindowTree::readAttributes() {
  struct Request {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
  };
  std::vector<Request> requests;
  auto* const server = connection_.get();
  const auto& entries = std::as_const(model_).entries();
  for (const auto& entry : entries) {
    const bool isUnneeded = !entry.isMapped && !entry.bounds.isEmpty();
    if (entry.hasAttributes || isUnneeded) continue;
    requests.push_back({entry.id, xcb_get_window_attributes(server, entry.id), xcb_get_geometry(server, entry.id)});
  }
  for (const auto& request : requests) {
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(server, request.attributes, nullptr));
    const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(server, request.geometry, nullptr));
    auto* const entry = model_.find(request.window);
    entry->hasAttributes = true;
    entry->isInputOnly = !attributes || attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
    if (!attributes || !geometry) continue;
    entry->visual = attributes->visual;
    entry->isOverrideRedirect = attributes->override_redirect != 0;
    entry->isMapped = attributes->map_state != XCB_MAP_STATE_UNMAPPED;
    entry->border = geometry->border_width;
    entry->bounds = {geometry->x, geometry->y, geometry->width + 2 * geometry->border_width,
                     geometry->height + 2 * geometry->border_width};
  }
}

void WindowTree::readClientList() {
  areClientsKnown_ = true;
  if (!manager_.isRunning()) return;
  auto clients = propertyValues(connection_, connection_.root(), "_NET_CLIENT_LIST", longestClientList);
  clients.insert(clients.end(), own_.begin(), own_.end());
  std::map<xcb_window_t, xcb_window_t> known;
  std::vector<xcb_window_t> unknown;
  for (const auto client : clients) {
    if (const auto found = frameOfClient_.find(client); found != frameOfClient_.end())
      known.insert(*found);
    else
      unknown.push_back(client);
  }
  frameOfClient_ = std::move(known);
  resolveFrames(std::move(unknown));
}

// What no list names: every window of a manager that publishes none, and docks of some that do. Every manager marks the
// windows that it frames (ICCCM 4.1.3.1). Walks down from all frames at once.
void WindowTree::searchClients() {
  struct Walk {
    xcb_window_t frame;
    xcb_window_t at;
    xcb_get_property_cookie_t state{};
    xcb_query_tree_cookie_t children{};
  };
  std::vector<Walk> walks;
  for (auto& entry : model_.entries()) {
    const bool isListed = entry.client || (manager_.isRunning() && !entry.isOverrideRedirect);
    if (isListed || entry.isSearched || entry.isOwn || !entry.isVisible()) continue;
    entry.isSearched = true;
    walks.push_back({entry.id, entry.id});
  }
  for (int level = 0; level < deepestFrame && !walks.empty(); ++level) {
    for (auto& walk : walks) {
      walk.state = askProperty(connection_, walk.at, "WM_STATE", 1);
      walk.children = xcb_query_tree(connection_.get(), walk.at);
    }
    std::vector<Walk> rest;
    for (const auto& walk : walks) {
      const bool isClient = !propertyValues(connection_, walk.state).empty();
      const Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(connection_.get(), walk.children, nullptr));
      if (isClient) frameOfUnlisted_.emplace(walk.at, walk.frame);
      if (isClient || !reply) continue;
      const auto* children = xcb_query_tree_children(reply.get());
      for (int index = 0; index < xcb_query_tree_children_length(reply.get()); ++index)
        rest.push_back({walk.frame, children[index]});
    }
    walks = std::move(rest);
  }
}

// Walks up from all clients at once, one wait for the server a level.
void WindowTree::resolveFrames(std::vector<xcb_window_t> clients) {
  struct Walk {
    xcb_window_t client;
    xcb_window_t at;
    xcb_query_tree_cookie_t cookie{};
  };
  std::vector<Walk> walks;
  for (const auto client : clients) walks.push_back({client, client});
  for (int level = 0; level < deepestFrame && !walks.empty(); ++level) {
    for (auto& walk : walks) walk.cookie = xcb_query_tree(connection_.get(), walk.at);
    std::vector<Walk> rest;
    for (const auto& walk : walks) {
      const Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(connection_.get(), walk.cookie, nullptr));
      if (!reply) continue;
      if (reply->parent == connection_.root())
        frameOfClient_[walk.client] = walk.at;
      else if (reply->parent != XCB_WINDOW_NONE)
        rest.push_back({walk.client, reply->parent});
    }
    walks = std::move(rest);
  }
}

void WindowTree::assignClients() {
  std::map<xcb_window_t, xcb_window_t> clientOfFrame;
  for (const auto* known : {&frameOfUnlisted_, &frameOfClient_})
    for (const auto& [client, frame] : *known) clientOfFrame[frame] = client;
  for (auto& entry : model_.entries()) {
    const auto found = clientOfFrame.find(entry.id);
    const xcb_window_t client = found == clientOfFrame.end() ? xcb_window_t{XCB_WINDOW_NONE} : found->second;
    if (std::exchange(entry.client, client) != client) entry.hasFacts = false;
    if (own_.contains(client)) entry.isOwn = true;
  }
}

void WindowTree::readFacts() {
  std::vector<StackEntry*> missing;
  // Where no manager says which window is active, the focus does, or the pointer.
  std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  if (!manager_.isRunning()) mask |= XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_ENTER_WINDOW;
  for (auto& entry : model_.entries()) {
    if (entry.hasFacts || !entry.isVisible() || entry.isOwn) continue;
    for (const auto window : {entry.id, entry.client})
      if (window != XCB_WINDOW_NONE && watched_.insert(window).second)
        xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &mask);
    missing.push_back(&entry);
  }
  if (!missing.empty()) factsReader_.read(missing);
}

// A manager that composites by itself leaves windows of other workspaces mapped and does not paint them. All others
// unmap them; where these show several workspaces at once, a mapped window is one that is seen.
void WindowTree::findAway() {
  const auto shown = workspace_.get();
  const bool keepsMapped = manager_.owns(compositor_.owner());
  for (auto& entry : model_.entries()) {
    const auto& own = entry.facts.workspace;
    entry.isAway = keepsMapped && shown && own && *own != *shown;
  }
}

const StackEntry* WindowTree::topLevelOf(xcb_window_t window) {
  const auto& known = entries();
  for (const auto& entry : known)
    if (window != XCB_WINDOW_NONE && (entry.id == window || entry.client == window)) return &entry;
  return nullptr;
}

std::optional<std::int32_t> WindowTree::pidOf(xcb_window_t window) {
  const auto* entry = topLevelOf(window);
  if (entry && entry->hasFacts && entry->clientOrSelf() == window) return entry->facts.pid;
  return factsReader_.readPid(window);
}

void WindowTree::addOwn(xcb_window_t window, const PixelRect& bounds) {
  own_.insert(window);
  if (isOrderKnown_ && !model_.find(window)) {
    StackEntry entry;
    entry.id = window;
    entry.bounds = bounds;
    entry.isOverrideRedirect = true;
    entry.isOwn = true;
    model_.entries().push_back(entry);
  }
  changed();
}

void WindowTree::expectAbove(xcb_window_t window, xcb_window_t sibling, std::uint32_t sequence) {
  expectedSequence_ = sequence;
  if (model_.moveAbove(window, sibling)) ++revision_;
}

void WindowTree::distrustOrder() {
  isOrderKnown_ = false;
  changed();
}

}  // namespace hushpane::x11
