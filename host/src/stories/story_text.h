#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace zovhost {

/// What was read. The members of an object are in the order of the alphabet, and each is there once.
using Json = nlohmann::json;
/// What is to be written, in the order in which it was put together.
using OrderedJson = nlohmann::ordered_json;

// What a story of hours needs a part of; with them no text takes long or much memory.
constexpr std::size_t LARGEST_TEXT = std::size_t{64} << 20;  // bytes
constexpr std::size_t MOST_VALUES = 4'000'000;
constexpr std::size_t DEEPEST_VALUE = 32;  // objects and arrays within each other
constexpr std::size_t MOST_SEQUENCES = 10'000;
constexpr std::size_t MOST_SHOTS = 10'000;  // of all sequences

/// False puts one line into `error`.
bool ParseJson(std::string_view text, Json& root, std::string& error);
/// A field to a line; what lies `deep` objects and lists within each other stands on one. In a story that is
/// a point of a camera.
std::string PrintJson(const OrderedJson& root, int deep = 7);

}  // namespace zovhost
