#pragma once

#include <filesystem>
#include <string>

#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

void savePng(const Picture& picture, const std::filesystem::path& file);

// Writes the picture as NAME.png into the folder that $HUSHPANE_SHOTS names, for people to look at; without the
// variable it does nothing.
void saveForPeople(const Picture& picture, const std::string& name);

}  // namespace hushpane::x11_tests
