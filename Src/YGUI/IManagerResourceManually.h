#ifndef SRC_YGUI_IMANAGERRESOURCEMANUALLY_H
#define SRC_YGUI_IMANAGERRESOURCEMANUALLY_H
// Objects that are constructed first and initialised explicitly afterwards; the
// owner calls Destroy() and then deletes them. Destructors free nothing.

class IManagerResourceManually {
 public:
  virtual void Initialize() = 0;
  virtual void Destroy() = 0;

 protected:
  // Owners delete through the concrete type or through YGUIFrame.
  ~IManagerResourceManually() {}
};

#endif
