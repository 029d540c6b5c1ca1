#include "desktops/session/update_check.h"

#include <gtest/gtest.h>
#include <libsoup/soup.h>

#include <optional>
#include <set>

#include "desktops/session/main_queue.h"
#include "desktops/session/played_service.h"
#include "support/temporary_folder.h"
#include "update/signed_feed.h"

namespace hushpane::update::tests {
namespace {

using platform::UpdateAnswer;
using session::tests::loopUntil;
using Kind = UpdateAnswer::Kind;

// The built program asks a server in this process.
class UpdateCheckTest : public testing::Test {
 protected:
  using Page = std::function<void(SoupServerMessage*)>;

  Signer signer;
  session::MainQueue queue;
  SoupServer* server = soup_server_new(nullptr, nullptr);
  std::string base;
  Page page;
  int requests = 0;
  std::set<std::string> headers;  // of the last request
  std::filesystem::path program = HUSHPANE_UPDATE_CHECK_BINARY;

  UpdateCheckTest() {
    soup_server_add_handler(
        server, nullptr,
        [](SoupServer*, SoupServerMessage* message, const char* path, GHashTable*, gpointer self) {
          static_cast<UpdateCheckTest*>(self)->serve(message, path);
        },
        this, nullptr);
    soup_server_listen_local(server, 0, SOUP_SERVER_LISTEN_IPV4_ONLY, nullptr);
    GSList* uris = soup_server_get_uris(server);
    base = "http://127.0.0.1:" + std::to_string(g_uri_get_port(static_cast<GUri*>(uris->data)));
    g_slist_free_full(uris, [](gpointer uri) { g_uri_unref(static_cast<GUri*>(uri)); });
  }
  ~UpdateCheckTest() override {
    soup_server_disconnect(server);
    g_object_unref(server);
  }

  std::string goodFeed() const {
    return feedOf(item(signer.sign(unsignedEntry("1.3.0", "https://example.org/1.3.0", "1.3"))));
  }

  void serve(SoupServerMessage* message, const std::string& path) {
    ++requests;
    headers.clear();
    soup_message_headers_foreach(
        soup_server_message_get_request_headers(message),
        [](const char* name, const char* value, gpointer list) {
          static_cast<std::set<std::string>*>(list)->insert(std::string(name) + ": " + value);
        },
        &headers);
    path == "/good" ? send(message, goodFeed()) : page(message);
  }

  static void send(SoupServerMessage* message, const std::string& body) {
    soup_server_message_set_status(message, SOUP_STATUS_OK, nullptr);
    soup_server_message_set_response(message, "text/xml", SOUP_MEMORY_COPY, body.data(), body.size());
  }
  static Page redirect(std::string target) {
    return [target = std::move(target)](SoupServerMessage* message) {
      soup_server_message_set_status(message, 302, nullptr);
      soup_message_headers_replace(soup_server_message_get_response_headers(message), "Location", target.c_str());
    };
  }

  UpdateAnswer check(const std::string& address) {
    std::optional<UpdateAnswer> found;
    const session::UpdateCheck check(program, {address, signer.publicKey(), 3600}, "1.2.0", queue);
    const auto underWay = check.run([&](auto answer) { found = std::move(answer); });
    EXPECT_FALSE(found) << "inside the call";
    EXPECT_TRUE(loopUntil([&] { return found.has_value(); }, 40'000));
    return found.value_or(UpdateAnswer{});
  }
};

TEST_F(UpdateCheckTest, FindsTheNewerVersionAndSaysNothingOfTheUser) {
  const auto answer = check(base + "/good");
  EXPECT_EQ(answer.kind, Kind::newer);
  EXPECT_EQ(answer.version, "1.3");
  EXPECT_EQ(answer.link, "https://example.org/1.3.0");
  EXPECT_EQ(headers,
            (std::set<std::string>{"Host: " + base.substr(7), "User-Agent: Hushpane/1.2.0", "Connection: Keep-Alive"}));
  page = redirect("/good");
  EXPECT_EQ(check(base + "/moved").kind, Kind::newer);
}

TEST_F(UpdateCheckTest, FindsNothingInHostileAnswers) {
  const std::vector<std::pair<std::string, Page>> pages{
      {"huge", [](auto* message) { send(message, std::string(3 << 20, ' ')); }},
      {"cut off", [this](auto* message) { send(message, goodFeed().substr(0, 300)); }},
      {"broken off",
       [](auto* message) {
         GIOStream* stream = soup_server_message_steal_connection(message);
         g_output_stream_printf(g_io_stream_get_output_stream(stream), nullptr, nullptr, nullptr,
                                "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n<rss>");
         g_io_stream_close(stream, nullptr, nullptr);
         g_object_unref(stream);
       }},
      {"error",
       [this](auto* message) {
         send(message, goodFeed());
         soup_server_message_set_status(message, 404, nullptr);
       }},
      {"a file", redirect("file://" HUSHPANE_SOURCE_DIR "/README.md")},
      {"without encryption", redirect("http://elsewhere.invalid/good")},
      {"another scheme", redirect("ftp://127.0.0.1/good")},
      // The good page, had the rule not been asked.
      {"a name in the address", redirect("http://me@" + base.substr(7) + "/good")},
      {"nowhere", redirect("")},
      {"around", redirect("/around")}};
  for (const auto& [name, hostile] : pages) {
    page = hostile;
    requests = 0;
    EXPECT_EQ(check(base + "/feed").kind, Kind::unreachable) << name;
    EXPECT_LE(requests, 6) << name;
  }
  for (const char* address : {"http://127.0.0.1:1/closed", "file:///etc/hostname", "http://example.invalid/good", ""})
    EXPECT_EQ(check(address).kind, Kind::unreachable) << address;
}

TEST_F(UpdateCheckTest, SurvivesAProgramThatIsMissingOrSpeaksNonsense) {
  const TemporaryFolder folder;
  program = folder / "check";
  EXPECT_EQ(check(base + "/good").kind, Kind::unreachable);
  for (const char* line : {"", "echo newer", "printf 'newer\\t9.0.0\\tfile:///a\\n'",
                           "printf 'newer\\t\\thttps://a/\\n'", "printf 'newer\\t9\\thttps://a/'",
                           "printf 'none\\nnone\\n'", "echo none; exit 3", "while :; do echo newer; done"}) {
    writeFile(program, std::string("#!/bin/sh\n") + line + "\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    EXPECT_EQ(check(base + "/good").kind, Kind::unreachable) << line;
  }
  writeFile(program, "#!/bin/sh\necho none\n");
  EXPECT_EQ(check(base + "/good").kind, Kind::none);
}

}  // namespace
}  // namespace hushpane::update::tests
