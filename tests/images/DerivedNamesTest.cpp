// The names of thumbnails and covers derived from a resource's path.
#include <gtest/gtest.h>

#include <stdexcept>

#include "ImageTestSupport.h"

namespace {

TEST(DerivedNames, ThumbnailsAndCoversOfTheGalleryKinds) {
  EXPECT_EQ("/g/Photos/Thumb/vtwgphoto_thumb_12.jpg", imgtest::Store().GetThumbImageName("/g/Photos/vtwgphoto_12.jpg"));
  EXPECT_EQ("/g/Art/Thumb/vtwgart_thumb_3.jpg", imgtest::Store().GetThumbImageName("/g/Art/vtwgart_3.jpg"));
  EXPECT_EQ("/x/Videos/Thumb/vtwgvideo_thumb_3.jpg", imgtest::Store().GetThumbImageName("/x/Videos/vtwgvideo_3.avi"));
  EXPECT_EQ("/x/Videos/Cover/vtwgvideo_cover_3.jpg", imgtest::Store().GetCoverPhotoName("/x/Videos/vtwgvideo_3.avi"));
}

TEST(DerivedNames, BareNameGetsNoSubfolder) {
  EXPECT_EQ("vtwgaudio_thumb_7.jpg", imgtest::Store().GetThumbImageName("vtwgaudio_7.wav"));
  EXPECT_EQ("vtwgaudio_cover_7.jpg", imgtest::Store().GetCoverPhotoName("vtwgaudio_7.wav"));
}

TEST(DerivedNames, BackslashCountsOnlyWithoutSlashAndTheFolderStillBeginsWithASlash) {
  EXPECT_EQ("a/Thumb\\b_thumb_1.jpg", imgtest::Store().GetThumbImageName("a\\b_1.jpg"));
  EXPECT_EQ("a\\x/Thumb/b_thumb_1.jpg", imgtest::Store().GetThumbImageName("a\\x/b_1.jpg"));
  EXPECT_EQ("a/Cover\\b_cover_1.jpg", imgtest::Store().GetCoverPhotoName("a\\b_1.jpg"));
}

TEST(DerivedNames, LastUnderscoreOfTheWholePathCounts) {
  EXPECT_EQ("/my_dir/Thumb/photo_thumb_2.jpg", imgtest::Store().GetThumbImageName("/my_dir/photo_2.jpg"));
  EXPECT_EQ("/my_thumb_dir/Thumb/photo.jpg", imgtest::Store().GetThumbImageName("/my_dir/photo.jpg"));
}

TEST(DerivedNames, PathWithoutUnderscoreRaisesTheLibrarysException) {
  EXPECT_THROW(imgtest::Store().GetThumbImageName("/g/photo.jpg"), std::out_of_range);
}

}  // namespace
