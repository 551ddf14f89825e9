// Everything the user can set that outlives the dialog: one plain global per
// setting, each with a compiled-in default, all listed in SettingTable. The
// table drives both directions of LWMOTIO3.INI.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>

// Row flags.
constexpr std::uint32_t kSettingSwitch = 0x1;      // number used as on/off, stored as %u
constexpr std::uint32_t kSettingString = 0x2;      // text of at most 260 characters
constexpr std::uint32_t kSettingNumber = 0x4;      // number, stored as %u
constexpr std::uint32_t kSettingWriteOnly = 0x100; // written, never read back
// Carried by the four rows that have a setup id in `extra`; nothing reads them.
constexpr std::uint32_t kSettingSetupNumber = 0x10;
constexpr std::uint32_t kSettingSetupSwitch = 0x8000;

constexpr int kSettingStringSize = 261;  // every string global's buffer
constexpr int kSettingCount = 215;

struct SettingRow {
  const char* name;   // the key, in the file's case
  void* value;        // std::uint32_t* or char[kSettingStringSize]
  std::uint32_t flags;
  std::uint32_t extra;  // setup id of four rows; nothing reads it
  std::uint32_t defaultNumber;  // compiled-in default of a number row
  const char* defaultText;      // compiled-in default of a string row, else null
};

