#ifndef SRC_RENDERSYSTEM_SIMPLEMANAGER_H
#define SRC_RENDERSYSTEM_SIMPLEMANAGER_H
// The manager of items known by unsigned IDs; subclasses say how an item is made.
#include "RenderSystem/Manager.h"

class SimpleManager : public Manager<unsigned int> {};

#endif
