#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "korvane/vector3.h"

/// The seed of all random tests of this run. The environment variable ZOV_TEST_SEED sets it ("random" draws
/// a fresh one); otherwise it is fixed, so that a run can be repeated. Printed once.
std::uint64_t TestSeed();

/// A source of random values for one test. While it lives, every failure names the seed, and the seed is
/// kept with the test's result.
///
/// The numbers come straight from the generator's bits, so they are the same with every standard library.
class Random {
 public:
  /// `stream` tells apart the sources of one test.
  explicit Random(std::uint64_t stream = 0);

  /// In [low, high).
  double Uniform(double low, double high);
  /// `low` to `high`, both included.
  int Integer(int low, int high);
  bool Coin();
  /// A magnitude spread evenly over the powers of ten between the two ends.
  double Magnitude(double low, double high);
  /// Of unit length, evenly over the sphere.
  Korvane::Vector3 Direction();
  /// Each component in [-half, half).
  Korvane::Vector3 Point(double half);

  template <class T, std::size_t N>
  const T& OneOf(const T (&values)[N]) {
    return values[static_cast<std::size_t>(Integer(0, static_cast<int>(N) - 1))];
  }

 private:
  std::mt19937_64 generator;
  ::testing::ScopedTrace trace;
};
