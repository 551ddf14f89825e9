// The default Simple build through the reference host, in every colour mode
// the plug-in has: the plain file must keep the indices and palette it has
// always had, and the optimised file must show the same pictures in every
// decoder while being no larger.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "host/reference_host.h"
#include "tests/gif_decoders_posix.h"
#include "plugin/build_pipeline.h"
#include "plugin/controls_startup.h"
#include "tests/test_folder.h"
#include "tests/text_test_support.h"

namespace {

struct ColourMode {
  const char* name;
  int customPalette, dither, supercompress, trueColour, fastRemap, palette;
  std::uint64_t plainDigest;  // of the decoded file, taken before any speed-up
};

constexpr ColourMode kModes[] = {
    {"custom", 1, 0, 0, 0, 1, 6, 0x3F730DF732BB08FBu},
    {"custom dithered", 1, 1, 0, 0, 1, 6, 0xAE3665503869710Au},
    {"custom supercompressed", 1, 0, 1, 0, 1, 6, 0x4840762AC570C51Du},
    {"custom dithered supercompressed", 1, 1, 1, 0, 1, 6, 0x38248453D19A2ACDu},
    {"custom dithered exact search", 1, 1, 0, 0, 0, 6, 0x9AB4DAC2359BEEBEu},
    {"true colour", 1, 1, 0, 1, 1, 6, 0xEC69D2C2A2DCA5FCu},
    {"fixed 0", 0, 0, 0, 0, 1, 0, 0x72B939D3F26EFCC2u},
    {"fixed 0 dithered", 0, 1, 0, 0, 1, 0, 0xDAA8A38754E8D234u},
    {"fixed 1", 0, 0, 0, 0, 1, 1, 0x50F002ED8467D774u},
    {"fixed 1 dithered", 0, 1, 0, 0, 1, 1, 0x6DC796C4330049F1u},
    {"fixed 2 dithered", 0, 1, 0, 0, 1, 2, 0x6328EA78257385ADu},
    {"fixed 3 dithered", 0, 1, 0, 0, 1, 3, 0x6C1C44C55C6FEF45u},
    {"fixed 4 dithered", 0, 1, 0, 0, 1, 4, 0xB38D877B0D0C6E85u},
    {"fixed 5 dithered", 0, 1, 0, 0, 1, 5, 0xB3E7617EB04A3E71u},
    {"fixed 6", 0, 0, 0, 0, 1, 6, 0x044970DBF1C69466u},
    {"fixed 6 dithered supercompressed", 0, 1, 1, 0, 1, 6, 0xB628C5D4F7121CDBu},
    {"fixed 7 dithered", 0, 1, 0, 0, 1, 7, 0x33FFFEA85B8228ADu},
    {"fixed 8 dithered", 0, 1, 0, 0, 1, 8, 0x7D4D23DFFB6C3423u},
    {"fixed 9 dithered exact search", 0, 1, 0, 0, 0, 9, 0xDC7F4A2DC3B781B4u},
};

// Each frame as Pillow composes it, one line of hexadecimal RGBA a frame.
constexpr char kPillowFrames[] =
    "import sys\n"
    "from PIL import Image, GifImagePlugin\n"
    "GifImagePlugin.LOADING_STRATEGY = GifImagePlugin.LoadingStrategy.RGB_ALWAYS\n"
    "im = Image.open(sys.argv[1])\n"
    "for i in range(im.n_frames):\n"
    "    im.seek(i)\n"
    "    print(im.convert('RGBA').tobytes().hex())\n";

std::uint64_t Fnv(std::uint64_t hash, const void* data, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) hash = (hash ^ static_cast<const std::uint8_t*>(data)[i]) * 0x100000001B3u;
  return hash;
}

std::uint64_t FnvInts(std::uint64_t hash, std::initializer_list<int> values) {
  for (int value : values) hash = Fnv(hash, &value, sizeof value);
  return hash;
}

