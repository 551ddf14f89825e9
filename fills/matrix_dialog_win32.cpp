#include "fills/matrix_dialog_win32.h"

#include <shellapi.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <new>

#include "dialogkit/dialog_host.h"
#include "dialogkit/message_box_win32.h"
#include "dialogkit/name_dialog_win32.h"
#include "dialogkit/string_texts.h"
#include "fills/matrix_group.h"
#include "fills/matrix_tile.h"
#include "plugin/host_call.h"
#include "plugin/plugin_state_win32.h"
#include "plugin/settings.h"
#include "raster/dib_win32.h"
#include "raster/resample.h"

namespace {

constexpr int kPreviewId = 101;
constexpr int kListId = 102;
constexpr int kAddId = 103;
constexpr int kRemoveId = 104;
constexpr int kSizeTextId = 105;
constexpr int kGroupsId = 108;
constexpr int kHelpId = 9;
constexpr int kCellSize = 48;
constexpr int kListRowsHeight = 240;  // five rows of cells
constexpr int kPreviewInset = 2;
constexpr int kCellInset = 4;
constexpr int kStringReadError = 3;
constexpr int kStringWriteError = 11;
constexpr char kGroupExtension[] = "MTX";
constexpr char kLoadError[] = "There has been an error loading the matrix element file.";
constexpr char kAddError[] = "There has been an error adding your matrix tile.";
constexpr char kPrimaryNotDeleted[] = "The primary matrix group cannot be deleted.";
constexpr char kDeleteQuestion[] =
    "Do you want to delete the %s matrix group?\n\nClick on Yes to delete this file, or No to abort.";
constexpr char kHelpDocument[] = "LWMOTIO3.HTML#TILE";

// Whether the current group may be changed. It lasts from one opening of
// the dialog to the next: a group that is not there yet leaves it as it was.
int g_groupWriteable = 1;

struct TileDialog {
  MatrixRecord* record;  // the working copy
  int dirty;             // the list differs from its file
};

TileDialog* StateOf(HWND dialog) { return reinterpret_cast<TileDialog*>(GetWindowLongPtrA(dialog, DWLP_USER)); }
HWND ListOf(HWND dialog) { return GetDlgItem(dialog, kListId); }
bool ShiftHeld() { return (GetKeyState(VK_SHIFT) & 0x8000) != 0; }

DibHandle TileAt(HWND list, int index) {
  LRESULT data = SendMessageA(list, LB_GETITEMDATA, static_cast<WPARAM>(index), 0);
  return data == LB_ERR ? nullptr : reinterpret_cast<DibHandle>(data);
}

void ListFree(HWND list) {
  int count = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) MemFree(TileAt(list, i));
  SendMessageA(list, LB_RESETCONTENT, 0, 0);
}

// A cell with a blank as its text and the tile as its data; the list owns
// the tile from then on. 0 if the list refuses.
int ListAdd(HWND list, DibHandle tile) {
  LRESULT index = SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(" "));
  if (index == LB_ERR || index == LB_ERRSPACE) return 0;
  SendMessageA(list, LB_SETITEMDATA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(tile));
  return 1;
}

// The group's name as the combo box lists it: its file name up to the first dot.
void GroupNameOf(const char* fileName, char* name, int size) {
  std::snprintf(name, static_cast<size_t>(size), "%s", fileName);
  if (char* dot = std::strchr(name, '.')) *dot = '\0';
}

void SetCurrentGroup(const char* name) {
  char fileName[kSettingStringSize];
  std::snprintf(fileName, sizeof fileName, "%s.%s", name, kGroupExtension);
  SettingStore(SettingFind("MatrixLibrary"), fileName);
}

void UpdateRemoveButton(HWND dialog) {
  EnableWindow(GetDlgItem(dialog, kRemoveId), SendMessageA(ListOf(dialog), LB_GETCURSEL, 0, 0) != LB_ERR);
}

void ShowTileSize(HWND dialog, DibHandle tile) {
  int width = 0;
  int height = 0;
  DibSizeOf(tile, &width, &height);
  char text[32];
  std::snprintf(text, sizeof text, "%d x %d", width, height);
  SetDlgItemTextA(dialog, kSizeTextId, text);
}

int AskYesNo(HWND owner, const char* text) {
  return DialogBoxParamA(g_module, kMessageBoxYesNoTemplate, owner, MessageBoxProc, reinterpret_cast<LPARAM>(text)) ==
         IDYES;
}

}  // namespace

int MatrixFileRead(HWND dialog) {
  MatrixTileList tiles;
  tiles.writeable = g_groupWriteable;
  if (MatrixGroupRead(DataFolderPath(MatrixLibrary), &tiles) == 0) {
    MatrixTileListFree(&tiles);
    return 0;
  }
  g_groupWriteable = tiles.writeable;
  HWND list = ListOf(dialog);
  for (DibHandle& tile : tiles.tiles)
    if (ListAdd(list, tile) != 0) tile = nullptr;
  MatrixTileListFree(&tiles);
  return 1;
}

