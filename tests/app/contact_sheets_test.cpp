#include "app/contact_sheets.h"

#include <sstream>

#include "desktops/sim/play_scenario.h"
#include "desktops/sim/shown_texts.h"
#include "localization/supported_language.h"
#include "tests/support/simulated_program.h"
#include "tests/support/temporary_folder.h"

namespace hushpane {
namespace {

class ContactSheets : public tests::SimulatedProgram {};

TEST_F(ContactSheets, NoTextIsCutInAnyLanguage) {
  launch();
  for (const auto& language : supportedLanguages) {
    SCOPED_TRACE(language.code);
    const auto sheet = openContactSheet(*desktop, {"pages", std::string(language.code), false});
    ASSERT_TRUE(sheet);
    while (const auto seconds = sheet->next()) desktop->advance(*seconds);
    const auto texts = sim::textsOf([&](platform::Canvas& canvas) { sheet->paint(canvas); });
    EXPECT_GT(texts.size(), 50u);
    for (const auto& shown : texts) EXPECT_FALSE(shown.isShortened) << shown.text;
    EXPECT_LT(sheet->size().width, 1200);
  }
}

TEST_F(ContactSheets, ScenariosDrawThem) {
  const auto play = [&](const std::string& text) {
    const auto file = storage.folder() / "sheets.scenario";
    writeFile(file, text);
    std::ostringstream out, err;
    sim::playScenario(file, storage.folder(), {HushpaneApp::launch, openContactSheet}, out, err);
    return out.str() + err.str();
  };
  EXPECT_TRUE(play("launch\nsheet symbols drawn dark scale 1.5\n").ends_with("/drawn.png\n"));
  EXPECT_GT(std::filesystem::file_size(storage.folder() / "drawn.png"), 1000u);
  EXPECT_TRUE(play("launch\nsheet curtains drawn\n").ends_with(":2: there is no sheet 'curtains'\n"));

  const auto text = contentsOf(HUSHPANE_SOURCE_DIR "/resources/gallery.scenario");
  EXPECT_TRUE(std::holds_alternative<sim::Scenario>(sim::parseScenario(text)));
}

}  // namespace
}  // namespace hushpane