// Screen, table and every image as giflib decodes them: place, indices,
// delay, disposal and transparent index.
std::uint64_t DecodedDigest(const std::string& path) {
  int error = 0;
  GifFileType* gif = DGifOpenFileName(path.c_str(), &error);
  if (gif == nullptr) return 0;
  std::uint64_t hash = 0xCBF29CE484222325u;
  if (DGifSlurp(gif) == GIF_OK && gif->SColorMap != nullptr) {
    hash = FnvInts(hash, {gif->SWidth, gif->SHeight, gif->ImageCount, gif->SColorMap->ColorCount});
    hash = Fnv(hash, gif->SColorMap->Colors, 3u * gif->SColorMap->ColorCount);
    for (int i = 0; i < gif->ImageCount; ++i) {
      const SavedImage& image = gif->SavedImages[i];
      GraphicsControlBlock control{};
      DGifSavedExtensionToGCB(gif, i, &control);
      hash = FnvInts(hash, {image.ImageDesc.Left, image.ImageDesc.Top, image.ImageDesc.Width, image.ImageDesc.Height,
                            control.DelayTime, control.DisposalMode, control.TransparentColor});
      hash = Fnv(hash, image.RasterBits, std::size_t(image.ImageDesc.Width) * image.ImageDesc.Height);
    }
  }
  DGifCloseFile(gif, &error);
  return hash;
}

class RenderOutput : public GdiStarted {
 protected:

  // Builds the default Simple animation in the mode; the path of the file.
  std::string Render(const ColourMode& mode, const std::string& name, bool plain) {
    SettingsReset();
    MainDither = static_cast<std::uint32_t>(mode.dither);
    MainSupercompress = static_cast<std::uint32_t>(mode.supercompress);
    MainPalette = static_cast<std::uint32_t>(mode.palette);
    FastRemap = static_cast<std::uint32_t>(mode.fastRemap);
    ControlsSnapshot snapshot;
    SnapshotInit(&snapshot);
    SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
    SnapshotSetCheck(&snapshot, kCustomPaletteBox, mode.customPalette);
    SnapshotSetCheck(&snapshot, kTrueColourBox, mode.trueColour);
    std::string path = folder_.File(name + ".gif");
    ReferenceHostReset(path, false);
    ReferenceHostCurrent().plainOutput = plain;
    HostRecord host = ReferenceHostRecord();
    EXPECT_EQ(BuildAnimation(&snapshot.controls, &host, 0), 1);
    SnapshotClear(&snapshot);
    SettingsReset();
    return path;
  }

  TestFolder folder_{"lw_render_output"};
};

TEST_F(RenderOutput, PlainFileOfEveryColourModeIsUnchanged) {
  for (const ColourMode& mode : kModes) {
    std::string plain = Render(mode, "plain", true);
    EXPECT_EQ(DecodedDigest(plain), mode.plainDigest) << mode.name;
  }
}

TEST_F(RenderOutput, OptimisedFileShowsThePlainPicturesInEveryDecoderAndIsNoLarger) {
  std::string script = folder_.File("frames.py");
  std::FILE* file = std::fopen(script.c_str(), "w");
  ASSERT_NE(file, nullptr);
  std::fputs(kPillowFrames, file);
  std::fclose(file);
  for (const ColourMode& mode : kModes) {
    SCOPED_TRACE(mode.name);
    std::string plain = Render(mode, "plain", true);
    std::string optimised = Render(mode, "optimised", false);
    EXPECT_LE(std::filesystem::file_size(optimised), std::filesystem::file_size(plain));
    std::vector<Rgba> plainFrames = GiflibComposited(plain);
    std::vector<Rgba> optimisedFrames = GiflibComposited(optimised);
    ASSERT_EQ(optimisedFrames.size(), plainFrames.size());
    for (std::size_t i = 0; i < plainFrames.size(); ++i)
      ExpectSameVisiblePixels(plainFrames[i], optimisedFrames[i], "giflib frame " + std::to_string(i));
    auto coalesced = [](const std::string& path) {
      std::string bytes = RunCommand("/usr/bin/convert '" + path + "' -coalesce rgba:- 2>&1");
      return Rgba(bytes.begin(), bytes.end());
    };
    ExpectSameVisiblePixels(coalesced(plain), coalesced(optimised), "ImageMagick");
    // These builds show something in every pixel, so Pillow's frames match whole.
    EXPECT_EQ(RunCommand("/usr/bin/python3 '" + script + "' '" + optimised + "' 2>&1"),
              RunCommand("/usr/bin/python3 '" + script + "' '" + plain + "' 2>&1"));
  }
}

}  // namespace
