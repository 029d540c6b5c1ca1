#include "bench/figure.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace hushpane::bench {

void print(const Figure& figure) {
  std::cout << figure.what << '|' << figure.measured << '|' << figure.against << '|'
            << (figure.ratio ? text(*figure.ratio, "", *figure.ratio < 0.1 ? 4 : 2) : "") << '|' << figure.aim << '|'
            << (figure.isMet ? *figure.isMet ? "met" : "MISSED" : "") << std::endl;
}

std::string text(double value, const char* unit, int digits) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*f%s%s", digits, value, *unit ? " " : "", unit);
  return buffer;
}

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace hushpane::bench
