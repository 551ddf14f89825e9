#include "plugin/build_pipeline.h"

#include <cstring>

#include "plugin/host_interface.h"
#include "colour/palette.h"
#include "colour/quantise.h"
#include "colour/remap.h"
#include "colour/stamp.h"
#include "colour/supercompress.h"
#include "dialogkit/string_texts.h"
#include "plugin/host_call.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

namespace {

constexpr char kBuildingText[] = "Building";
constexpr char kQuantizingText[] = "Quantizing";
constexpr char kRemappingText[] = "Remapping";
constexpr char kTaskOpenError[] = "Error creating new task.";
constexpr char kAddImageError[] = "There has been an error adding an image to the current file object.";

// Goes into the task once, after the last image.
constexpr char kCommentBlock[] =
    "CREATED BY...\r\n"
    "\r\n"
    "This animation was created by Brindle Foundries' Loopwright Studio or Loopwright Express and the "
    "Lettermotion #3 plugin.\r\n"
    "\r\n"
    "See\r\n"
    "\r\n"
    "    http://www.brindlefoundries.com/\r\n"
    "\r\n"
    "for more information.";

// The working state of one run.
struct BuildRun {
  const Controls* dialog;
  HostRecord* host;
  int testRun;
  BuildBoxes boxes;
  BuildOptionWord options;
  int colourLimit = 256;
  int reservedIndex = -1;
  int deltaIndex = -1;
  std::int32_t deltaColour = 0;
  int fixedDepth = 0;
  int depth = 0;
  std::uint8_t palette[kPaletteBytes] = {};
  int maxWidth = 0;
  int maxHeight = 0;
  DibHandle previousImage = nullptr;
  FrameList frames{};
  void* previousCursor = nullptr;
};

// Frees what the run holds and gives the cursor back.
void EndRun(BuildRun& run) {
  MemFree(run.previousImage);
  run.previousImage = nullptr;
  FrameListFree(&run.frames);
  ControlWaitCursor(run.dialog, 0, run.previousCursor);
}

int FailRun(BuildRun& run, const char* message) {
  ControlShowMessage(run.dialog, message);
  EndRun(run);
  return 0;
}

int FailWithMemoryError(BuildRun& run) { return FailRun(run, StringText(kStringMemoryError)); }

// Step 1: the cursor, the option word and the fixed palette with its depth.
void PrepareRun(BuildRun& run, const EffectEntry& effect) {
  run.boxes = ReadBuildBoxes(run.dialog);
  run.previousCursor = ControlWaitCursor(run.dialog, 1, nullptr);
  run.options = BuildOptionWordFor(run.boxes, effect, run.dialog);
  FixedPaletteBuild(run.palette, &run.fixedDepth, static_cast<int>(MainPalette));
}

// Step 2: the effect's frames. 1, or 0 for a failed or empty build.
int RunEffect(BuildRun& run, const EffectEntry& effect) {
  HostProgress(run.host, 0, 0);
  HostStatus(run.host, kBuildingText);
  if (effect.build != nullptr) {
    HostStatus(run.host, kBuildingText);
    EffectContext context{};
    context.dialog = run.dialog;
    context.frames = &run.frames;
    context.host = run.host;
    GdiTakeOutOfMemory();  // what a preview ran into is not this build's
    // Frames made while the drawing service was short of memory may lack text.
    if (effect.build(&context) == 0 || GdiTakeOutOfMemory()) return 0;
  }
  HostProgress(run.host, 0, 0);
  return run.frames.count >= 1 ? 1 : 0;
}

// Step 3, from the quantiser on: one palette for all frames, sorted by
// brightness, with the slot past its colours for the background.
int QuantisePalette(BuildRun& run) {
  const BuildOptionWord& options = run.options;
  int needsSlot = options.supercompress != 0 || options.maskBackground != 0;
  if (needsSlot) run.colourLimit = 255;
  HostStatus(run.host, kQuantizingText);
  if (OctreeQuantise(&run.colourLimit, run.palette, &run.frames) == 0) return 0;
  PaletteSortByLuminance(run.palette, run.colourLimit);
  run.depth = PaletteDepthForEntries(run.colourLimit + needsSlot);
  run.reservedIndex = run.colourLimit;
  if (needsSlot != 0) {
    std::uint8_t* slot = run.palette + 3 * run.colourLimit;
    auto background = static_cast<std::uint32_t>(options.backgroundColour);
    slot[0] = static_cast<std::uint8_t>(background);
    slot[1] = static_cast<std::uint8_t>(background >> 8);
    slot[2] = static_cast<std::uint8_t>(background >> 16);
  }
  if (options.supercompress != 0) {
    run.deltaColour = options.backgroundColour;
    run.deltaIndex = run.colourLimit;
  }
  return 1;
}

// Step 3: true colour and the fixed palettes only take the fixed palette's
// depth. Without a delta slot the delta colour is the run's kind, 0 for a
// Build; with a fixed palette, supercompression still writes it.
int SettlePalette(BuildRun& run) {
  if (run.boxes.trueColour != 0 || run.boxes.customPalette == 0) {
    run.depth = run.fixedDepth;
  } else if (QuantisePalette(run) == 0) {
    return 0;
  }
  HostProgress(run.host, 0, 0);
  if (run.deltaIndex == -1) run.deltaColour = run.testRun;
  return 1;
}

// Replaces image by its copy with the background's pixels stamped to the
// reserved index; on failure image stays as it was.
void StampBackground(const BuildRun& run, DibOwner& image, DibHandle source) {
  DibHandle stamped = StampColourIndex(image.get(), source, run.options.backgroundColour, run.reservedIndex);
  if (stamped != nullptr) image.reset(stamped);
}

// Step 5 a to d for frame index: the frame reduced to the run's palette.
// Null on failure; the frame's own image is left to the caller.
DibHandle ReduceFrame(const BuildRun& run, FrameRecord& record, int index) {
  RemapOptions remap{static_cast<int>(FastRemap), static_cast<int>(DitherBrightness),
                     static_cast<int>(DitherContrast)};
  DibHandle source = record.image;
  DibOwner image(run.boxes.dither != 0 ? RemapDithered(source, run.palette, run.depth, run.colourLimit, remap)
                                       : RemapPlain(source, run.palette, run.depth, run.colourLimit, remap));
  if (image == nullptr) return nullptr;
  const BuildOptionWord& options = run.options;
  if (options.supercompress != 0 && index == 0) StampBackground(run, image, source);
  if (options.supercompress != 0 && record.mask != nullptr) {
    if (SupercompressApplyMask(image.get(), record.mask, run.deltaIndex, run.deltaColour) == 0) return nullptr;
    record.transparentIndex = run.deltaIndex;
  }
  if (options.maskBackground != 0 && run.reservedIndex != -1) StampBackground(run, image, source);
  return image.release();
}

int TrackSize(BuildRun& run, DibHandle image) {
  DibLock lock(image);
  if (lock.head == nullptr) return 0;
  if (lock.head->biWidth > run.maxWidth) run.maxWidth = lock.head->biWidth;
  if (lock.head->biHeight > run.maxHeight) run.maxHeight = lock.head->biHeight;
  return 1;
}

// Step 5 for one frame; the 24-bit image is freed once its reduced form
// stands in the list.
int RemapFrame(BuildRun& run, int index) {
  FrameRecord record;
  if (FrameRecordRead(&run.frames, index, &record) == 0) return 0;
  DibOwner reduced;
  if (run.boxes.trueColour == 0) {
    reduced.reset(ReduceFrame(run, record, index));
    if (reduced == nullptr) return 0;
  }
  DibHandle source = record.image;
  if (reduced != nullptr) record.image = reduced.get();
  if (TrackSize(run, record.image) == 0) return 0;
  if (run.options.transparent != 0) record.transparentIndex = run.reservedIndex;
  if (FrameRecordWrite(&run.frames, index, &record) == 0) return 0;
  if (reduced != nullptr) {
    reduced.release();
    MemFree(source);
  }
  return 1;
}

int RemapFrames(BuildRun& run) {
  HostStatus(run.host, kRemappingText);
  for (int index = 0; index < run.frames.count; ++index) {
    HostProgress(run.host, index, run.frames.count);
    if (RemapFrame(run, index) == 0) return 0;
  }
  HostProgress(run.host, 0, 0);
  return 1;
}

void FillTaskRecord(const BuildRun& run, TaskRecord& task) {
  std::memset(&task, 0, sizeof task);
  task.size = sizeof(TaskRecord);
  task.version = kInterfaceVersion;
  task.ownerWindow = run.dialog->window;
  task.bitsPerPixel = static_cast<std::uint32_t>(run.depth);
  task.width = static_cast<std::uint32_t>(run.maxWidth);
  task.height = static_cast<std::uint32_t>(run.maxHeight);
  std::memcpy(task.palette, run.palette, sizeof task.palette);
  task.imageCount = static_cast<std::uint32_t>(run.frames.count);
  task.transparentIndex = run.options.transparent != 0 ? static_cast<std::uint32_t>(run.reservedIndex) : 0;
}

// Step 7: code 2 for each frame in order. 0 when one was refused.
int AddImages(BuildRun& run, TaskRecord& task) {
  for (int index = 0; index < run.frames.count; ++index) {
    FrameRecord frame;
    if (FrameRecordRead(&run.frames, index, &frame) == 0) return 0;
    ImageRecord image;
    std::memset(&image, 0, sizeof image);
    image.size = sizeof(ImageRecord);
    image.version = kInterfaceVersion;
    image.image = frame.image;
    image.transparentFlag = run.options.transparent != 0 ? 1 : 0;
    image.delay = frame.delay;
    image.imageNumber = static_cast<std::uint32_t>(index);
    image.transparentIndex = frame.transparentIndex;
    if (HostCall(run.host, kHostAddImage, 0, reinterpret_cast<std::int64_t>(&image), &task) == 0) return 0;
  }
  return 1;
}

// Steps 6 to 8: the task is opened, filled and closed.
int HandOver(BuildRun& run) {
  TaskRecord task;
  FillTaskRecord(run, task);
  std::uint32_t open = run.testRun != 0 ? kHostOpenTestTask : kHostOpenTask;
  if (HostCall(run.host, open, 0, reinterpret_cast<std::int64_t>(&task)) == 0) return FailRun(run, kTaskOpenError);
  if (AddImages(run, task) == 0) {
    FailRun(run, kAddImageError);
    HostCall(run.host, kHostCloseTask, 0, 0, &task);
    return 0;
  }
  if (AddDescriptiveCommentBlock != 0) {
    HostCall(run.host, kHostAddComment, 0, reinterpret_cast<std::int64_t>(kCommentBlock), &task);
  }
  HostCall(run.host, kHostCloseTask, 1, 0, &task);
  EndRun(run);
  return 1;
}

}  // namespace