int MatrixFileWrite(HWND dialog) {
  HWND list = ListOf(dialog);
  MatrixTileList tiles;  // borrows the list's blocks
  int count = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0));
  for (int i = 0; i < count; ++i)
    if (DibHandle tile = TileAt(list, i)) tiles.tiles.push_back(tile);
  int written = MatrixGroupWrite(DataFolderPath(MatrixLibrary), tiles, 1, std::time(nullptr));
  tiles.tiles.clear();
  return written;
}

namespace {

void FillGroupList(HWND dialog) {
  HWND groups = GetDlgItem(dialog, kGroupsId);
  char pattern[kSettingStringSize];
  std::snprintf(pattern, sizeof pattern, "*.%s", kGroupExtension);
  WIN32_FIND_DATAA found;
  HANDLE search = FindFirstFileA(DataFolderPath(pattern), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      char name[MAX_PATH];
      GroupNameOf(found.cFileName, name, sizeof name);
      SendMessageA(groups, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    } while (FindNextFileA(search, &found));
    FindClose(search);
  }
  char current[kSettingStringSize];
  GroupNameOf(MatrixLibrary, current, sizeof current);
  SendMessageA(groups, CB_SETCURSEL, SendMessageA(groups, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                  reinterpret_cast<LPARAM>(current)), 0);
}

BOOL Open(HWND dialog, MatrixRecord* record) {
  auto* state = new (std::nothrow) TileDialog{record, 0};
  if (state == nullptr) {
    EndDialog(dialog, 0);
    return TRUE;
  }
  SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(state));
  HWND list = ListOf(dialog);
  RECT box;
  GetWindowRect(list, &box);
  int height = kListRowsHeight + 2 * GetSystemMetrics(SM_CYDLGFRAME) + GetSystemMetrics(SM_CYHSCROLL);
  SetWindowPos(list, nullptr, 0, 0, box.right - box.left, height, SWP_NOMOVE | SWP_NOZORDER);
  SendMessageA(list, LB_SETCOLUMNWIDTH, kCellSize, 0);

  HCURSOR previous = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
  int read = MatrixFileRead(dialog);
  SetCursor(previous);
  if (read == 0) MessageBoxShow(dialog, kLoadError);
  SendMessageA(list, LB_SETCURSEL, 0, 0);
  FillGroupList(dialog);
  ShowTileSize(dialog, record->tile);
  UpdateRemoveButton(dialog);
  CentreWindow(dialog);
  return TRUE;
}

// The tile of a clicked cell becomes the record's.
void ChooseTile(HWND dialog) {
  TileDialog* state = StateOf(dialog);
  HWND list = ListOf(dialog);
  int index = static_cast<int>(SendMessageA(list, LB_GETCURSEL, 0, 0));
  DibHandle tile = index != LB_ERR ? TileAt(list, index) : nullptr;
  DibHandle copy = tile != nullptr ? DibClone(tile) : nullptr;
  if (copy != nullptr) {
    MemFree(state->record->tile);
    state->record->tile = copy;
    state->record->index = index;
    std::snprintf(state->record->path, sizeof state->record->path, "%s", DataFolderPath(MatrixLibrary));
    ShowTileSize(dialog, copy);
    InvalidateRect(GetDlgItem(dialog, kPreviewId), nullptr, FALSE);
  }
  UpdateRemoveButton(dialog);
}

void SwitchGroup(HWND dialog) {
  HWND groups = GetDlgItem(dialog, kGroupsId);
  LRESULT selected = SendMessageA(groups, CB_GETCURSEL, 0, 0);
  if (selected == CB_ERR) return;
  char name[kSettingStringSize] = {};
  if (SendMessageA(groups, CB_GETLBTEXTLEN, static_cast<WPARAM>(selected), 0) >= static_cast<LRESULT>(sizeof name))
    return;
  SendMessageA(groups, CB_GETLBTEXT, static_cast<WPARAM>(selected), reinterpret_cast<LPARAM>(name));
  SetCurrentGroup(name);
  ListFree(ListOf(dialog));
  MatrixFileRead(dialog);
  UpdateRemoveButton(dialog);
}

