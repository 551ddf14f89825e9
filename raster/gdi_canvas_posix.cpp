// The headless canvas: the block itself, locked while it is drawn on, with
// shapes filled by our own rasteriser under the same rules GDI keeps.
#include <new>

#include "raster/gdi_backend.h"
#include "raster/shape_fill.h"

struct GdiCanvas {
  DibHandle dib;
  DibHead* head;
};

GdiCanvas* GdiBackendCanvasOpen(int width, int height) {
  DibOwner dib(DibNew(width, height, nullptr, 24));
  auto* head = static_cast<DibHead*>(MemLock(dib.get()));
  if (head == nullptr) return nullptr;
  auto* canvas = new (std::nothrow) GdiCanvas{dib.get(), head};
  if (canvas == nullptr) {
    MemUnlock(dib.get());
    return nullptr;
  }
  dib.release();
  return canvas;
}

DibHandle GdiBackendCanvasClose(GdiCanvas* canvas) {
  DibHandle dib = canvas->dib;
  MemUnlock(dib);
  delete canvas;
  return dib;
}

int GdiBackendCanvasFill(GdiCanvas* canvas, const GdiOp* op) {
  switch (op->op) {
    case kGdiEllipse:
      ShapeFillEllipse(canvas->head, op->bounds, op->shapeFill);
      return 1;
    case kGdiRectangle:
      ShapeFillRectangle(canvas->head, op->bounds, op->shapeFill);
      return 1;
    case kGdiPolygon:
      ShapeFillPolygon(canvas->head, op->polygonPoints, static_cast<int>(op->polygonCount), op->polygonFill);
      return 1;
    default:
      return 0;
  }
}
