#include "support/random.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Korvane;

namespace {

constexpr std::uint64_t USUAL_SEED = 20240229;

std::uint64_t ChooseSeed() {
  const char* const wish = std::getenv("ZOV_TEST_SEED");
  if (wish == nullptr || *wish == '\0') return USUAL_SEED;
  if (std::string(wish) == "random") {
    std::random_device device;
    return (static_cast<std::uint64_t>(device()) << 32) | device();
  }
  return std::strtoull(wish, nullptr, 10);
}

std::string HowToRepeat() { return "to repeat: ZOV_TEST_SEED=" + std::to_string(TestSeed()); }

}  // namespace

std::uint64_t TestSeed() {
  static const std::uint64_t seed = [] {
    const std::uint64_t chosen = ChooseSeed();
    std::printf("[   SEED   ] ZOV_TEST_SEED=%llu\n", static_cast<unsigned long long>(chosen));
    return chosen;
  }();
  return seed;
}

Random::Random(std::uint64_t stream)
    : generator(TestSeed() * 1000003 + stream),
      trace("random source", static_cast<int>(stream), HowToRepeat()) {
  ::testing::Test::RecordProperty("seed", std::to_string(TestSeed()));
}

double Random::Uniform(double low, double high) {
  const double unit = static_cast<double>(generator() >> 11) * 0x1p-53;
  return low + (high - low) * unit;
}

int Random::Integer(int low, int high) {
  const auto count = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low + 1);
  return static_cast<int>(low + static_cast<std::int64_t>(generator() % count));
}

bool Random::Coin() { return (generator() >> 63) != 0; }

double Random::Magnitude(double low, double high) {
  return std::pow(10.0, Uniform(std::log10(low), std::log10(high)));
}

// Archimedes: the height of a point spread evenly over the sphere is itself spread evenly.
Vector3 Random::Direction() {
  const double z = Uniform(-1.0, 1.0);
  const double azimuth = Uniform(-Math::PI, Math::PI);
  const double radius = std::sqrt(1.0 - z * z);
  return {radius * std::cos(azimuth), radius * std::sin(azimuth), z};
}

Vector3 Random::Point(double half) {
  const double x = Uniform(-half, half);
  const double y = Uniform(-half, half);
  return {x, y, Uniform(-half, half)};
}
