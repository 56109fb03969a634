// SPDX-License-Identifier: Apache-2.0
// What pictures decode to, and that files which are cut short, too large or of other formats decode to nothing.
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <array>

#include "HostilePictures.h"
#include "documents/PixbufImages.h"

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

constexpr std::uint64_t kPlenty = 1'000'000;

/// A file of two by three pixels.
std::string fileOf(const char* type, const std::array<guint8, 24>& rgba) {
  g_autoptr(GBytes) bytes = g_bytes_new(rgba.data(), rgba.size());
  g_autoptr(GdkPixbuf) pixbuf = gdk_pixbuf_new_from_bytes(bytes, GDK_COLORSPACE_RGB, TRUE, 8, 2, 3, 8);
  gchar* data = nullptr;
  gsize size = 0;
  EXPECT_TRUE(gdk_pixbuf_save_to_buffer(pixbuf, &data, &size, type, nullptr, nullptr));
  std::string file(data, size);
  g_free(data);
  return file;
}

constexpr std::array<guint8, 24> kColours{255, 0,  0,   255, 0, 255, 0,  128,  //
                                          0,   0,  255, 0,   9, 8,   7,  1,    //
                                          10,  20, 30,  40,  0, 0,   64, 255};
/// Left half white, right half black: what JPEG can keep.
constexpr std::array<guint8, 24> kHalves{255, 255, 255, 255, 0,   0,   0,   255, 255, 255, 255, 255,
                                         0,   0,   0,   255, 255, 255, 255, 255, 0,   0,   0,   255};

/// One pixel, first red, then blue.
std::string animation() {
  using namespace std::string_literals;
  const std::string still = ",\0\0\0\0\1\0\1\0\0\2\2"s;
  return "GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\xFF"s + "!\xF9\4\0\x0A\0\0\0"s + still + "D\1\0"s +
         "!\xF9\4\0\x0A\0\0\0"s + still + "L\1\0;"s;
}

/// Puts a camera's mark for how it was held behind the first two bytes of a JPEG file.
std::string heldAs(char orientation, const std::string& jpeg) {
  using namespace std::string_literals;
  const std::string mark =
      "\xFF\xE1\0\x22"s + "Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0"s + orientation + "\0\0\0\0\0\0"s;
  return jpeg.substr(0, 2) + mark + jpeg.substr(2);
}

std::shared_ptr<const UIImage> decoded(const std::string& file, std::uint64_t largestPixels = kPlenty) {
  return PixbufImages(largestPixels).imageWithData(file);
}

/// Kilobytes that the process has held at once.
long peakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

TEST(ImagesTest, ColoursComeExactlyAndUnmultipliedFromPNG) {
  const auto image = decoded(fileOf("png", kColours));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->widthPixels, 2U);
  EXPECT_EQ(image->heightPixels, 3U);
  EXPECT_THAT(image->rgba, ElementsAreArray(kColours));
}

TEST(ImagesTest, APictureWithoutOpacityIsOpaqueAndTurnedUpright) {
  const auto image = decoded(fileOf("jpeg", kHalves));
  ASSERT_NE(image, nullptr);
  EXPECT_GT(image->rgba[0], 200);
  EXPECT_LT(image->rgba[4], 55);
  EXPECT_EQ(image->rgba[3], 255);
  EXPECT_EQ(image->rgba.size(), 24U);

  const auto turned = decoded(heldAs(8, fileOf("jpeg", kHalves)));  // held with its left side down
  ASSERT_NE(turned, nullptr);
  EXPECT_EQ(turned->widthPixels, 3U);
  EXPECT_EQ(turned->heightPixels, 2U);
  EXPECT_LT(turned->rgba.front(), 55) << "what was on the right is above";
  EXPECT_GT(turned->rgba[20], 200);
}

TEST(ImagesTest, OfAnAnimationComesTheFirstPicture) {
  const auto image = decoded(animation());
  ASSERT_NE(image, nullptr);
  EXPECT_THAT(image->rgba, ElementsAre(255, 0, 0, 255));
  std::string clear = animation();
  clear[clear.find("!\xF9\4") + 3] = 1;  // its first colour is transparent
  EXPECT_EQ(decoded(clear)->rgba[3], 0);
}

TEST(ImagesTest, AFileThatIsCutAnywhereIsNoPicture) {
  for (const std::string& file : {fileOf("png", kColours), heldAs(1, fileOf("jpeg", kHalves)), animation()}) {
    for (std::size_t length = 0; length < file.size(); ++length) {
      EXPECT_EQ(decoded(file.substr(0, length)), nullptr) << length << " of " << file.size();
    }
    EXPECT_NE(decoded(file + "trailing bytes"), nullptr);
  }
  std::string strange = animation();
  strange.insert(strange.size() - 1, "\1\0", 2);
  EXPECT_EQ(decoded(strange), nullptr) << "a block of no kind";
}

