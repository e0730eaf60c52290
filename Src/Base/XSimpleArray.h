#ifndef SRC_BASE_XSIMPLEARRAY_H
#define SRC_BASE_XSIMPLEARRAY_H
// A fixed-capacity array kept in place: no heap, no destruction of entries beyond
// that of the storage itself. Filled by push_back only.
#include <assert.h>

template <class T, int TLength>
class XSimpleArray {
 public:
  XSimpleArray() : mNext(0) {}

  int size() const { return mNext; }
  static int capacity() { return TLength; }
  bool empty() const { return mNext == 0; }

  T& operator[](int index) { return mData[index]; }
  const T& operator[](int index) const { return mData[index]; }

  T* begin() { return mData; }
  T* end() { return mData + mNext; }
  const T* begin() const { return mData; }
  const T* end() const { return mData + mNext; }

  void clear() { mNext = 0; }

  // Stores at index mNext, then counts it.
  //
  // Filling past the capacity is a programming error, not a condition to
  // recover from: the storage is in place and cannot grow, and writing past it
  // would overwrite whatever the owner keeps next.

  void push_back(const T& value) {
    assert((mNext<TLength) && "XSimpleArray Out of Range\r\n");
    mData[mNext] = value;
    ++mNext;
  }

 private:
  int mNext;
  T mData[TLength];
};

#endif
