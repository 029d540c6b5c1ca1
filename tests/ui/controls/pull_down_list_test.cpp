#include "ui/controls/pull_down_list.h"

#include <initializer_list>

#include "tests/declarative/page_test.h"

namespace hushpane {
namespace {

using namespace declarative;
using platform::Key;
using platform::Rect;

class PullDownListTest : public declarative::PageTest {
 protected:
  std::vector<std::size_t> chosen;

  void open(std::vector<MenuEntry> entries) {
    Environment environment;
    environment.accent = blue;
    show(PullDownList{std::move(entries), [this](std::size_t index) { chosen.push_back(index); }}, environment);
    queue.drain();
  }
  // A to Z, of which one is checked.
  void openAlphabet(char checked) {
    std::vector<MenuEntry> entries;
    for (char letter = 'A'; letter <= 'Z'; ++letter)
      entries.push_back({.title = std::string(1, letter), .isChecked = letter == checked, .action = {}});
    open(std::move(entries));
  }
  std::vector<Rect> highlights() const {
    std::vector<Rect> found;
    for (const auto& fill : allOf<FilledPath>(host->drawings()))
      if (std::get<FilledPath>(fill.what).paint == platform::Paint(blue.light)) found.push_back(fill.frame);
    return found;
  }
  // The text in the highlighted row.
  std::string highlighted() const {
    if (highlights().size() != 1) return "";
    for (const auto& text : allOf<DrawnText>(host->drawings())) {
      const auto& drawn = std::get<DrawnText>(text.what);
      if (drawn.color == white.light) return drawn.layout->text();
    }
    return "";
  }
  // What is highlighted after each of the keys.
  std::string after(std::initializer_list<Key> keys) {
    std::string highlights;
    for (const auto key : keys) {
      EXPECT_TRUE(host->keyPressed({.key = key}));
      queue.drain();
      highlights += highlighted();
    }
    return highlights;
  }
};

TEST_F(PullDownListTest, RowsAreAsWideAsTheLongestTitleNeeds) {
  open({{.title = "A", .action = {}}, {"", false, true, {}}, {.title = "Longest", .isChecked = true, .action = {}}});
  const double textWidth = 7 * 13 / 2.0;
  EXPECT_NEAR(host->size().width, 5 + 4 + 16 + textWidth + 10 + 5, 0.01);
  EXPECT_EQ(host->size().height, 5 + 22 + 11 + 22 + 5);
  EXPECT_EQ(highlighted(), "Longest");
  EXPECT_NEAR(highlights()[0].width, host->size().width - 10, 0.01);
  EXPECT_EQ(highlights()[0].y, 5 + 22 + 11);
  after({Key::up});
  EXPECT_NEAR(highlights()[0].width, host->size().width - 10, 0.01) << "short titles have rows of the same width";
  EXPECT_EQ(allOf<StrokedPath>(host->drawings()).size(), 1u) << "one checkmark, no ring";
}

TEST_F(PullDownListTest, KeysMoveTheHighlightAndChoose) {
  openAlphabet('Y');
  EXPECT_EQ(highlighted(), "Y");
  EXPECT_EQ(after({Key::down, Key::down, Key::down}), "ZAB");
  EXPECT_EQ(after({Key::home, Key::up, Key::home, Key::end}), "AZAZ");
  EXPECT_TRUE(chosen.empty());
  EXPECT_EQ(after({Key::space, Key::up, Key::returnKey}), "ZYY");
  EXPECT_EQ(chosen, (std::vector<std::size_t>{25, 24}));
  openAlphabet('?');
  EXPECT_EQ(highlighted(), "A");
}

TEST_F(PullDownListTest, ThePointerMovesTheHighlightAndChooses) {
  openAlphabet('C');
  host->pointerMoved({20, 5 + 22 + 11});
  queue.drain();
  EXPECT_EQ(highlighted(), "B");
  EXPECT_EQ(after({Key::down}), "C") << "though the pointer rests on another row";
  host->pointerMoved({21, 5 + 22 + 11});
  queue.drain();
  EXPECT_EQ(highlighted(), "B");
  host->pointerExited();
  queue.drain();
  EXPECT_EQ(highlighted(), "B") << "keys go on from there";
  click({20, 5 + 11});
  EXPECT_EQ(chosen, std::vector<std::size_t>{0});
  EXPECT_EQ(highlighted(), "A");
}

TEST_F(PullDownListTest, TheCheckedRowIsInViewOnASmallDisplay) {
  openAlphabet('T');
  host->setProposal({std::nullopt, 200});
  queue.drain();
  ASSERT_EQ(host->size().height, 200);
  const auto isInView = [&] { return highlights()[0].y >= 5 && highlights()[0].bottom() <= 195; };
  EXPECT_EQ(highlighted(), "T");
  EXPECT_TRUE(isInView());
  EXPECT_EQ(after({Key::home}), "A");
  EXPECT_TRUE(isInView());
  EXPECT_EQ(after({Key::up}), "Z");
  EXPECT_EQ(highlights()[0].bottom(), 195) << "with the margin below";
}

}  // namespace
}  // namespace hushpane
