#pragma once

#include <functional>
#include <string>

namespace hushpane::platform {

// What a check for a newer version found.
struct UpdateAnswer {
  enum class Kind {
    newer,
    none,           // this version is the newest
    unreachable,    // the feed cannot be had, or is not to be trusted
    notConfigured,  // the program knows no feed
  };
  Kind kind = Kind::none;
  std::string version{};  // the newer one, as it is written for people
  std::string link{};     // where it is to be had
};

// Looks for newer versions of the program and tells of them. It downloads and installs nothing.
class UpdateService {
 public:
  using AnswerHandler = std::function<void(const UpdateAnswer& answer, bool isUserInitiated)>;

  virtual ~UpdateService() = default;

  // Begins with the scheduled checks. The handler is called on the main queue: once for each checkForUpdates(), and
  // after a scheduled check that found a newer version of which the user has not been told.
  virtual void start(AnswerHandler handler) = 0;

  // Whether checks happen by themselves. Kept for the next start.
  virtual bool automaticallyChecksForUpdates() const = 0;
  virtual void setAutomaticallyChecksForUpdates(bool checks) = 0;

  // The user asks. Only one check is under way at a time: further calls wait for its answer with it.
  virtual void checkForUpdates() = 0;
};

}  // namespace hushpane::platform
