// Copying one frame record out of a frame list and back, locking the list's
// block only for the copy.
#pragma once

#include "plugin/host_interface.h"

// 1, or 0 when the list cannot be locked or the index is outside it.
int FrameRecordRead(const FrameList* frames, int index, FrameRecord* record);
int FrameRecordWrite(FrameList* frames, int index, const FrameRecord* record);
