#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "korvane/operation.h"
#include "korvane/vector3.h"

/// Values off the front of the bytes; zeros when they have run out.
class Input {
 public:
  Input(const std::uint8_t* bytes, std::size_t count) : next(bytes), left(count) {}

  bool IsEmpty() const { return left == 0; }

  template <class Number>
  Number Take() {
    Number number{};
    const std::size_t size = left < sizeof(Number) ? left : sizeof(Number);
    if (size > 0) std::memcpy(&number, next, size);
    next += size;
    left -= size;
    return number;
  }
  int TakeInt() { return Take<std::int32_t>(); }
  // Mostly a number of ordinary size, now and then any bits at all.
  double TakeDouble() { return Take<std::uint8_t>() < 240 ? Take<std::int16_t>() / 256.0 : Take<double>(); }
  Korvane::Vector3 TakeVector() {
    const double x = TakeDouble();
    const double y = TakeDouble();
    return {x, y, TakeDouble()};
  }
  Korvane::OperationType TakeOperation() {
    return static_cast<Korvane::OperationType>(Take<std::uint8_t>() % 14 - 1);
  }

 private:
  const std::uint8_t* next;
  std::size_t left;
};
