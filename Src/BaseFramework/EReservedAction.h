#ifndef SRC_BASEFRAMEWORK_ERESERVEDACTION_H
#define SRC_BASEFRAMEWORK_ERESERVEDACTION_H

// What becomes of a scene on the stack: bit 0 updated at each tick, bit 1
// rendered. The top scene always has both.
enum EReservedAction {
  eRA_None = 0,
  eRA_Update = 1,
  eRA_Render = 2,
  eRA_UpdateAndRender = 3,
};

#endif
