#include "widget/status_line.h"

namespace hushpane::widget {

namespace {

std::string titleOf(VeilMode mode) {
  switch (mode) {
    case VeilMode::cleanDesktop: return "Clean Desktop";
    case VeilMode::focus: return "Focus";
    case VeilMode::standard:
    case VeilMode::reveal: break;
  }
  return "Standard";
}

std::string jsonLine(const std::string& title, const std::string& name) {
  return R"({"text":")" + title + R"(","alt":")" + name + R"(","class":")" + name + R"(","tooltip":"Hushpane: )" +
         title + R"("})";
}

}  // namespace

std::string statusLine(VeilMode mode, LineFormat format) {
  const std::string name(rawValue(mode));
  return format == LineFormat::json ? jsonLine(titleOf(mode), name) : name;
}

}  // namespace hushpane::widget
