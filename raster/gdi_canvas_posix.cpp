// The headless canvas: the block itself, locked while it is drawn on, with
// shapes filled by our own rasteriser under the same rules GDI keeps.
#include <new>

#include "raster/gdi_backend.h"
#include "raster/shape_fill.h"
#include "raster/shape_stroke.h"

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
      return ShapeFillEllipse(canvas->head, op->bounds, op->shapeFill);
    case kGdiRectangle:
      return ShapeFillRectangle(canvas->head, op->bounds, op->shapeFill);
    case kGdiPolygon:
      return ShapeFillPolygon(canvas->head, op->polygonPoints, static_cast<int>(op->polygonCount), op->polygonFill);
    default:
      return 0;
  }
}

int GdiBackendCanvasLine(GdiCanvas* canvas, const GdiOp* op, int roundEnds) {
  ShapeStrokeLine(canvas->head, op->lineX1, op->lineY1, op->lineX2, op->lineY2, op->lineWidth, roundEnds,
                  op->lineColour);
  return 1;
}
