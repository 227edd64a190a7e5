#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

/// Plain values over a stream of bytes between two processes of this very program: no byte order, no
/// versions. A failed read or write makes everything after it do nothing; reads then yield zeros.
class SceneWriter {
 public:
  /// Takes all bytes or says false.
  using Sink = std::function<bool(const void* bytes, std::size_t size)>;
  explicit SceneWriter(Sink target) : sink(std::move(target)) {}

  bool IsGood() const { return good; }

  template <typename T>
  void Exchange(const T& value) requires std::is_trivially_copyable_v<T> {
    Put(&value, sizeof(T));
  }
  template <typename T>
  void Exchange(const std::vector<T>& values) {
    Exchange(static_cast<std::uint64_t>(values.size()));
    if constexpr (std::is_trivially_copyable_v<T>)
      Put(values.data(), values.size() * sizeof(T));
    else
      for (const T& value : values) ExchangeFields(*this, value);
  }
  void Exchange(const std::string& text) {
    Exchange(static_cast<std::uint64_t>(text.size()));
    Put(text.data(), text.size());
  }

 private:
  void Put(const void* bytes, std::size_t size) { good = good && (size == 0 || sink(bytes, size)); }

  Sink sink;
  bool good = true;
};

/// The other end. The writer may have been damaged by a broken file, so sizes are not believed: memory is
/// touched only as bytes arrive, and room for them is set aside up to a bound.
class SceneReader {
 public:
  /// Fills all bytes or says false.
  using Source = std::function<bool(void* bytes, std::size_t size)>;
  explicit SceneReader(Source origin) : source(std::move(origin)) {}

  bool IsGood() const { return good; }

  template <typename T>
  void Exchange(T& value) requires std::is_trivially_copyable_v<T> {
    if (!Get(&value, sizeof(T))) value = T{};
  }
  template <typename T>
  void Exchange(std::vector<T>& values) {
    std::uint64_t size = 0;
    Exchange(size);
    if constexpr (std::is_trivially_copyable_v<T>) {
      GetBytes(values, size);
    } else {
      for (values.clear(); good && values.size() < size;) ExchangeFields(*this, values.emplace_back());
    }
  }
  void Exchange(std::string& text) {
    std::uint64_t size = 0;
    Exchange(size);
    GetBytes(text, size);
  }

 private:
  static constexpr std::size_t PIECE = std::size_t{1} << 22;           // elements
  static constexpr std::size_t MOST_SET_ASIDE = std::size_t{1} << 27;  // elements

  template <typename Container>
  void GetBytes(Container& values, std::uint64_t size) {
    values.clear();
    values.reserve(std::min<std::uint64_t>(size, MOST_SET_ASIDE));
    while (good && values.size() < size) {
      const std::size_t before = values.size();
      values.resize(before + std::min<std::uint64_t>(size - before, PIECE));
      Get(values.data() + before, (values.size() - before) * sizeof(values[0]));
    }
  }
  bool Get(void* bytes, std::size_t size) { return good = good && source(bytes, size); }

  Source source;
  bool good = true;
};

/// The fields of a record, in one order for both ends.
template <typename Stream, typename Record>
void ExchangeFields(Stream& stream, Record& r) {
  using T = std::remove_const_t<Record>;
  const auto exchange = [&stream](auto&... fields) { (stream.Exchange(fields), ...); };
  if constexpr (std::is_same_v<T, std::string>)
    exchange(r);
  else if constexpr (std::is_same_v<T, Image>)
    exchange(r.width, r.height, r.rgba);
  else if constexpr (std::is_same_v<T, SceneMaterial>)
    exchange(r.name, r.colour, r.image, r.twoSided);
  else if constexpr (std::is_same_v<T, SceneMesh>)
    exchange(r.positions, r.normals, r.texCoords, r.colours, r.indices, r.material);
  else if constexpr (std::is_same_v<T, ScenePart>)
    exchange(r.name, r.mesh, r.transform);
  else
    exchange(r.meshes, r.materials, r.images, r.parts, r.upDirection, r.warnings);
}

}  // namespace zovhost
