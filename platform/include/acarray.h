// AcArray: the host's growable array template (index-based API over std::vector).
#pragma once

#include <algorithm>
#include <cassert>
#include <initializer_list>
#include <utility>
#include <vector>

template <typename T>
class AcArrayMemCopyReallocator {};
template <typename T>
class AcArrayObjectCopyReallocator {};

template <typename T, typename R = AcArrayObjectCopyReallocator<T>>
class AcArray {
 public:
  AcArray() = default;
  explicit AcArray(int physicalLength, int growLength = 8) : mGrow(growLength) {
    mItems.reserve(physicalLength > 0 ? static_cast<size_t>(physicalLength) : 0);
  }
  AcArray(std::initializer_list<T> items) : mItems(items) {}

  int length() const { return static_cast<int>(mItems.size()); }
  int logicalLength() const { return length(); }
  int physicalLength() const { return static_cast<int>(mItems.capacity()); }
  int growLength() const { return mGrow; }
  bool isEmpty() const { return mItems.empty(); }
  bool isValid(int i) const { return i >= 0 && i < length(); }

  T& operator[](int i) { assert(isValid(i)); return mItems[static_cast<size_t>(i)]; }
  const T& operator[](int i) const { assert(isValid(i)); return mItems[static_cast<size_t>(i)]; }
  T& at(int i) { return (*this)[i]; }
  const T& at(int i) const { return (*this)[i]; }
  T& first() { return at(0); }
  const T& first() const { return at(0); }
  T& last() { return at(length() - 1); }
  const T& last() const { return at(length() - 1); }
  T* asArrayPtr() { return mItems.data(); }
  const T* asArrayPtr() const { return mItems.data(); }

  // Appends and returns the new element's index.
  int append(const T& value) { mItems.push_back(value); return length() - 1; }
  AcArray& append(const AcArray& other) {
    mItems.insert(mItems.end(), other.mItems.begin(), other.mItems.end());
    return *this;
  }
  AcArray& insertAt(int index, const T& value) {
    assert(index >= 0 && index <= length());
    mItems.insert(mItems.begin() + index, value);
    return *this;
  }
  AcArray& removeAt(int index) {
    assert(isValid(index));
    mItems.erase(mItems.begin() + index);
    return *this;
  }
  bool remove(const T& value, int start = 0) {
    int at = -1;
    if (!find(value, at, start)) return false;
    removeAt(at);
    return true;
  }
  AcArray& removeFirst() { return removeAt(0); }
  AcArray& removeLast() { mItems.pop_back(); return *this; }
  AcArray& removeAll() { mItems.clear(); return *this; }
  AcArray& removeSubArray(int startIndex, int endIndex) {
    assert(isValid(startIndex) && isValid(endIndex) && startIndex <= endIndex);
    mItems.erase(mItems.begin() + startIndex, mItems.begin() + endIndex + 1);
    return *this;
  }
  bool contains(const T& value, int start = 0) const { return findFrom(value, start) >= 0; }
  bool find(const T& value, int& foundAt, int start = 0) const {
    foundAt = findFrom(value, start);
    return foundAt >= 0;
  }
  int find(const T& value) const { return findFrom(value, 0); }
  int findFrom(const T& value, int start) const {
    for (int i = std::max(start, 0); i < length(); ++i)
      if (mItems[static_cast<size_t>(i)] == value) return i;
    return -1;
  }
  AcArray& setLogicalLength(int n) { mItems.resize(n > 0 ? static_cast<size_t>(n) : 0); return *this; }
  AcArray& setPhysicalLength(int n) {
    if (n < length()) mItems.resize(static_cast<size_t>(std::max(n, 0)));
    mItems.reserve(static_cast<size_t>(std::max(n, 0)));
    return *this;
  }
  AcArray& setGrowLength(int n) { mGrow = n; return *this; }
  AcArray& setAll(const T& value) { std::fill(mItems.begin(), mItems.end(), value); return *this; }
  AcArray& reverse() { std::reverse(mItems.begin(), mItems.end()); return *this; }
  AcArray& swap(int i, int j) { std::swap(at(i), at(j)); return *this; }

  bool operator==(const AcArray& other) const { return mItems == other.mItems; }

  auto begin() { return mItems.begin(); }
  auto end() { return mItems.end(); }
  auto begin() const { return mItems.begin(); }
  auto end() const { return mItems.end(); }

 private:
  std::vector<T> mItems;
  int mGrow = 8;
};

class AcGePoint2d;
class AcGeVector2d;
class AcGePoint3d;
class AcGeVector3d;
using AcGePoint2dArray = AcArray<AcGePoint2d>;
using AcGeVector2dArray = AcArray<AcGeVector2d>;
using AcGePoint3dArray = AcArray<AcGePoint3d>;
using AcGeVector3dArray = AcArray<AcGeVector3d>;
using AcGeDoubleArray = AcArray<double>;
using AcGeIntArray = AcArray<int>;
using AcDbVoidPtrArray = AcArray<void*>;