TEST(ImagesTest, PicturesWithMorePixelsThanAllowedAreRefused) {
  for (const char* type : {"png", "jpeg"}) {
    EXPECT_NE(decoded(fileOf(type, kHalves), 6), nullptr) << type;
    EXPECT_EQ(decoded(fileOf(type, kHalves), 5), nullptr) << type;
  }
  EXPECT_EQ(decoded(animation(), 0), nullptr);
}

TEST(ImagesTest, ASmallFileThatDeclaresAHugePictureTakesNoMemory) {
  std::string jpeg = fileOf("jpeg", kHalves);
  const std::size_t frame = jpeg.find("\xFF\xC0") + 5;
  jpeg.replace(frame, 4, "\x1F\x40\x1F\x40");  // 8000 by 8000
  std::string gif = animation();
  gif.replace(6, 4, "\x40\x1F\x40\x1F");
  const long before = peakKilobytes();
  EXPECT_EQ(decoded(jpeg, std::uint64_t{1} << 25U), nullptr);
  EXPECT_EQ(decoded(gif, std::uint64_t{1} << 25U), nullptr);
  EXPECT_LT(peakKilobytes() - before, 50'000);
}

TEST(ImagesTest, APictureIsDrawnOnlySoOftenAsItsLimitAllows) {
  const struct {
    const char* what;
    std::string file;
    std::uint64_t largestPixels;
    bool isDecoded;
  } rows[] = {
      {"an encoder's scans", progressiveJPEG(16, 16, 11), 1'000'000, true},
      {"scans, though cheap ones", progressiveJPEG(16, 16, 63), 1'000'000, true},
      {"one more than any encoder needs", progressiveJPEG(16, 16, 64), 1'000'000, false},
      {"as often as the limit allows", progressiveJPEG(16, 16, 4), 128 * 4, true},
      {"once more", progressiveJPEG(16, 16, 5), 128 * 4, false},
      {"in colours", progressiveJPEG(16, 16, 4, 3), 128 * 4, true},
      {"a frame beyond the canvas", blackGIF(1, 1, 0).substr(0, 19) + blackGIF(20, 20, 1).substr(19), 799, false},
      {"the same, allowed", blackGIF(1, 1, 0).substr(0, 19) + blackGIF(20, 20, 1).substr(19), 800, true},
      {"a long side", blackPNG(65'535, 1), 1'000'000, true},
      {"a longer one", blackPNG(1, 65'536), 1'000'000, false},
      {"interlaced", blackPNG(8, 8, true), 100, true},
  };
  for (const auto& row : rows) EXPECT_EQ(decoded(row.file, row.largestPixels) != nullptr, row.isDecoded) << row.what;
  std::string arithmetic = progressiveJPEG(16, 16, 1);
  arithmetic[arithmetic.find("\xFF\xC2") + 1] = '\xCA';
  EXPECT_EQ(decoded(arithmetic), nullptr);
}

TEST(ImagesTest, WhatAPictureDoesNotNeedIsNotUnpacked) {
  const std::string png = blackPNG(1, 1, false, pngTexts(60, 7'900'000));
  const std::string gif = blackGIF(2000, 2000, 20);
  const long before = peakKilobytes();
  EXPECT_THAT(decoded(png)->rgba, ElementsAre(0, 0, 0, 255));
  EXPECT_NE(decoded(gif, 8'000'000), nullptr);
  EXPECT_LT(peakKilobytes() - before, 60'000);
}

TEST(ImagesTest, TransparencyOfAPaletteIsNeeded) {
  using namespace std::string_literals;
  std::string png = blackPNG(1, 1, false, pngChunk("PLTE", "\1\2\3"s) + pngChunk("tRNS", "\x40"s));
  const std::string header = "\0\0\0\1\0\0\0\1\x08\3\0\0\0"s;  // of colours by number
  png.replace(8, 25, pngChunk("IHDR", header));
  const std::size_t pixels = png.find("IDAT") - 4;
  png.replace(pixels, std::string::npos, pngChunk("IDAT", deflated("\0\0"s)) + pngChunk("IEND", ""));
  ASSERT_NE(decoded(png), nullptr);
  EXPECT_THAT(decoded(png)->rgba, ElementsAre(1, 2, 3, 0x40));
}

TEST(ImagesTest, FormatsThatNobodyAskedForAreNotTried) {
  EXPECT_EQ(decoded(fileOf("bmp", kColours)), nullptr);
  EXPECT_EQ(decoded("<svg xmlns='http://www.w3.org/2000/svg' width='1' height='1'/>"), nullptr);
}

}  // namespace
