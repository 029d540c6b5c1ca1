#pragma once

#include <optional>
#include <string>
#include <vector>

namespace hushpane::bench {

// One row of the table: what was measured, and what it is compared with.
struct Figure {
  std::string what;
  std::string measured;
  std::string against;          // named, with its own measure
  std::optional<double> ratio;  // of the measured to what it is held against
  std::string aim;
  std::optional<bool> isMet;
};

// Prints the row for bench/run, which draws the table.
void print(const Figure& figure);

// A number with its unit, rounded for people.
std::string text(double value, const char* unit, int digits = 1);

double median(std::vector<double> values);

}  // namespace hushpane::bench
