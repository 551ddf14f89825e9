// The reference host's callback: tasks become GIF files, status and progress
// go to the standard error stream.
#include "host/reference_host.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <unordered_map>

#include "host/gif_optimise.h"

namespace {

ReferenceHost gHost{};

bool gProgressShown = false;  // a progress line stands on the terminal

void ClearProgressLine() {
  if (!gProgressShown) return;
  std::fprintf(stderr, "\r%40s\r", "");
  gProgressShown = false;
}

void ReportStatus(const std::string& text) {
  gHost.lastStatus = text;
  if (!gHost.reportToStderr) return;
  ClearProgressLine();
  std::fprintf(stderr, "%s\n", text.c_str());
}

// Progress redraws one line in place, which only makes sense on a terminal.
void ReportProgress(std::int64_t step, std::int64_t total) {
  if (!gHost.reportToStderr || isatty(fileno(stderr)) == 0) return;
  ClearProgressLine();
  if (step != 0 || total != 0) {
    std::fprintf(stderr, "  %lld of %lld", static_cast<long long>(step), static_cast<long long>(total));
    gProgressShown = true;
  }
  std::fflush(stderr);
}

bool DibIsComplete(DibHandle dib, const DibHead* head) {
  int depth = head->biBitCount;
  if (depth != 1 && depth != 4 && depth != 8 && depth != 24 && depth != 32) return false;
  if (head->biWidth <= 0 || head->biHeight <= 0) return false;
  std::size_t bytes = kDibHeadSize + DibColourTableBytes(depth) +
                      static_cast<std::size_t>(DibStride(depth, head->biWidth)) * head->biHeight;
  return MemSize(dib) >= bytes;
}

// Nearest entry of the task's table by squared distance; the first of equals wins.
std::uint8_t NearestIndex(const GifAnimation& animation, std::int32_t colour) {
  int red = colour & 0xFF;
  int green = colour >> 8 & 0xFF;
  int blue = colour >> 16 & 0xFF;
  int entries = 1 << GifPaletteBits(animation.depth);
  int best = 0;
  int bestDistance = 1 << 30;
  for (int index = 0; index < entries; ++index) {
    const std::uint8_t* entry = animation.palette + 3 * index;
    int distance = (entry[0] - red) * (entry[0] - red) + (entry[1] - green) * (entry[1] - green) +
                   (entry[2] - blue) * (entry[2] - blue);
    if (distance < bestDistance) {
      best = index;
      bestDistance = distance;
    }
  }
  return static_cast<std::uint8_t>(best);
}

void ReadIndices(const DibHead* head, const GifAnimation& animation, GifFrame* frame) {
  bool trueColour = head->biBitCount > 8;
  std::unordered_map<std::int32_t, std::uint8_t> nearest;
  frame->indices.resize(static_cast<std::size_t>(frame->width) * frame->height);
  std::uint8_t* out = frame->indices.data();
  if (head->biBitCount == 8) {  // the usual case: whole rows of indices
    for (int y = 0; y < frame->height; ++y, out += frame->width) std::memcpy(out, DibRow(head, y), frame->width);
    return;
  }
  for (int y = 0; y < frame->height; ++y) {
    for (int x = 0; x < frame->width; ++x) {
      std::int32_t value = DibGetPixel(head, x, y);
      if (!trueColour) {
        *out++ = static_cast<std::uint8_t>(value);
        continue;
      }
      value &= 0xFFFFFF;
      auto found = nearest.find(value);
      if (found == nearest.end()) found = nearest.emplace(value, NearestIndex(animation, value)).first;
      *out++ = found->second;
    }
  }
}

std::int64_t OpenTask(const TaskRecord* task, bool testRun) {
  // Once memory has run out the run is failing, whatever call it hit.
  if (gHost.taskOpen || task == nullptr || gHost.outOfMemory) return 0;
  if (gHost.outputPath.empty()) {
    ReportStatus("No output file was given; the task is refused.");
    return 0;
  }
  if (task->width > kGifMaxSide || task->height > kGifMaxSide) {
    ReportStatus("The animation is larger than a GIF file can hold; the task is refused.");
    return 0;
  }
  gHost.animation = GifAnimation{};
  gHost.animation.width = static_cast<int>(task->width);
  gHost.animation.height = static_cast<int>(task->height);
  gHost.animation.depth = static_cast<int>(task->bitsPerPixel);
  std::memcpy(gHost.animation.palette, task->palette, sizeof gHost.animation.palette);
  gHost.testRun = testRun;
  gHost.taskOpen = true;
  return 1;
}

std::int64_t AddImage(const ImageRecord* record) {
  if (!gHost.taskOpen || record == nullptr) return 0;
  DibLock lock(record->image);
  if (lock.head == nullptr || !DibIsComplete(record->image, lock.head)) return 0;
  if (lock.head->biWidth > kGifMaxSide || lock.head->biHeight > kGifMaxSide) return 0;
  GifFrame frame{};
  frame.width = lock.head->biWidth;
  frame.height = lock.head->biHeight;
  frame.delay = record->delay;
  frame.transparentIndex = record->transparentIndex;
  // Without the Transparent option a transparent index marks unchanged
  // pixels of a supercompressed frame, so the frame before must stay in
  // place; with it, transparent pixels must show what lies behind instead.
  bool seeThrough = record->transparentFlag != 0 && record->transparentIndex >= 0;
  frame.disposal = seeThrough ? kGifDisposalBackground : kGifDisposalKeep;
  ReadIndices(lock.head, gHost.animation, &frame);
  gHost.animation.frames.push_back(std::move(frame));
  return 1;
}

std::int64_t AddComment(const char* text) {
  if (!gHost.taskOpen || text == nullptr) return 0;
  gHost.animation.comments.emplace_back(text);
  return 1;
}

std::vector<std::uint8_t> EncodeSmallest(const GifAnimation& animation, bool plainOnly) {
  std::vector<std::uint8_t> plain = GifEncode(animation);
  GifAnimation optimised;
  if (plainOnly || GifOptimise(animation, &optimised) == 0) return plain;
  std::vector<std::uint8_t> smaller = GifEncode(optimised);
  return smaller.size() < plain.size() ? smaller : plain;
}

std::int64_t CloseTask(bool complete) {
  if (!gHost.taskOpen) return 0;
  gHost.taskOpen = false;
  std::int64_t result = 1;
  if (complete) {
    ReportStatus("Writing " + gHost.outputPath);  // optimising a long animation takes a while
    errno = 0;
    result = GifWriteBytes(EncodeSmallest(gHost.animation, gHost.plainOutput), gHost.outputPath);
    if (result != 0) gHost.filesWritten += 1;
    else gHost.writeError = errno != 0 ? errno : EIO;
    ReportStatus((result != 0 ? "Wrote " : "Could not write ") + gHost.outputPath);
  }
  gHost.animation = GifAnimation{};
  return result;
}

}  // namespace

