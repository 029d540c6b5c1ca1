#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "desktops/sim/scenario.h"
#include "desktops/sim/sim_platform.h"

namespace hushpane::sim {

// The program, as a scenario deals with it.
struct Program {
  std::function<void(platform::Platform&)> launch;  // starts it on the desktop
  platform::OpenContactSheet openContactSheet = {};
};

// Plays the commands of a scenario on a desktop of its own. The program is started by the `launch` command and ends
// with `quit`, or with the player.
class ScenarioPlayer {
 public:
  struct Failure {
    enum class Kind {
      badLine,     // it speaks of something that does not exist
      unexpected,  // the desktop is not as expected
      notWritten,  // a picture
    };
    Kind kind;
    std::string message;
  };

  // Files that the scenario names are beside it, and pictures go to another folder.
  ScenarioPlayer(std::filesystem::path sources, std::filesystem::path folder, Program program,
                 std::function<void(const std::filesystem::path&)> written);

  // Nothing when all went well.
  std::optional<Failure> play(const Command& command);

 private:
  using Result = std::optional<Failure>;

  Result run(const command::SetScreen& command);
  Result run(const command::RemoveScreen& command);
  Result run(const command::StartApp& command);
  Result run(const command::QuitApp& command);
  Result run(const command::OpenWindow& command);
  Result run(const command::MoveWindow& command);
  Result run(const command::CloseWindow& command);
  Result run(const command::Activate& command);
  Result run(const command::ActivateSelf& command);
  Result run(const command::ActivateNone& command);
  Result run(const command::PressModifier& command);
  Result run(const command::ReleaseModifier& command);
  Result run(const command::TypeKey& command);
  Result run(const command::TakeHotKey& command);
  Result run(const command::GiveBackHotKey& command);
  Result run(const command::MovePointer& command);
  Result run(const command::ShakePointer& command);
  Result run(const command::OpenUrls& command);
  Result run(const command::SetSetting& command);
  Result run(const command::RemoveSetting& command);
  Result run(const command::Wait& command);
  Result run(const command::Launch& command);
  Result run(const command::Quit& command);
  Result run(const command::Wake& command);
  Result run(const command::SwitchSpace& command);
  Result run(const command::SetDesktopPicture& command);
  Result run(const command::PickWallpaper& command);
  Result run(const command::SetLanguages& command);
  Result run(const command::AskByWidget& command);
  Result run(const command::Shot& command);
  Result run(const command::Sheet& command);
  Result run(const command::SetStatusBar& command);
  Result run(const command::SetAppearance& command);
  Result run(const command::PointAt& command);
  Result run(const command::PointAtText& command);
  Result run(const command::TurnWheel& command);
  Result run(const command::Click& command);
  Result run(const command::ClickIcon& command);
  Result run(const command::ClickText& command);
  Result run(const command::StartAgain& command);
  Result run(const command::ChooseFile& command);
  Result run(const command::ExpectPanels& command);
  Result run(const command::ExpectText& command);
  Result run(const command::ExpectPixel& command);
  Result run(const command::ExpectShown& command);
  Result run(const command::ExpectLevel& command);
  Result run(const command::ExpectAlpha& command);
  Result run(const command::ExpectBelow& command);
  Result run(const command::ExpectHotKeys& command);
  Result run(const command::ExpectSetting& command);
  Result run(const command::ExpectShared& command);

  Result writePicture(const platform::Image& picture, const std::string& name);
  // The program's window over a screen; null when there is none.
  const SimWindow* overlay(platform::DisplayId screen);
  std::optional<platform::WindowNumber> window(const std::string& name);
  // Nothing when the group can have no folder.
  std::optional<std::filesystem::path> sharedFile();

  std::filesystem::path sources_;
  std::filesystem::path folder_;
  Program program_;
  std::function<void(const std::filesystem::path&)> written_;
  Storage storage_;
  SimPlatform desktop_{storage_};
  std::map<std::string, std::int32_t> apps_;
  std::map<std::string, platform::WindowNumber> windows_;
  bool isLaunched_ = false;
};

}  // namespace hushpane::sim
