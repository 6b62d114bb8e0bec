#include "od/fixed_format.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace veltor::od {
namespace {

// An unsigned integer of any size: 32-bit limbs, least significant first.
using Limbs = std::vector<uint32_t>;

void Trim(Limbs& n) {
  while (!n.empty() && n.back() == 0) n.pop_back();
}

// `value` << `shift`.
Limbs Shifted(uint64_t value, int shift) {
  Limbs n(static_cast<size_t>(shift / 32) + 3, 0);
  const int bits = shift % 32;
  const size_t at = static_cast<size_t>(shift / 32);
  const uint32_t low = static_cast<uint32_t>(value);
  const uint32_t high = static_cast<uint32_t>(value >> 32);
  n[at] = low << bits;
  n[at + 1] = bits ? (high << bits) | (low >> (32 - bits)) : high;
  n[at + 2] = bits ? high >> (32 - bits) : 0;
  Trim(n);
  return n;
}

bool Bit(const Limbs& n, int bit) {
  size_t limb = static_cast<size_t>(bit / 32);
  return limb < n.size() && ((n[limb] >> (bit % 32)) & 1u);
}

// The bits of `n` from `bit` on, which must fit in 32 bits; they are cleared in `n`.
uint32_t TakeHighBits(Limbs& n, int bit) {
  uint32_t high = 0;
  for (int b = static_cast<int>(n.size()) * 32 - 1; b >= bit; --b) high = (high << 1) | (Bit(n, b) ? 1u : 0u);
  size_t limb = static_cast<size_t>(bit / 32);
  if (limb < n.size()) {
    n[limb] &= (bit % 32 == 0) ? 0u : (0xFFFFFFFFu >> (32 - bit % 32));
    n.resize(limb + 1);
  }
  Trim(n);
  return high;
}

void MultiplyAdd(Limbs& n, uint32_t factor, uint32_t add) {
  uint64_t carry = add;
  for (uint32_t& limb : n) {
    uint64_t v = static_cast<uint64_t>(limb) * factor + carry;
    limb = static_cast<uint32_t>(v);
    carry = v >> 32;
  }
  if (carry) n.push_back(static_cast<uint32_t>(carry));
}

// Divides by `divisor` in place and returns the remainder.
uint32_t DivideSmall(Limbs& n, uint32_t divisor) {
  uint64_t rest = 0;
  for (size_t i = n.size(); i-- > 0;) {
    uint64_t v = (rest << 32) | n[i];
    n[i] = static_cast<uint32_t>(v / divisor);
    rest = v % divisor;
  }
  Trim(n);
  return static_cast<uint32_t>(rest);
}

std::string Decimal(Limbs n) {
  if (n.empty()) return "0";
  std::string digits;
  while (!n.empty()) {
    uint32_t chunk = DivideSmall(n, 1000000000u);
    for (int i = 0; i < 9; ++i) {
      digits += static_cast<char>('0' + chunk % 10);
      chunk /= 10;
      if (n.empty() && chunk == 0) break;
    }
  }
  return std::string(digits.rbegin(), digits.rend());
}

// Adds one to the decimal digits in `text` (no sign, maybe a point); "9.99" gives "10.00".
void IncrementDecimal(std::string& text) {
  for (size_t i = text.size(); i-- > 0;) {
    if (text[i] == '.') continue;
    if (text[i] != '9') {
      ++text[i];
      return;
    }
    text[i] = '0';
  }
  text.insert(text.begin(), '1');
}

}  // namespace

std::string FormatFixedExact(double number, int precision) {
  if (std::isnan(number)) return std::signbit(number) ? "-nan" : "nan";
  if (std::isinf(number)) return number < 0 ? "-inf" : "inf";
  if (precision < 0) precision = 0;
  uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  const bool negative = (bits >> 63) != 0;
  const int biased = static_cast<int>((bits >> 52) & 0x7FF);
  uint64_t mantissa = bits & ((uint64_t{1} << 52) - 1);
  int exponent = -1074;
  if (biased != 0) {
    mantissa |= uint64_t{1} << 52;
    exponent = biased - 1075;
  }
  // number = mantissa * 2^exponent = integer + fraction / 2^scale.
  Limbs integer;
  Limbs fraction;
  int scale = 0;
  if (exponent >= 0) {
    integer = Shifted(mantissa, exponent);
  } else {
    scale = -exponent;
    fraction = Shifted(mantissa, 0);
    integer = Shifted(scale >= 64 ? 0 : mantissa >> scale, 0);
    if (scale < 64) TakeHighBits(fraction, scale);
  }
  std::string text = Decimal(integer);
  if (precision > 0) text += '.';
  for (int i = 0; i < precision; ++i) {
    MultiplyAdd(fraction, 10, 0);
    text += static_cast<char>('0' + (scale > 0 ? TakeHighBits(fraction, scale) : 0));
  }
  // What is left decides the rounding: above half rounds up, exactly half rounds to even.
  if (scale > 0 && !fraction.empty()) {
    const bool half = Bit(fraction, scale - 1);
    bool more = false;
    for (int b = 0; b < scale - 1 && !more; ++b) more = Bit(fraction, b);
    const bool odd = (text.back() - '0') % 2 == 1;
    if (half && (more || odd)) IncrementDecimal(text);
  }
  return negative ? "-" + text : text;
}

}  // namespace veltor::od
