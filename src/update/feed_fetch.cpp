#include "update/feed_fetch.h"

#include <libsoup/soup.h>

#include <array>
#include <memory>

#include "desktops/shared/debug_log.h"
#include "desktops/shared/feed_address.h"
#include "update/appcast.h"

namespace hushpane::update {

namespace {

constexpr int mostRedirections = 5;
constexpr unsigned secondsWithoutAnswer = 15;

struct Unref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Type>
using Object = std::unique_ptr<Type, Unref>;

struct Answer {
  unsigned status = 0;
  std::string location;
  std::string body;
};

Object<SoupSession> makeSession(const std::string& agent) {
  Object<SoupSession> session(
      soup_session_new_with_options("user-agent", agent.c_str(), "timeout", secondsWithoutAnswer, nullptr));
  // A small text unpacks into a huge one; passwords are asked for by strangers.
  soup_session_remove_feature_by_type(session.get(), SOUP_TYPE_CONTENT_DECODER);
  soup_session_remove_feature_by_type(session.get(), SOUP_TYPE_AUTH_MANAGER);
  return session;
}

std::optional<std::string> readAll(GInputStream* stream) {
  std::string body;
  std::array<char, 1 << 14> block{};
  for (;;) {
    GError* error = nullptr;
    const auto count = g_input_stream_read(stream, block.data(), block.size(), nullptr, &error);
    if (error) {
      desktops::debugLog(std::string("the feed broke off: ") + error->message);
      g_error_free(error);
      return std::nullopt;
    }
    if (count == 0) return body;
    body.append(block.data(), static_cast<std::size_t>(count));
    if (body.size() > largestFeed) return std::nullopt;
  }
}

std::optional<Answer> request(SoupSession* session, const std::string& address) {
  const Object<SoupMessage> message(soup_message_new("GET", address.c_str()));
  if (!message) return std::nullopt;
  soup_message_add_flags(message.get(), SOUP_MESSAGE_NO_REDIRECT);
  GError* error = nullptr;
  const Object<GInputStream> stream(soup_session_send(session, message.get(), nullptr, &error));
  if (!stream) {
    desktops::debugLog(std::string("no feed: ") + error->message);
    g_error_free(error);
    return std::nullopt;
  }
  Answer answer{.status = soup_message_get_status(message.get()), .location = {}, .body = {}};
  const char* location = soup_message_headers_get_one(soup_message_get_response_headers(message.get()), "Location");
  if (location) answer.location = location;
  if (answer.status != SOUP_STATUS_OK) return answer;
  auto body = readAll(stream.get());
  if (!body) return std::nullopt;
  answer.body = std::move(*body);
  return answer;
}

bool isRedirection(unsigned status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

// The place that a redirection names; nothing when a feed may not be read there.
std::optional<std::string> follow(const std::string& address, const std::string& location) {
  char* resolved = g_uri_resolve_relative(address.c_str(), location.c_str(), G_URI_FLAGS_NONE, nullptr);
  if (!resolved) return std::nullopt;
  std::string next(resolved);
  g_free(resolved);
  const bool leavesEncryption = address.starts_with("https:") && !next.starts_with("https:");
  return desktops::isFeedAddress(next) && !leavesEncryption ? std::optional(next) : std::nullopt;
}

}  // namespace

std::optional<std::string> fetchFeed(const std::string& address, const std::string& agent) {
  const auto session = makeSession(agent);
  std::optional<std::string> place = desktops::isFeedAddress(address) ? std::optional(address) : std::nullopt;
  for (int redirections = 0; place && redirections <= mostRedirections; ++redirections) {
    auto answer = request(session.get(), *place);
    if (!answer) return std::nullopt;
    if (answer->status == SOUP_STATUS_OK) return std::move(answer->body);
    place = isRedirection(answer->status) ? follow(*place, answer->location) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace hushpane::update
