#include "workbench/aci_colors.h"

#include <algorithm>
#include <cmath>

namespace veltor::workbench {

namespace {

uint32_t Rgb(int r, int g, int b) {
  return (static_cast<uint32_t>(r) << 16) | (static_cast<uint32_t>(g) << 8) | static_cast<uint32_t>(b);
}

// Indices 10..249 run through 24 hues 15 degrees apart; within a hue, five brightness steps,
// each as a full colour (even index) and a half-saturated one (odd index).
uint32_t HueColor(int index) {
  const int hue = (index / 10 - 1) * 15;
  const int step = (index % 10) / 2;
  const bool pale = index % 2 == 1;
  static const double kValues[] = {1.0, 0.65, 0.5, 0.3, 0.15};
  const double v = kValues[step] * 255.0;
  const double low = pale ? v * 0.5 : 0.0;
  // The hue's position between the primaries, as HSV does it.
  const double h = hue / 60.0;
  const double f = h - std::floor(h);
  const double rising = low + (v - low) * f, falling = v - (v - low) * f;
  double r = 0, g = 0, b = 0;
  switch (static_cast<int>(h) % 6) {
    case 0: r = v, g = rising, b = low; break;
    case 1: r = falling, g = v, b = low; break;
    case 2: r = low, g = v, b = rising; break;
    case 3: r = low, g = falling, b = v; break;
    case 4: r = rising, g = low, b = v; break;
    default: r = v, g = low, b = falling; break;
  }
  // Truncated, as the palette's published values are (index 11 is FF7F7F).
  auto c = [](double x) { return std::clamp(static_cast<int>(x), 0, 255); };
  return Rgb(c(r), c(g), c(b));
}

}  // namespace

uint32_t AciToRgb(int index) {
  switch (index) {
    case 1: return 0xFF0000;
    case 2: return 0xFFFF00;
    case 3: return 0x00FF00;
    case 4: return 0x00FFFF;
    case 5: return 0x0000FF;
    case 6: return 0xFF00FF;
    case 8: return 0x808080;
    case 9: return 0xC0C0C0;
    case 250: return 0x333333;
    case 251: return 0x505050;
    case 252: return 0x696969;
    case 253: return 0x828282;
    case 254: return 0xBEBEBE;
    default: break;
  }
  if (index >= 10 && index <= 249) return HueColor(index);
  return 0xFFFFFF;
}

}  // namespace veltor::workbench
