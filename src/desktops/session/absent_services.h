#pragma once

#include <functional>
#include <utility>

#include "platform/login_item.h"
#include "platform/main_queue.h"
#include "platform/status_item.h"
#include "platform/system_appearance.h"
#include "platform/update_service.h"
#include "platform/user_notifications.h"

// What a desktop without these services gives.
namespace hushpane::session {

class NoStatusItem : public platform::StatusItem {
 public:
  void setImage(platform::TemplateImage) override {}
  void setToolTip(std::string) override {}
  void setClickHandler(ClickHandler) override {}
  bool isShown() const override { return false; }
  std::optional<platform::Rect> frame() const override { return std::nullopt; }
};

class PlainAppearance : public platform::SystemAppearance {
 public:
  bool isDark() const override { return false; }
  std::optional<platform::Color> accentColor() const override { return std::nullopt; }
  platform::Token observe(std::function<void()>) override { return {}; }
};

class NoLoginItem : public platform::LoginItem {
 public:
  bool isEnabled() const override { return false; }
  bool registerItem() override { return false; }
  bool unregisterItem() override { return false; }
};

class NoUserNotifications : public platform::UserNotifications {
 public:
  explicit NoUserNotifications(platform::MainQueue& queue) : queue_(queue) {}
  void post(platform::UserNotification, std::function<void(bool)> completion) override {
    queue_.async([completion = std::move(completion)] { completion(false); });
  }

 private:
  platform::MainQueue& queue_;
};

class NoUpdateService : public platform::UpdateService {
 public:
  explicit NoUpdateService(platform::MainQueue& queue) : queue_(queue) {}
  void start(AnswerHandler handler) override { handler_ = std::move(handler); }
  bool automaticallyChecksForUpdates() const override { return false; }
  void setAutomaticallyChecksForUpdates(bool) override {}
  void checkForUpdates() override {
    queue_.async([handler = handler_] {
      if (handler) handler({.kind = platform::UpdateAnswer::Kind::notConfigured}, true);
    });
  }

 private:
  platform::MainQueue& queue_;
  AnswerHandler handler_;
};

}  // namespace hushpane::session
