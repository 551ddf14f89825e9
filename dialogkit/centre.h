// Where a window goes to stand in the middle of the screen.
#pragma once

// The new left (or top) edge of a window spanning low to high on an axis of
// screenExtent: (screenExtent + low - high) / 2, truncated toward zero.
inline int CentreCoordinate(int screenExtent, int low, int high) { return (screenExtent + low - high) / 2; }