// A picture through the host's file dialog and image reader, within the
// size rule, as a new tile at the end of the list.
void AddPicture(HWND dialog) {
  if (g_groupWriteable == 0) return MessageBoxShow(dialog, kMatrixGroupReadOnly);
  char path[MAX_PATH + 1] = {};
  if (HostCall(DialogHost(), kHostPickImageFile, reinterpret_cast<std::int64_t>(dialog),
               reinterpret_cast<std::int64_t>(path)) == 0)
    return;
  DibOwner picture(reinterpret_cast<DibHandle>(
      HostCall(DialogHost(), kHostLoadImageFile, 0, reinterpret_cast<std::int64_t>(path))));
  if (picture == nullptr) return MessageBoxShow(dialog, StringLookup(kStringReadError));
  int width = 0;
  int height = 0;
  DibSizeOf(picture.get(), &width, &height);
  if (MatrixTileSizeAccepted(width, height) == 0) return MessageBoxShow(dialog, kMatrixTileTooLarge);
  DibHandle tile = MatrixTileFromPicture(picture.get());
  if (tile == nullptr) return MessageBoxShow(dialog, StringLookup(kStringMemoryError));
  if (ListAdd(ListOf(dialog), tile) == 0) {
    MemFree(tile);
    return MessageBoxShow(dialog, kAddError);
  }
  StateOf(dialog)->dirty = 1;
}

// The list written as a new group of a name the user gives.
void SaveAsGroup(HWND dialog) {
  char name[kNameLimit + 1] = {};
  if (NameDialogRun(dialog, name) == 0) return;
  SetCurrentGroup(name);
  if (MatrixFileWrite(dialog) == 0) return MessageBoxShow(dialog, StringLookup(kStringWriteError));
  HWND groups = GetDlgItem(dialog, kGroupsId);
  LRESULT added = SendMessageA(groups, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
  SendMessageA(groups, CB_SETCURSEL, static_cast<WPARAM>(added), 0);
  g_groupWriteable = 1;
}

void RemoveTile(HWND dialog) {
  if (g_groupWriteable == 0) return MessageBoxShow(dialog, kMatrixGroupReadOnly);
  HWND list = ListOf(dialog);
  LRESULT selected = SendMessageA(list, LB_GETCURSEL, 0, 0);
  if (selected == LB_ERR) return;
  MemFree(TileAt(list, static_cast<int>(selected)));
  SendMessageA(list, LB_DELETESTRING, static_cast<WPARAM>(selected), 0);
  SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(selected), 0);
  StateOf(dialog)->dirty = 1;
  UpdateRemoveButton(dialog);
}

// The current group to the recycle bin; the primary group becomes current.
// The list stays as it is.
void DeleteGroup(HWND dialog) {
  if (g_groupWriteable == 0) return MessageBoxShow(dialog, kPrimaryNotDeleted);
  char name[kSettingStringSize];
  GroupNameOf(MatrixLibrary, name, sizeof name);
  char question[sizeof kDeleteQuestion + kSettingStringSize];
  std::snprintf(question, sizeof question, kDeleteQuestion, name);
  if (!AskYesNo(dialog, question)) return;
  char from[MAX_PATH + 2] = {};  // two zeros end the list of one
  std::snprintf(from, MAX_PATH, "%s", DataFolderPath(MatrixLibrary));
  SHFILEOPSTRUCTA operation{};
  operation.hwnd = dialog;
  operation.wFunc = FO_DELETE;
  operation.pFrom = from;
  operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_SILENT;
  SHFileOperationA(&operation);
  HWND groups = GetDlgItem(dialog, kGroupsId);
  LRESULT gone = SendMessageA(groups, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(name));
  if (gone != CB_ERR) SendMessageA(groups, CB_DELETESTRING, static_cast<WPARAM>(gone), 0);
  SettingStore(SettingFind("MatrixLibrary"), kPrimaryMatrixGroup);
  GroupNameOf(kPrimaryMatrixGroup, name, sizeof name);
  SendMessageA(groups, CB_SETCURSEL, SendMessageA(groups, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                  reinterpret_cast<LPARAM>(name)), 0);
}

// The right button over a cell selects it and offers to delete it.
void CellMenu(HWND dialog, LPARAM screenPoint) {
  HWND list = ListOf(dialog);
  POINT place{static_cast<short>(LOWORD(screenPoint)), static_cast<short>(HIWORD(screenPoint))};
  POINT inList = place;
  ScreenToClient(list, &inList);
  LRESULT hit = SendMessageA(list, LB_ITEMFROMPOINT, 0, MAKELPARAM(inList.x, inList.y));
  if (HIWORD(hit) != 0) return;  // outside every cell
  SendMessageA(list, LB_SETCURSEL, LOWORD(hit), 0);
  ChooseTile(dialog);
  HMENU menu = CreatePopupMenu();
  AppendMenuA(menu, MF_STRING, kRemoveId, "&Delete");
  TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON, place.x, place.y, 0, dialog, nullptr);
  DestroyMenu(menu);
}

void Confirm(HWND dialog) {
  if (StateOf(dialog)->dirty != 0) {
    HCURSOR previous = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    MatrixFileWrite(dialog);  // a failed write passes unremarked
    SetCursor(previous);
  }
  EndDialog(dialog, 1);
}