// The rows in file order: sorted by key up to a few swapped neighbours. The
// order matters: a key in the file matches by prefix and the first row wins,
// so MainSpiralStep must stand before MainSpiralStepSize.
// NUMBER(key, flags, extra, default) and TEXT(key, flags, extra, default).
#define LW_SETTING_ROWS(NUMBER, TEXT) \
  NUMBER(AccentCompensation, kSettingSwitch, 0, 0) \
  NUMBER(AddDescriptiveCommentBlock, kSettingSwitch | kSettingSetupSwitch, 103, 1) \
  NUMBER(ArcAfterImageIntensity, kSettingNumber, 0, 102) \
  NUMBER(ArcAfterAfterImageIntensity, kSettingNumber, 0, 77) \
  NUMBER(ArcAngle, kSettingNumber, 0, 225) \
  TEXT(DefaultTextureFileName, kSettingString, 0, "lwmotio3.fft") \
  NUMBER(DitherBrightness, kSettingNumber | kSettingSetupNumber, 100, 20) \
  NUMBER(DitherContrast, kSettingNumber | kSettingSetupNumber, 101, 20) \
  NUMBER(FastRemap, kSettingSwitch | kSettingSetupSwitch, 102, 1) \
  NUMBER(MainAntialias, kSettingSwitch, 0, 1) \
  NUMBER(MainArcArcColor, kSettingNumber, 0, 0xFDDFDF) \
  NUMBER(MainArcAfterimage, kSettingSwitch, 0, 1) \
  NUMBER(MainArcComplexity, kSettingNumber, 0, 8) \
  NUMBER(MainArcDisturbance, kSettingNumber, 0, 6) \
  NUMBER(MainArcEnergy, kSettingNumber, 0, 4) \
  NUMBER(MainArcFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainArcFrames, kSettingNumber, 0, 48) \
  NUMBER(MainArcOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainArcOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainArcSeed, kSettingNumber, 0, 11259) \
  NUMBER(MainArcShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainArcShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainArcShadowOffset, kSettingNumber, 0, 4) \
  NUMBER(MainArcShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainArcShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainBubBackBubbleColor, kSettingNumber, 0, 0xE8F0D9) \
  NUMBER(MainBubBackDensity, kSettingNumber, 0, 48) \
  NUMBER(MainBubBackDrift, kSettingNumber, 0, 16) \
  NUMBER(MainBubBackFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainBubBackFrames, kSettingNumber, 0, 88) \
  NUMBER(MainBubBackOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainBubBackOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainBubBackSeed, kSettingNumber, 0, 10633) \
  NUMBER(MainBubBackShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainBubBackShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainBubBackShadowOffset, kSettingNumber, 0, 6) \
  NUMBER(MainBubBackShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainBubBackShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainBubBackSize, kSettingNumber, 0, 21) \
  NUMBER(MainBubbleBubbleColor, kSettingNumber, 0, 0xE6D9DA) \
  NUMBER(MainBubbleDensity, kSettingNumber, 0, 36) \
  NUMBER(MainBubbleDrift, kSettingNumber, 0, 16) \
  NUMBER(MainBubbleFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainBubbleFrames, kSettingNumber, 0, 88) \
  NUMBER(MainBubbleOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainBubbleOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainBubbleSeed, kSettingNumber, 0, 10632) \
  NUMBER(MainBubbleShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainBubbleShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainBubbleShadowOffset, kSettingNumber, 0, 4) \
  NUMBER(MainBubbleShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainBubbleShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainBubbleSize, kSettingNumber, 0, 18) \
  NUMBER(MainChaosFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainChaosFrames, kSettingNumber, 0, 30) \
  NUMBER(MainChaosOutlineColor, kSettingNumber, 0, 0xE8F0D9) \
  NUMBER(MainChaosOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainChaosShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainChaosShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainChaosShadowOffset, kSettingNumber, 0, 6) \
  NUMBER(MainChaosShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainChaosShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainDelay, kSettingNumber, 0, 8) \
  NUMBER(MainDither, kSettingSwitch, 0, 1) \
  NUMBER(MainDragonFrames, kSettingNumber, 0, 48) \
  NUMBER(MainDragonOutlineColor, kSettingNumber, 0, 0xE5E5E5) \
  NUMBER(MainDragonOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainDragonShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainDragonShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainDragonShadowOffset, kSettingNumber, 0, 5) \
  NUMBER(MainDragonShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainDragonShadowSoftness, kSettingNumber, 0, 30) \
  NUMBER(MainEffect, kSettingNumber, 0, 17) \
  NUMBER(MainFontBold, kSettingSwitch, 0, 1) \
  NUMBER(MainFontItalic, kSettingSwitch, 0, 0) \
  TEXT(MainFontName, kSettingString, 0, "TIMES NEW ROMAN") \
  NUMBER(MainFontSize, kSettingNumber, 0, 54) \
  NUMBER(MainFountBackFrames, kSettingNumber, 0, 48) \
  NUMBER(MainFountBackOutlineColor, kSettingNumber, 0, 0x333333) \
  NUMBER(MainFountBackOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainFountBackScrollDirection, kSettingNumber, 0, 0) \
  NUMBER(MainFountBackShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainFountBackShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainFountBackShadowOffset, kSettingNumber, 0, 6) \
  NUMBER(MainFountBackShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainFountBackShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainFountainFrames, kSettingNumber, 0, 48) \
  NUMBER(MainFountainOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainFountainOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainFountainShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainFountainShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainFountainShadowOffset, kSettingNumber, 0, 4) \
  NUMBER(MainFountainShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainFountainShadowSoftness, kSettingNumber, 0, 10) \
  NUMBER(MainFrameworkFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainFrameworkFullFrame, kSettingSwitch, 0, 0) \
  NUMBER(MainFrameworkFrames, kSettingNumber, 0, 20) \
  NUMBER(MainFrameworkOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainFrameworkOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainFrameworkShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainFrameworkShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainFrameworkShadowOffset, kSettingNumber, 0, 6) \
  NUMBER(MainFrameworkShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainFrameworkShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainInfernoBlackColor, kSettingNumber, 0, 0x000000) \
  NUMBER(MainInfernoFrames, kSettingNumber, 0, 48) \
  NUMBER(MainInfernoOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainInfernoOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainInfernoRedColor, kSettingNumber, 0, 0x0000FF) \
  NUMBER(MainInfernoShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainInfernoShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainInfernoShadowOffset, kSettingNumber, 0, 4) \
  NUMBER(MainInfernoShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainInfernoShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainInfernoYellowColor, kSettingNumber, 0, 0x00FFFF) \
  NUMBER(MainMaskBackground, kSettingSwitch, 0, 1) \
  NUMBER(MainMirageFrames, kSettingNumber, 0, 32) \
  NUMBER(MainMirageOutlineColor, kSettingNumber, 0, 0xB99279) \
  NUMBER(MainMirageOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainMirageRange, kSettingNumber, 0, 48) \
  NUMBER(MainMuralFrames, kSettingNumber, 0, 64) \
  NUMBER(MainMuralIndex, kSettingNumber, 0, 0) \
  NUMBER(MainMuralOutlineColor, kSettingNumber, 0, 0x4C4C4C) \
  NUMBER(MainMuralOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainMuralScrollDirection, kSettingNumber, 0, 2) \
  NUMBER(MainMuralShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainMuralShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainMuralShadowOffset, kSettingNumber, 0, 6) \
  NUMBER(MainMuralShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainMuralShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainOdometerAppearEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainOdometerDisappearEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainOdometerOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainOdometerOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainOdometerPersistence, kSettingNumber, 0, 5) \
  NUMBER(MainOdometerSteps, kSettingNumber, 0, 9) \
  NUMBER(MainOdometerThreshold, kSettingNumber, 0, 64) \
  NUMBER(MainPadding, kSettingNumber, 0, 0) \
  NUMBER(MainPalette, kSettingNumber, 0, 6) \
  NUMBER(MainPause, kSettingNumber, 0, 100) \
  NUMBER(MainPingFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainPingFrames, kSettingNumber, 0, 30) \
  NUMBER(MainPingOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainPingOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainPingShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainPingShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainPingShadowOffset, kSettingNumber, 0, 6) \
  NUMBER(MainPingShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainPingShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainRadialFrames, kSettingNumber, 0, 48) \
  NUMBER(MainRadialOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainRadialOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainRadialShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainRadialShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainRadialShadowOffset, kSettingNumber, 0, 4) \
  NUMBER(MainRadialShadowOpacity, kSettingNumber, 0, 128) \
  NUMBER(MainRadialShadowSoftness, kSettingNumber, 0, 10) \
  NUMBER(MainRolling, kSettingSwitch, 0, 1) \
  NUMBER(MainRunwayOutlineColor, kSettingNumber, 0, 0xF4F4F4) \
  NUMBER(MainRunwayOutlineEnable, kSettingSwitch, 0, 0) \
  NUMBER(MainRunwayCount, kSettingNumber, 0, 12) \
  NUMBER(MainRunwayStep, kSettingNumber, 0, 6) \
  NUMBER(MainRunwayMinOpacity, kSettingNumber, 0, 16) \
  NUMBER(MainSimpleFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainSimpleFrames, kSettingNumber, 0, 32) \
  NUMBER(MainSimpleOutlineColor, kSettingNumber, 0, 0xFFFFFF) \
  NUMBER(MainSimpleOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainSimpleScrollDirection, kSettingNumber, 0, 2) \
  NUMBER(MainSimpleShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainSimpleShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainSimpleShadowOffset, kSettingNumber, 0, 4) \
  NUMBER(MainSimpleShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainSimpleShadowSoftness, kSettingNumber, 0, 10) \
  NUMBER(MainSpiralJustify, kSettingNumber, 0, 0) \
  NUMBER(MainSpiralMinOpacity, kSettingNumber, 0, 16) \
  NUMBER(MainSpiralMinScale, kSettingNumber, 0, 25) \
  NUMBER(MainSpiralStep, kSettingNumber, 0, 20) \
  NUMBER(MainSpiralStartAngle, kSettingNumber, 0, 100) \
  NUMBER(MainSpiralStepSize, kSettingNumber, 0, 10) \
  NUMBER(MainSpiralUseFinal, kSettingSwitch, 0, 1) \
  NUMBER(MainStripesFill1, kSettingNumber, 0, 0x00CCFF) \
  NUMBER(MainStripesFill2, kSettingNumber, 0, 0x000000) \
  NUMBER(MainStripesFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainStripesFrames, kSettingNumber, 0, 10) \
  NUMBER(MainStripesOutlineColor, kSettingNumber, 0, 0x666666) \
  NUMBER(MainStripesOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainStripesShadowDirection, kSettingNumber, 0, 7) \
  NUMBER(MainStripesShadowEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainStripesShadowOffset, kSettingNumber, 0, 4) \
  NUMBER(MainStripesShadowOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainStripesShadowSoftness, kSettingNumber, 0, 20) \
  NUMBER(MainStripesType, kSettingNumber, 0, 2) \
  NUMBER(MainStripesScrollDirection, kSettingNumber, 0, 1) \
  NUMBER(MainSupercompress, kSettingSwitch, 0, 0) \
  NUMBER(MainTeletypeBlankFrameEnable, kSettingSwitch, 0, 0) \
  NUMBER(MainTeletypeEmbossdepth, kSettingNumber, 0, 6) \
  NUMBER(MainTeletypeFillOpacity, kSettingNumber, 0, 256) \
  NUMBER(MainTeletypeSigma, kSettingNumber, 0, 22) \
  TEXT(MainText, kSettingString, 0, "This space for rent...") \
  NUMBER(MainTransparent, kSettingNumber, 0, 0) \
  NUMBER(MainWaveFrames, kSettingNumber, 0, 32) \
  NUMBER(MainWaveOutlineColor, kSettingNumber, 0, 0x1C5538) \
  NUMBER(MainWaveOutlineEnable, kSettingSwitch, 0, 1) \
  NUMBER(MainWaveRange, kSettingNumber, 0, 48) \
  NUMBER(MainZoomFrames, kSettingNumber, 0, 15) \
  NUMBER(MainZoomRange, kSettingNumber, 0, 75) \
  TEXT(MatrixDefaultTile, kSettingString, 0, "") \
  TEXT(MatrixLibrary, kSettingString, 0, "lwmotio3.mtx") \
  NUMBER(MaximumFontSize, kSettingNumber, 0, 144) \
  NUMBER(MinimumFontSize, kSettingNumber, 0, 4) \
  NUMBER(PatchLevel, kSettingNumber | kSettingWriteOnly, 0, 1) \
  NUMBER(SolidBackground, kSettingSwitch, 0, 1) \
  NUMBER(Truecolour, kSettingSwitch, 0, 0) \
  NUMBER(UpdateDelay, kSettingNumber, 0, 1000) \
  NUMBER(VersionNumber, kSettingNumber | kSettingWriteOnly, 0, 512)

