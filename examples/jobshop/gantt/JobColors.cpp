#include "gantt/JobColors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace jobshop {

namespace {

// Steps by the golden angle never repeat a hue and leave no large gap, for any number of jobs. Jobs
// with similar hues have distant numbers and differ in lightness.
constexpr double kGoldenAngle = 137.50776405;
constexpr double kFirstHue = 210;
constexpr std::array<double, 3> kLightness = {0.60, 0.74, 0.46};
constexpr std::array<double, 2> kSaturation = {0.62, 0.48};

using Rgb = std::array<double, 3>;

Rgb fromHsl(double hue, double saturation, double lightness) {
  const double chroma = saturation * std::min(lightness, 1 - lightness);
  const auto channel = [&](double offset) {
    const double k = std::fmod(offset + hue / 30, 12);
    return lightness - chroma * std::max(-1.0, std::min({k - 3, 9 - k, 1.0}));
  };
  return {channel(0), channel(8), channel(4)};
}

std::string hex(const Rgb& color) {
  const auto byte = [](double channel) {
    return static_cast<unsigned>(std::lround(channel * 255));
  };
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", byte(color[0]) & 0xffU, byte(color[1]) & 0xffU,
                byte(color[2]) & 0xffU);
  return text;
}

}  // namespace

JobColor colorOfJob(std::size_t job) {
  const double hue = std::fmod(kFirstHue + kGoldenAngle * static_cast<double>(job), 360);
  const Rgb color = fromHsl(hue, kSaturation[(job / kLightness.size()) % kSaturation.size()],
                            kLightness[job % kLightness.size()]);
  const double brightness = 0.299 * color[0] + 0.587 * color[1] + 0.114 * color[2];
  return {hex(color), brightness > 0.5 ? "#1f2430" : "#ffffff"};
}

}  // namespace jobshop
