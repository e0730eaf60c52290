#ifndef SRC_BASE_HEAPLIST_H
#define SRC_BASE_HEAPLIST_H
// A named doubly linked list: the standard one's layout and destruction.
#include <list>

template <class T>
class HeapList : public std::list<T> {
 public:
  using std::list<T>::list;
};

#endif