#define LW_DECLARE_NUMBER_SETTING(key, flags, extra, initial) extern std::uint32_t key;
#define LW_DECLARE_TEXT_SETTING(key, flags, extra, initial) extern char key[kSettingStringSize];
LW_SETTING_ROWS(LW_DECLARE_NUMBER_SETTING, LW_DECLARE_TEXT_SETTING)
#undef LW_DECLARE_NUMBER_SETTING
#undef LW_DECLARE_TEXT_SETTING

extern const SettingRow SettingTable[kSettingCount];

// The row whose key is exactly `key` (case as in the file), or null.
const SettingRow* SettingFind(const char* key);
// Sets a row from the text after "=": atoi for a number row; for a string
// row the buffer is cleared and at most 260 bytes are copied.
void SettingStore(const SettingRow* row, const char* text);
// Puts every global back to its compiled-in default.
void SettingsReset();

constexpr int kAppDataPathSize = 1024;

// Path of fileName in the maker's folder of the user's application data
// (the roaming folder on Windows, the configuration folder elsewhere). A
// static buffer; the empty string when the folder cannot be had. A "\\" in
// fileName separates folders on every platform.
const char* AppDataPath(const char* fileName);

// Path of name in the plug-in's data folder, "Lettermotion 3" in the maker's
// folder: the groups of textures and tiles live there. A static buffer of its
// own; empty when the folder cannot be had. An empty name gives the folder
// with a closing separator.
const char* DataFolderPath(const char* name);

// The settings file: AppDataPath("LWMOTIO3.INI") unless an explicit path was
// given. SettingsUseFile(nullptr) goes back to the usual place.
void SettingsUseFile(const char* path);
const char* SettingsFilePath();

// Reads the settings file over the globals; with Shift held the file is
// walked but changes nothing. Called at dialog start.
void SettingsLoad();
// Rewrites the settings file from the globals. Called when the dialog goes.
void SettingsSave();

// The two halves with their inputs made explicit. SettingsLoadFile returns 1
// if the file could be opened and read; SettingsSaveFile 1 if it could be
// created.
int SettingsLoadFile(const char* path, bool shiftHeld);
int SettingsSaveFile(const char* path, std::time_t now);
// The file's text, header stamped with `now` in local time, to any stream.
void SettingsWrite(std::FILE* out, std::time_t now);
// The first 24 characters of ctime: "Www Mmm dd hh:mm:ss yyyy".
void SettingsDateText(const std::tm& when, char text[25]);
