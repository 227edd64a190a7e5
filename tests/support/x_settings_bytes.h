#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Settings as a manager of an X desktop offers them to all programs.
class XSettingsBytes {
 public:
  explicit XSettingsBytes(bool bigEnd = false) : bigEndFirst(bigEnd) {
    bytes = {static_cast<unsigned char>(bigEnd ? 1 : 0), 0, 0, 0};
    Put(7, 4);  // how often they have changed
    Put(0, 4);  // how many there are
  }

  XSettingsBytes& AddNumber(std::string_view name, std::int32_t value) {
    Begin(0, name);
    Put(static_cast<std::uint32_t>(value), 4);
    return *this;
  }
  XSettingsBytes& AddText(std::string_view name, std::string_view value) {
    Begin(1, name);
    Put(static_cast<std::uint32_t>(value.size()), 4);
    PutText(value);
    return *this;
  }
  XSettingsBytes& AddColour(std::string_view name) {
    Begin(2, name);
    for (int channel = 0; channel < 4; ++channel) Put(0xFFFF, 2);
    return *this;
  }
  const std::vector<unsigned char>& Get() const { return bytes; }

 private:
  static constexpr std::size_t COUNT_AT = 8;

  void Put(std::uint32_t number, std::size_t size) { PutAt(bytes.size(), number, size); }
  void PutAt(std::size_t place, std::uint32_t number, std::size_t size) {
    if (bytes.size() < place + size) bytes.resize(place + size);
    for (std::size_t i = 0; i < size; ++i) {
      bytes[place + (bigEndFirst ? size - 1 - i : i)] = static_cast<unsigned char>(number >> (8 * i) & 0xFFU);
    }
  }
  void PutText(std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
    while (bytes.size() % 4 != 0) bytes.push_back(0);
  }
  void Begin(std::uint32_t kind, std::string_view name) {
    PutAt(COUNT_AT, ++count, 4);
    Put(kind, 1);
    Put(0, 1);
    Put(static_cast<std::uint32_t>(name.size()), 2);
    PutText(name);
    Put(3, 4);  // when it was changed
  }

  std::vector<unsigned char> bytes;
  bool bigEndFirst;
  std::uint32_t count = 0;
};