ReferenceHost& ReferenceHostCurrent() { return gHost; }

void ReferenceHostReset(const std::string& outputPath, bool reportToStderr) {
  gHost = ReferenceHost{};
  gHost.outputPath = outputPath;
  gHost.reportToStderr = reportToStderr;
}

namespace {

std::int64_t Serve(std::uint32_t code, std::int64_t argument, std::int64_t pointerArgument) {
  switch (code) {
    case kHostOpenTask:
    case kHostOpenTestTask:
      return OpenTask(reinterpret_cast<const TaskRecord*>(pointerArgument), code == kHostOpenTestTask);
    case kHostAddImage:
      return AddImage(reinterpret_cast<const ImageRecord*>(pointerArgument));
    case kHostAddComment:
      return AddComment(reinterpret_cast<const char*>(pointerArgument));
    case kHostCloseTask:
      return CloseTask(argument != 0);
    case kHostStatusText:
      if (pointerArgument != 0) ReportStatus(reinterpret_cast<const char*>(pointerArgument));
      return 1;
    case kHostProgress:
      ReportProgress(argument, pointerArgument);
      return 1;
    case kHostBuildStarted:
      return 1;
    default:
      return 0;  // no picker, loader or help viewer here
  }
}

}  // namespace

// The host keeps its frames and file in standard containers; when memory
// runs out it refuses the call and notes why, and the open task is dropped,
// so no file is written.
std::int64_t ReferenceHostCallback(TaskRecord*, std::uint32_t code, std::int64_t argument,
                                   std::int64_t pointerArgument) {
  try {
    gHost.codes.push_back(code);
    return Serve(code, argument, pointerArgument);
  } catch (const std::bad_alloc&) {
    gHost.taskOpen = false;
    gHost.animation = GifAnimation{};
    gHost.outOfMemory = true;
    return 0;
  }
}

HostRecord ReferenceHostRecord() {
  HostRecord record{};
  record.versionWord = kInterfaceVersion;
  record.callback = ReferenceHostCallback;
  record.hostFlags = kHostFlagPaletteFormat;
  return record;
}
