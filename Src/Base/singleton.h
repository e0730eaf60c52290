#ifndef SRC_BASE_SINGLETON_H
#define SRC_BASE_SINGLETON_H
// Singletons whose instance the application creates and destroys by hand, at the
// points of start-up and shut-down it chooses: no lazy creation, nothing at exit.
#include <assert.h>

struct Tag_Singleton_Manual {};

template <class T, class Tag>
class Singleton;

template <class T>
class Singleton<T, Tag_Singleton_Manual> {
 public:
  // Read directly by event listeners to learn whether the instance still exists.
  static T* instance_;

  static T* sCreate() {
    if (instance_ == 0) {
      instance_ = new T();
    } else {
      assert(false);
    }
    return instance_;
  }

  // There is no sDestroy: the owner deletes instance_ and sets it to null, in
  // the order of its own shut-down.

  static bool sIsCreated() { return instance_ != 0; }

  // The instance lives from sCreate until its owner deletes it and clears
  // instance_; code that may run outside that span (event listeners) tests
  // sIsCreated() or instance_ instead of calling sInstance().
  //
  // Reading the instance before sCreate is a programming error, caught here
  // rather than as a null dereference somewhere later.

  static T& sInstance() {
    assert(instance_);
    return *instance_;
  }
};

template <class T>
T* Singleton<T, Tag_Singleton_Manual>::instance_ = 0;

#endif
