#ifndef SRC_BASE_HEAPVECTOR_H
#define SRC_BASE_HEAPVECTOR_H
// A named vector: the standard one's layout and destruction (elements first, then
// the storage), under the name the framework's interfaces use.
#include <vector>

template <class T>
class HeapVector : public std::vector<T> {
 public:
  using std::vector<T>::vector;
};

#endif
