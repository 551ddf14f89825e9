#include "effects/odometer.h"

#include <cmath>

#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

constexpr PanelLookIds kOdometerLook = {0, 158, 0, 0, 0, 0, 0, 156};
constexpr int kFillId = 144;
constexpr int kBackgroundId = 146;
constexpr int kAppearId = 150;
constexpr int kDisappearId = 151;
constexpr int kStepsId = 148;
constexpr int kPersistenceId = 152;
constexpr int kFullLevel = 255;

// The letters of the text, all at rest.
void ReadOdometerExtra(const Controls* dialog, OdometerExtra* extra) {
  *extra = OdometerExtra{};
  ReadSharedControls(dialog, &extra->shared);
  const SharedControls& shared = extra->shared;
  extra->length = shared.textLength;
  for (int i = 0; i <= shared.textLength; ++i) {
    OdometerLetter& letter = extra->letters[i];
    letter.fontSize = shared.fontSize;
    letter.level = kFullLevel;
    letter.character = static_cast<unsigned char>(i < shared.textLength ? shared.text[i] : ' ');
  }
}

// How far below (or, leaving, above) its rest a letter stands, in pixels.
int LetterDrop(const OdometerLetter& letter, int frameHeight) {
  if (letter.position <= 0) return 0;
  if (letter.rising != 0) return static_cast<int>(frameHeight * letter.position / 100);
  if (letter.leaving != 0) return static_cast<int>(frameHeight * (letter.position / -100) * 1.5);
  return 0;
}

// One letter's fill and outline with its cell's left top at (left, top).
int DrawLetter(const TextFrame& frame, const OdometerLetter& letter, int advance, int left, int top, DibHead* picture,
               const DibHead* fill) {
  DibOwner mask(TextCharMask(frame.style, letter.character, frame.textHeight, letter.level));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  const int x = left + (advance - maskLock.head->biWidth) / 2;
  const int y = top + (frame.textHeight - maskLock.head->biHeight) / 2 + LetterDrop(letter, picture->biHeight);
  CompositeFillAt(picture, fill, maskLock.head, x, y);
  if (frame.look.outlineOn == 0) return 1;
  DibOwner ring(CharOutlineMask(frame.style, letter.character, kFullLevel));
  DibLock ringLock(ring.get());
  if (ringLock.head == nullptr) return 0;
  CompositeLetterOutline(picture, frame.look.outlineColour, ringLock.head, x, y, letter.level);
  return 1;
}

// The build's frames: each new picture is compared with the last one that
// went out, and only a different one is appended.
struct FrameFilter {
  EffectContext* context;
  std::uint32_t delay;
  DibOwner last;
};

int AppendIfChanged(FrameFilter* filter, int index, int total) {
  DibOwner image(OdometerGenerate(filter->context));
  if (image == nullptr) return 0;
  if (filter->last != nullptr && DibSamePicture(image.get(), filter->last.get()) == 1) return 1;
  filter->last.reset(DibClone(image.get()));
  if (filter->last == nullptr) return 0;
  if (AppendEffectFrame(filter->context, image.release(), filter->delay) == 0) return 0;
  HostProgress(filter->context->host, index, total);
  return 1;
}

// The letter moves by its step, and it and the letters after it (within the
// typed text) by a drag that weakens with the distance.
void MoveLetter(OdometerExtra* extra, int index, const OdometerMotion& motion, double sign) {
  extra->letters[index].position += sign * motion.step;
  for (int j = 0; j < motion.persistence; ++j) {
    if (index + j < extra->length) extra->letters[index + j].position += sign * (motion.persistence - j) * motion.drag;
  }
}

// Every letter in turn rolls from out of sight below to its rest (rising)
// or from its rest to out of sight above; blanks take no turn.
int RollLetters(FrameFilter* filter, OdometerExtra* extra, const OdometerMotion& motion, bool rising) {
  for (int i = 0; i <= extra->length; ++i) {
    OdometerLetter& letter = extra->letters[i];
    letter.position = rising ? 100 : 0;
    letter.rising = rising ? 1 : 0;
    letter.leaving = rising ? 0 : 1;
  }
  for (int i = 0; i <= extra->length; ++i) {
    if (extra->letters[i].character == ' ') continue;
    while (rising ? extra->letters[i].position > 0 : extra->letters[i].position <= 100) {
      MoveLetter(extra, i, motion, rising ? -1.0 : 1.0);
      if (AppendIfChanged(filter, i, extra->length) == 0) return 0;
    }
  }
  return 1;
}

}  // namespace

OdometerMotion OdometerMotionFor(int steps, int persistence) {
  const double step = std::fmax(100.0 / steps, 1.0);
  const double drag = persistence > 0 ? std::fmax(1.0, std::ceil(step / persistence)) : 1.0;
  return {step, drag, persistence};
}

DibHandle OdometerGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* extra = static_cast<const OdometerExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kOdometerLook, &frame) == 0) return nullptr;
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibOwner fill(RenderFillOf(dialog, kFillId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  DibLock fillLock(fill.get());
  if (pictureLock.head == nullptr || fillLock.head == nullptr) return nullptr;
  int pen = frame.pad + frame.advances[0] / 4;
  for (int i = 0; frame.text[i] != '\0'; ++i) {
    const OdometerLetter& letter = extra->letters[i];
    if (letter.position < 100 &&
        DrawLetter(frame, letter, frame.advances[i], pen, frame.pad, pictureLock.head, fillLock.head) == 0)
      return nullptr;
    pen += frame.advances[i];
  }
  return picture.release();
}

int OdometerPreview(EffectContext* context) {
  OdometerExtra extra;
  ReadOdometerExtra(context->dialog, &extra);
  return RunEffectPreview(context, &extra, OdometerGenerate);
}

// The Appear and Disappear boxes alone decide the motion; the Animated box
// is not read. Each motion's last frame pauses.
int OdometerBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  OdometerExtra extra;
  ReadOdometerExtra(dialog, &extra);
  const auto delay = static_cast<std::uint32_t>(extra.shared.delay);
  const auto pause = static_cast<std::uint32_t>(extra.shared.pause);
  const int appear = ControlChecked(dialog, kAppearId);
  const int disappear = ControlChecked(dialog, kDisappearId);
  const OdometerMotion motion =
      OdometerMotionFor(ReadControlInt(dialog, kStepsId), ReadControlInt(dialog, kPersistenceId));
  context->extra = &extra;

  if (appear == 0 && disappear == 0) {
    context->flags |= kEffectFlagStill;
    return AppendGeneratedFrame(context, OdometerGenerate, delay);
  }
  if (extra.shared.textLength < 1) return 0;
  FrameFilter filter{context, delay, DibOwner()};
  for (bool rising : {true, false}) {
    if ((rising ? appear : disappear) == 0) continue;
    if (RollLetters(&filter, &extra, motion, rising) == 0) return 0;
    FramePatchDelay(context->frames, pause + delay);
  }
  return 1;
}