// The picture shrunk or grown to fit the rectangle with its proportions
// kept, centred in it.
void DrawFitted(HDC dc, const RECT& room, DibHandle tile) {
  int tileWidth = 0;
  int tileHeight = 0;
  if (DibSizeOf(tile, &tileWidth, &tileHeight) == 0 || tileWidth <= 0 || tileHeight <= 0) return;
  int width = room.right - room.left;
  int height = room.bottom - room.top;
  int scaleX = width * 100 / tileWidth;
  int scaleY = height * 100 / tileHeight;
  int scale = scaleX < scaleY ? scaleX : scaleY;
  if (scale <= 0) return;
  DibOwner fitted(DibResize(tile, scale, scale));
  int fittedWidth = 0;
  int fittedHeight = 0;
  if (DibSizeOf(fitted.get(), &fittedWidth, &fittedHeight) == 0) return;
  DibDraw(dc, room.left + (width - fittedWidth) / 2, room.top + (height - fittedHeight) / 2, fitted.get());
}

void DrawCell(const DRAWITEMSTRUCT* item) {
  if (item->itemID == static_cast<UINT>(-1)) return;
  RECT cell = item->rcItem;
  FillRect(item->hDC, &cell, GetSysColorBrush(COLOR_BTNFACE));
  DrawEdge(item->hDC, &cell, (item->itemState & ODS_SELECTED) != 0 ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
  InflateRect(&cell, -kCellInset, -kCellInset);
  DrawFitted(item->hDC, cell, reinterpret_cast<DibHandle>(item->itemData));
}

// The working record's tile repeated inside a sunken edge.
void DrawPreview(HWND dialog, const DRAWITEMSTRUCT* item) {
  RECT frame = item->rcItem;
  DrawEdge(item->hDC, &frame, EDGE_SUNKEN, BF_RECT);
  MatrixRecord shown = *StateOf(dialog)->record;
  shown.rectangle = {0, 0, frame.right - frame.left - 2 * kPreviewInset, frame.bottom - frame.top - 2 * kPreviewInset};
  DibOwner wall(MatrixTileRender(&shown));
  if (wall != nullptr) DibDraw(item->hDC, frame.left + kPreviewInset, frame.top + kPreviewInset, wall.get());
}

void Command(HWND dialog, WPARAM wParam) {
  WORD id = LOWORD(wParam);
  WORD notification = HIWORD(wParam);
  if (id == kListId && notification == LBN_SELCHANGE) ChooseTile(dialog);
  else if (id == kListId && notification == LBN_DBLCLK) Confirm(dialog);
  else if (id == kGroupsId && notification == CBN_CLOSEUP) SwitchGroup(dialog);
  else if (id == kAddId) ShiftHeld() ? SaveAsGroup(dialog) : AddPicture(dialog);
  else if (id == kRemoveId) ShiftHeld() ? DeleteGroup(dialog) : RemoveTile(dialog);
  else if (id == IDOK) Confirm(dialog);
  else if (id == IDCANCEL) EndDialog(dialog, 0);
  else if (id == kHelpId) HelpShow(dialog, kHelpDocument);
}

INT_PTR CALLBACK MatrixDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      return Open(dialog, reinterpret_cast<MatrixRecord*>(lParam));
    case WM_MEASUREITEM:
      reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = kCellSize;
      return TRUE;
    case WM_DRAWITEM: {
      const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      if (item->CtlID == kListId) DrawCell(item);
      else if (item->CtlID == kPreviewId) DrawPreview(dialog, item);
      return TRUE;
    }
    case WM_CONTEXTMENU:
      if (reinterpret_cast<HWND>(wParam) == ListOf(dialog)) CellMenu(dialog, lParam);
      return TRUE;
    case WM_COMMAND:
      if (StateOf(dialog) != nullptr) Command(dialog, wParam);
      return TRUE;
    case WM_DESTROY:
      ListFree(ListOf(dialog));
      delete StateOf(dialog);
      SetWindowLongPtrA(dialog, DWLP_USER, 0);
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

int MatrixDialogRun(HWND owner, MatrixRecord* record) {
  MatrixRecord working = *record;
  working.tile = record->tile != nullptr ? DibClone(record->tile) : nullptr;
  if (record->tile != nullptr && working.tile == nullptr) {
    MessageBoxShow(owner, StringLookup(kStringMemoryError));
    return 0;
  }
  INT_PTR result = DialogBoxParamA(g_module, MAKEINTRESOURCEA(kMatrixDialogTemplate), owner, MatrixDialogProc,
                                   reinterpret_cast<LPARAM>(&working));
  if (result != 1) {
    MemFree(working.tile);
    return 0;
  }
  MemFree(record->tile);
  *record = working;
  return 1;
}
