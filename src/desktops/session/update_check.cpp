#include "desktops/session/update_check.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "desktops/session/child_program.h"
#include "desktops/shared/feed_address.h"

namespace hushpane::session {

namespace {

using platform::UpdateAnswer;
using Answer = std::function<void(UpdateAnswer)>;
using Kind = UpdateAnswer::Kind;

constexpr std::size_t longestLine = 4096;
constexpr std::size_t longestVersion = 64;
constexpr double longestCheck = 60;  // seconds; the program ends by itself long before
constexpr const char* programName = "hushpane-update-check";

// The line is "none", or "newer", the version and the link with tabs between them.
UpdateAnswer answerIn(std::string_view line) {
  constexpr std::string_view newer = "newer\t";
  if (line == "none\n") return {.kind = Kind::none};
  if (!line.starts_with(newer) || !line.ends_with('\n')) return {.kind = Kind::unreachable};
  line = line.substr(newer.size(), line.size() - newer.size() - 1);
  const auto tab = line.find('\t');
  if (tab == 0 || tab > longestVersion) return {.kind = Kind::unreachable};
  std::string version(line.substr(0, tab)), link(line.substr(tab + 1));
  const bool isPlain =
      std::ranges::none_of(version, [](char letter) { return static_cast<unsigned char>(letter) < ' '; });
  if (!isPlain || !desktops::isUpdateLink(link)) return {.kind = Kind::unreachable};
  return {.kind = Kind::newer, .version = std::move(version), .link = std::move(link)};
}

// One check under way, kept by its token.
struct Run {
  platform::Token child;
  platform::WorkItem deadline;
  Answer answer;

  void finish(const UpdateAnswer& found) {
    child.reset();
    deadline.reset();
    if (const auto taken = std::exchange(answer, nullptr)) taken(found);
  }
};

}  // namespace

UpdateCheck::UpdateCheck(std::filesystem::path program, desktops::UpdateConfiguration configuration,
                         std::string version, platform::MainQueue& queue)
    : program_(std::move(program)),
      configuration_(std::move(configuration)),
      version_(std::move(version)),
      queue_(queue) {}

platform::Token UpdateCheck::run(Answer answer) const {
  const auto run = std::make_shared<Run>();
  run->answer = std::move(answer);
  const auto finish = [weak = std::weak_ptr(run)](const UpdateAnswer& found) {
    if (const auto held = weak.lock()) held->finish(found);
  };
  run->child = startChild({program_, configuration_.address, configuration_.publicKey, version_}, longestLine,
                          [finish](const std::optional<std::string>& output) {
                            finish(output ? answerIn(*output) : UpdateAnswer{.kind = Kind::unreachable});
                          });
  run->deadline =
      queue_.after(run->child ? longestCheck : 0, [finish] { finish(UpdateAnswer{.kind = Kind::unreachable}); });
  return platform::Token([run = run]() mutable { run.reset(); });
}

std::filesystem::path updateCheckProgram(const std::filesystem::path& binary) {
  const auto beside = binary.parent_path() / programName;
  std::error_code error;
  if (std::filesystem::exists(beside, error)) return beside;
  return binary.parent_path().parent_path() / "libexec" / "hushpane" / programName;
}

}  // namespace hushpane::session
