// The plug-in's canvas: a DIB section in a memory device context, shapes
// filled by GDI itself with the null pen and a solid brush.
#include <new>

#include "raster/dib_win32.h"
#include "raster/gdi_backend.h"

struct GdiCanvas {
  DibSectionPair pair;
};

namespace {

// Draws one shape with a solid brush of colour and no pen.
template <typename Draw>
int FillWithBrush(HDC dc, std::uint32_t colour, Draw draw) {
  HBRUSH brush = CreateSolidBrush(colour & 0xFFFFFF);
  if (brush == nullptr) return 0;
  HGDIOBJ oldBrush = SelectObject(dc, brush);
  HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
  BOOL drawn = draw(dc);
  SelectObject(dc, oldPen);
  SelectObject(dc, oldBrush);
  DeleteObject(brush);
  return drawn ? 1 : 0;
}

}  // namespace

GdiCanvas* GdiBackendCanvasOpen(int width, int height) {
  auto* canvas = new (std::nothrow) GdiCanvas{};
  if (canvas == nullptr) return nullptr;
  if (DibSectionOpen(nullptr, width, height, &canvas->pair) == 0) {
    delete canvas;
    return nullptr;
  }
  SetPolyFillMode(canvas->pair.memoryDc, ALTERNATE);
  return canvas;
}

DibHandle GdiBackendCanvasClose(GdiCanvas* canvas) {
  DibSectionClose(&canvas->pair, kDibSectionKeep);
  DibHandle dib = canvas->pair.dib;
  delete canvas;
  return dib;
}

int GdiBackendCanvasFill(GdiCanvas* canvas, const GdiOp* op) {
  const RECT box{op->bounds.left, op->bounds.top, op->bounds.right, op->bounds.bottom};
  switch (op->op) {
    case kGdiEllipse:
      return FillWithBrush(canvas->pair.memoryDc, op->shapeFill,
                           [&](HDC dc) { return Ellipse(dc, box.left, box.top, box.right, box.bottom); });
    case kGdiRectangle:
      return FillWithBrush(canvas->pair.memoryDc, op->shapeFill,
                           [&](HDC dc) { return Rectangle(dc, box.left, box.top, box.right, box.bottom); });
    case kGdiPolygon:
      static_assert(sizeof(POINT) == 2 * sizeof(std::int32_t));
      return FillWithBrush(canvas->pair.memoryDc, op->polygonFill, [&](HDC dc) {
        return Polygon(dc, reinterpret_cast<const POINT*>(op->polygonPoints), static_cast<int>(op->polygonCount));
      });
    default:
      return 0;
  }
}

int GdiBackendCanvasLine(GdiCanvas* canvas, const GdiOp* op, int roundEnds) {
  LOGBRUSH brush{BS_SOLID, op->lineColour & 0xFFFFFF, 0};
  DWORD style = PS_GEOMETRIC | PS_SOLID | PS_JOIN_ROUND | (roundEnds != 0 ? PS_ENDCAP_ROUND : PS_ENDCAP_FLAT);
  HPEN pen = ExtCreatePen(style, static_cast<DWORD>(op->lineWidth > 1 ? op->lineWidth : 1), &brush, 0, nullptr);
  if (pen == nullptr) return 0;
  HDC dc = canvas->pair.memoryDc;
  HGDIOBJ oldPen = SelectObject(dc, pen);
  MoveToEx(dc, op->lineX1, op->lineY1, nullptr);
  BOOL drawn = LineTo(dc, op->lineX2, op->lineY2);
  SelectObject(dc, oldPen);
  DeleteObject(pen);
  return drawn ? 1 : 0;
}
