#ifndef SRC_BASEFRAMEWORK_LOGGING_H
#define SRC_BASEFRAMEWORK_LOGGING_H
// The framework's interface to the device's usage log. The operations of the log
// (title, game, area, activity and level events) are not built yet; the game
// manager already owns one.

class Logging {
 public:
  Logging() : mTitleOpen(0), mGameOpen(0), mAreaOpen(0), mActivityOpen(0), mCyoOpen(0) {}
  virtual ~Logging() {}

 protected:
  unsigned char mTitleOpen;
  unsigned char mGameOpen;
  unsigned char mAreaOpen;
  unsigned char mActivityOpen;
  unsigned char mCyoOpen;
};

#endif
