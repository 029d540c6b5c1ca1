#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

using Settings = Desktop;

// The same list in the binary form.
std::string binary(const std::string& xmlList) {
  plist_t root = nullptr;
  plist_from_xml(xmlList.data(), static_cast<std::uint32_t>(xmlList.size()), &root);
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(root, &bytes, &length);
  std::string result(bytes, length);
  plist_to_bin_free(bytes);
  plist_free(root);
  return result;
}

TEST_F(Settings, EveryKindOfListIsReadAndBrokenFilesGiveTheDefaultsInSilence) {
  chooseMode("focus");
  const std::string whole = settings().bytes(), packed = binary(whole);
  for (const std::string& list :
       {packed, std::string(R"({ "hushpane.lastUserMode" = focus; "hushpane.focusSurface" = "dim"; })")}) {
    SCOPED_TRACE(list);
    settings().writeBytes(list);
    startHushpane();
    EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
    EXPECT_EQ(stopHushpane(), 0);
  }
  for (const std::string& broken :
       {std::string(), whole.substr(0, whole.size() / 2), packed.substr(0, packed.size() / 2),
        std::string("<plist version=\"1.0\"><array><string>focus</string></array></plist>"),
        std::string(
            "<plist version=\"1.0\"><dict><key>hushpane.lastUserMode</key><string>reveal</string></dict></plist>")}) {
    SCOPED_TRACE(broken);
    settings().writeBytes(broken);
    sharedFile().writeBytes(broken);
    startHushpane();
    EXPECT_TRUE(entersMode("standard"));
    EXPECT_TRUE(looksUntouched());
    EXPECT_EQ(stopHushpane(), 0);
    EXPECT_EQ(hushpane().output() + hushpane().errors(), "");
  }
}

}  // namespace
}  // namespace hushpane::x11_tests
