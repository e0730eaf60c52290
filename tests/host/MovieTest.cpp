#include "Movie.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include "support/TestSupport.h"
#include "solva/Audio.h"
#include "solva/Clock.h"
#include "solva/Device.h"

namespace {

// The device on its frame clock, as the simulator runs it headless.
class MovieTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Virtual, 0);
  }
  void TearDown() override {
    solva::SetClockMode(solva::ClockMode::Real);
    solva::ResetDevice();
  }
  // Moves the clock to where frame `k` of `fps` starts and gives the movie the frame.
  static void Frame(Movie& movie, uint64_t k, int fps) {
    const uint64_t target = (k * 1000000u + uint64_t(fps) - 1) / uint64_t(fps);
    solva::AdvanceClockMicros(target - solva::ClockMicros());
    std::string error;
    ASSERT_TRUE(movie.Frame(&error)) << error;
  }
  static sf_count_t SoundFrames(const std::string& path) {
    SF_INFO info = {};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr) return -1;
    sf_close(file);
    EXPECT_EQ(solva::kDefaultMixRate, info.samplerate);
    EXPECT_EQ(1, info.channels);
    return info.frames;
  }
  zvtest::TempDir dir;
};

TEST_F(MovieTest, AFolderMovieHasAPictureForEveryFrameAndTheirSoundExactly) {
  for (int fps : {30, 60, 7, 44}) {
    SCOPED_TRACE(std::to_string(fps) + " frames per second");
    const std::string folder = dir.file("movie-" + std::to_string(fps)) + "/";
    solva::SetClockMode(solva::ClockMode::Virtual, 0);
    std::string error;
    std::unique_ptr<Movie> movie = Movie::Open(folder, fps, &error);
    ASSERT_TRUE(movie) << error;
    const uint64_t frames = 23;
    for (uint64_t k = 1; k <= frames; ++k) Frame(*movie, k, fps);
    ASSERT_TRUE(movie->Close(&error)) << error;
    EXPECT_EQ(sf_count_t(frames * solva::kDefaultMixRate / uint64_t(fps)), SoundFrames(folder + "sound.wav"));
    EXPECT_TRUE(zvtest::Exists(folder + "frame-000000.png"));
    EXPECT_TRUE(zvtest::Exists(folder + "frame-000022.png"));
    EXPECT_FALSE(zvtest::Exists(folder + "frame-000023.png"));
    EXPECT_EQ(frames + 1, zvtest::ListFolder(folder).size());
  }
}

TEST_F(MovieTest, SoundMadeWhileNoFrameRanIsNotInTheMovie) {
  std::string error;
  std::unique_ptr<Movie> movie = Movie::Open(dir.file("away") + "/", 30, &error);
  ASSERT_TRUE(movie) << error;
  Frame(*movie, 1, 30);
  solva::AdvanceClockMicros(600000000u);  // ten minutes suspended
  movie->SkipSound();
  const uint64_t resumedAt = solva::ClockMicros();
  solva::AdvanceClockMicros(resumedAt + 33334 - solva::ClockMicros());  // one frame on
  ASSERT_TRUE(movie->Frame(&error)) << error;
  ASSERT_TRUE(movie->Close(&error)) << error;
  EXPECT_EQ(2 * 735, SoundFrames(dir.file("away/sound.wav")));
}

TEST_F(MovieTest, AMovieIsAnAviFileOrAFolder) {
  EXPECT_TRUE(Movie::IsMoviePath("session.avi"));
  EXPECT_TRUE(Movie::IsMoviePath("SESSION.AVI"));
  EXPECT_TRUE(Movie::IsMoviePath("frames/"));
  EXPECT_TRUE(Movie::IsMoviePath(dir.path()));
  EXPECT_FALSE(Movie::IsMoviePath("session.mp4"));
  std::string error;
  EXPECT_EQ(nullptr, Movie::Open("session.mp4", 30, &error));
  EXPECT_EQ("a movie is FILE.avi or a folder DIR/, not session.mp4", error);
  EXPECT_EQ(nullptr, Movie::Open("/nonexistent-folder/m.avi", 30, &error));
  EXPECT_EQ("cannot write /nonexistent-folder/m.avi: No such file or directory", error);
}

TEST_F(MovieTest, TheSpeakerIsKeptForTheMovieOnlyWhileItIsOpen) {
  std::string error;
  std::unique_ptr<Movie> movie = Movie::Open(dir.file("kept.avi"), 30, &error);
  ASSERT_TRUE(movie) << error;
  solva::AdvanceClockMicros(100000);
  ASSERT_TRUE(movie->Close(&error)) << error;
  solva::AdvanceClockMicros(100000);
  EXPECT_TRUE(solva::TakeSpeakerOutput().empty());
}

}  // namespace
