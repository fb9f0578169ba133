// One-based lists of the source model.
//
// Every list of the source model counts from 1, as the host application's own model does:
// index 1 is the first element and iteration runs from 1 to Num(). `OneBasedList` grows;
// `OneBasedArray` has a fixed length (six degrees of freedom, four shell corners).
// An index outside 1..Num() is a programming error of the caller and throws
// std::out_of_range naming the index.
#pragma once

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vtt {

namespace one_based_detail {
[[noreturn]] inline void ThrowBadIndex(int index, int num) {
  throw std::out_of_range("one-based index " + std::to_string(index) + " outside 1.." +
                          std::to_string(num));
}
}  // namespace one_based_detail

template <class T>
class OneBasedList {
  // std::vector<bool> hands out proxies, not references; flag lists use OneBasedArray.
  static_assert(!std::is_same_v<T, bool>, "use OneBasedArray for flags");

 public:
  OneBasedList() = default;
  explicit OneBasedList(int num) { Redim(num); }

  int Num() const { return static_cast<int>(items_.size()); }

  T& operator()(int index) { return items_[Slot(index)]; }
  const T& operator()(int index) const { return items_[Slot(index)]; }

  void Add(T value) { items_.push_back(std::move(value)); }

  // Sets the length to `num`, keeping the first entries; new entries hold T's zero value.
  void Redim(int num) {
    if (num < 0) throw std::out_of_range("list length " + std::to_string(num) + " below 0");
    items_.resize(static_cast<std::size_t>(num));
  }

  // Removes the entry at `index`; the entries after it move one place down.
  void RemoveAt(int index) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(Slot(index)));
  }

  void Clear() { items_.clear(); }

  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

  friend bool operator==(const OneBasedList&, const OneBasedList&) = default;

 private:
  std::size_t Slot(int index) const {
    if (index < 1 || index > Num()) one_based_detail::ThrowBadIndex(index, Num());
    return static_cast<std::size_t>(index - 1);
  }

  std::vector<T> items_;
};

template <class T, int N>
class OneBasedArray {
  static_assert(N > 0);

 public:
  static constexpr int Num() { return N; }

  T& operator()(int index) { return items_[Slot(index)]; }
  const T& operator()(int index) const { return items_[Slot(index)]; }

  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

  friend bool operator==(const OneBasedArray&, const OneBasedArray&) = default;

 private:
  static std::size_t Slot(int index) {
    if (index < 1 || index > N) one_based_detail::ThrowBadIndex(index, N);
    return static_cast<std::size_t>(index - 1);
  }

  std::array<T, N> items_{};
};

}  // namespace vtt
