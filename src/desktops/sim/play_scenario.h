#pragma once

#include <filesystem>
#include <iosfwd>

#include "desktops/sim/scenario_player.h"

namespace hushpane::sim {

// Plays a scenario file. Writes the pictures it asks for to `outDir`, which is made when it is missing, and the path of
// each to `out`; what is wrong goes to `err` as one line, FILE:LINE: MESSAGE. Returns the exit code of the process: 0
// when all went well, 1 when the desktop was not as expected or a picture could not be written, 2 when the file cannot
// be read or a line is bad.
int playScenario(const std::filesystem::path& file, const std::filesystem::path& outDir, Program program,
                 std::ostream& out, std::ostream& err);

}  // namespace hushpane::sim
