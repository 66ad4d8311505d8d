// SPDX-License-Identifier: MIT
//
// Arrays whose first index is 1, as stations and channels are numbered.

#ifndef MODEL_ONE_BASED_H_
#define MODEL_ONE_BASED_H_

#include <cassert>
#include <cstddef>
#include <span>
#include <vector>

namespace model {

// A one-dimensional array indexed 1..Size().
template <typename T>
class OneBasedArray {
 public:
  OneBasedArray() = default;

  // `size` elements, each T{}.  REQUIRES: size >= 0
  explicit OneBasedArray(int size) : items_(static_cast<std::size_t>(size)) {}

  int Size() const { return static_cast<int>(items_.size()); }

  // REQUIRES: 1 <= index <= Size()
  T& operator[](int index) { return items_[Offset(index)]; }
  const T& operator[](int index) const { return items_[Offset(index)]; }

 private:
  std::size_t Offset(int index) const {
    assert(index >= 1 && index <= Size());
    return static_cast<std::size_t>(index - 1);
  }

  std::vector<T> items_;
};

// A square matrix indexed [1..Size(), 1..Size()].
template <typename T>
class OneBasedMatrix {
 public:
  OneBasedMatrix() = default;

  // `size` rows of `size` elements, each T{}.  REQUIRES: size >= 0
  explicit OneBasedMatrix(int size)
      : size_(size), items_(static_cast<std::size_t>(size) * static_cast<std::size_t>(size)) {}

  int Size() const { return size_; }

  // REQUIRES: both indexes within 1..Size()
  T& At(int row, int column) { return items_[Offset(row, column)]; }
  const T& At(int row, int column) const { return items_[Offset(row, column)]; }

  // The elements of one row; element 0 of the span is column 1.
  // REQUIRES: 1 <= row <= Size()
  std::span<const T> Row(int row) const {
    return std::span(items_).subspan(Offset(row, 1), static_cast<std::size_t>(size_));
  }

 private:
  std::size_t Offset(int row, int column) const {
    assert(row >= 1 && row <= size_ && column >= 1 && column <= size_);
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(size_) +
           static_cast<std::size_t>(column - 1);
  }

  int size_ = 0;
  std::vector<T> items_;
};

}  // namespace model

#endif  // MODEL_ONE_BASED_H_
