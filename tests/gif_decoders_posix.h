// Reading our files back the way other programs do: giflib's raw frames
// composited here, and the output of other programs' commands.
#pragma once

#include <gif_lib.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

using Rgba = std::vector<std::uint8_t>;  // 4 bytes a pixel

// Each raw frame giflib reads, drawn over the screen as the one before left
// it; a background disposal clears the frame's place.
inline std::vector<Rgba> GiflibComposited(const std::string& path) {
  int error = 0;
  GifFileType* gif = DGifOpenFileName(path.c_str(), &error);
  std::vector<Rgba> frames;
  if (gif == nullptr || DGifSlurp(gif) != GIF_OK) return frames;
  Rgba screen(std::size_t(gif->SWidth) * gif->SHeight * 4, 0);
  for (int i = 0; i < gif->ImageCount; ++i) {
    const GifImageDesc& desc = gif->SavedImages[i].ImageDesc;
    GraphicsControlBlock control;
    DGifSavedExtensionToGCB(gif, i, &control);
    const GifByteType* raster = gif->SavedImages[i].RasterBits;
    for (int y = 0; y < desc.Height; ++y)
      for (int x = 0; x < desc.Width; ++x) {
        int index = raster[y * desc.Width + x];
        if (index == control.TransparentColor) continue;
        const GifColorType& colour = gif->SColorMap->Colors[index];
        std::uint8_t* pixel = &screen[((desc.Top + y) * gif->SWidth + desc.Left + x) * 4];
        pixel[0] = colour.Red, pixel[1] = colour.Green, pixel[2] = colour.Blue, pixel[3] = 255;
      }
    frames.push_back(screen);
    for (int y = 0; control.DisposalMode == DISPOSE_BACKGROUND && y < desc.Height; ++y)
      for (int x = 0; x < desc.Width; ++x) screen[((desc.Top + y) * gif->SWidth + desc.Left + x) * 4 + 3] = 0;
  }
  DGifCloseFile(gif, &error);
  return frames;
}

inline std::string RunCommand(const std::string& command) {
  std::string output;
  std::FILE* pipe = popen(command.c_str(), "r");
  char buffer[65536];
  for (std::size_t got; pipe != nullptr && (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    output.append(buffer, got);
  }
  EXPECT_TRUE(pipe != nullptr && pclose(pipe) == 0) << command;
  return output;
}

// Equal where visible; the colour under a clear pixel is the decoder's own.
inline void ExpectSameVisiblePixels(const Rgba& expected, const Rgba& actual, const std::string& what) {
  ASSERT_EQ(expected.size(), actual.size()) << what;
  std::size_t differing = 0;
  for (std::size_t i = 0; i < expected.size(); i += 4) {
    bool same = expected[i + 3] == 0 ? actual[i + 3] == 0 : std::equal(&expected[i], &expected[i + 4], &actual[i]);
    differing += same ? 0 : 1;
  }
  EXPECT_EQ(differing, 0u) << what;
}
