#ifndef SRC_MEDIACENTER_MEDIACENTER_H
#define SRC_MEDIACENTER_MEDIACENTER_H
// The media store: one per application, owned by the game manager. Its records,
// index files and life cycle are not built yet.

class GameManager;

class MediaCenter {
 public:
  explicit MediaCenter(GameManager* manager) : mGameManager(manager) {}
  virtual ~MediaCenter() {}
  void Initialize() {}
  void Destroy() {}

 private:
  GameManager* mGameManager;
};

#endif