BuildBoxes ReadBuildBoxes(const Controls* dialog) {
  BuildBoxes boxes;
  boxes.maskBackground = ControlChecked(dialog, kMaskBackgroundBox);
  boxes.trueColour = ControlChecked(dialog, kTrueColourBox);
  boxes.customPalette = ControlChecked(dialog, kCustomPaletteBox);
  boxes.dither = ControlChecked(dialog, kDitherBox);
  boxes.supercompress = ControlChecked(dialog, kSupercompressBox);
  boxes.transparent = ControlChecked(dialog, kTransparentBox);
  return boxes;
}

BuildOptionWord BuildOptionWordFor(const BuildBoxes& boxes, const EffectEntry& effect, const Controls* dialog) {
  BuildOptionWord options{};
  options.supercompress = boxes.trueColour != 0 ? 0 : boxes.supercompress;
  options.transparent = options.supercompress != 0 ? 0 : boxes.transparent;
  options.maskBackground = options.supercompress != 0 ? 0 : boxes.maskBackground;
  if (effect.backgroundColour != nullptr) {
    options.backgroundColour = effect.backgroundColour(dialog);
    if (options.backgroundColour == -1) {
      options.maskBackground = 0;
      options.transparent = 0;
    }
  }
  if (options.transparent != 0) options.maskBackground = 1;
  return options;
}

int BuildAnimationWithEffect(const Controls* dialog, HostRecord* host, int testRun, const EffectEntry& effect) {
  BuildRun run{};
  run.dialog = dialog;
  run.host = host;
  run.testRun = testRun;
  PrepareRun(run, effect);
  if (RunEffect(run, effect) == 0 || SettlePalette(run) == 0) return FailWithMemoryError(run);
  if (run.options.supercompress != 0 &&
      Supercompress(&run.frames, &run.previousImage, run.deltaColour, run.host) == 0) {
    return FailWithMemoryError(run);
  }
  if (RemapFrames(run) == 0) return FailWithMemoryError(run);
  return HandOver(run);
}

int BuildAnimation(const Controls* dialog, HostRecord* host, int testRun) {
  int index = ControlSelection(dialog, kEffectListControl);
  if (index < 0) index = 0;
  if (index > kEffectCount - 1) index = kEffectCount - 1;
  return BuildAnimationWithEffect(dialog, host, testRun, EffectTable[index]);
}
