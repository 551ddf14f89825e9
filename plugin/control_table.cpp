// The control table's rows. The template rows come first; their places are
// the template's. The panel rows follow in order of id, effect by effect.
//
// Panel layout. The panels share the area below the text and font row and
// left of the option boxes: dialog units x 8 to 264, y 128 to 300. In the
// dialog font ("MS Sans Serif" 8, base units 6 by 13 pixels) a dialog unit is
// 6 / 4 = 1.5 pixels across and 13 / 8 = 1.625 down, so the area is pixels
// x 12 to 396, y 208 to 487. Rows hold x - 4 and y - 12 of the place where the
// control is made. Within the area:
// - check boxes on one line at the top, y 208, 96 pixels apart;
// - column 1 (x 12): a gradient bar across the top, then the fill swatches
//   with their labels to the left, then scroll wells;
// - column 2 (x 140): number edits, label then edit and up-down, 24 apart
//   (below the gradient bar where there is one);
// - column 3 (x 268): colour wells, the shadow direction well, drop lists.
// A label takes the id after its control's.
#include "plugin/control_table.h"

#include "plugin/settings.h"

namespace {

constexpr ControlCommand kRedraw = kCommandInvalidatePreview;
constexpr ControlCommand kTimer = kCommandRestartTimer;
constexpr ControlCommand kGradient = kCommandGradientRefresh;
constexpr ControlCommand kNone = kCommandNone;

constexpr std::uint32_t kRunTime = kRowRunTime | kRowRunTimeMark;
constexpr std::uint32_t kWellFlags = kRunTime | kRowSubclass | kRowRefresh | kRowSave | kRowLoad;
constexpr std::uint32_t kClientEdge = 0x200;
constexpr std::int64_t kTextLimit = kSettingStringSize - 1;
constexpr std::int64_t kGradientPersist = 4096;  // the bar loads and saves its own file

constexpr ControlRow Row(std::uint32_t id, ControlKind kind, std::uint32_t flags, ControlCommand command, void* value,
                         const char* className, const char* caption) {
  ControlRow row{};
  row.id = id;
  row.kind = kind;
  row.flags = flags;
  row.command = command;
  row.value = value;
  row.className = className;
  row.caption = caption;
  return row;
}

constexpr ControlRow Placed(ControlRow row, int x, int y, int w, int h, std::uint32_t style) {
  row.x = x;
  row.y = y;
  row.w = w;
  row.h = h;
  row.style = style;
  return row;
}

constexpr ControlRow WithParam(ControlRow row, const char* paramText, std::int64_t param, std::int64_t limit) {
  row.paramText = paramText;
  row.param = param;
  row.limit = limit;
  return row;
}

// Rows of the dialog template.

constexpr ControlRow TemplateCheck(std::uint32_t id, const char* caption, std::uint32_t* value, ControlCommand command) {
  return Row(id, kControlCheckBox, 0, command, value, "button", caption);
}

// A number edit without a setting is neither loaded nor saved.
constexpr ControlRow TemplateNumber(std::uint32_t id, std::uint32_t* value, const char* range, ControlCommand command) {
  return WithParam(Row(id, kControlNumber, value ? kRowSave : 0, command, value, "edit", nullptr), range, 0, 0);
}

constexpr ControlRow TemplateList(std::uint32_t id, void* value, std::uint32_t flags, ControlFiller filler,
                                  ControlCommand command, std::int64_t limit) {
  ControlRow row = WithParam(Row(id, kControlDropList, flags, command, value, "combobox", nullptr), nullptr, 0, limit);
  row.init = filler;
  return row;
}

constexpr ControlRow WithFiller(ControlRow row, ControlFiller filler) {
  row.init = filler;
  return row;
}

// Rows of the panels.

constexpr ControlRow Check(std::uint32_t id, const char* caption, std::uint32_t* value, ControlCommand command, int x,
                           int y) {
  return Placed(Row(id, kControlCheckBox, kRunTime, command, value, "button", caption), x, y, 88, 16, kStyleCheckBox);
}

constexpr ControlRow Label(std::uint32_t id, const char* caption, int x, int y, int w) {
  return Placed(Row(id, kControlLabel, kRunTime, kNone, nullptr, "static", caption), x, y, w, 16, kStyleLabel);
}

constexpr ControlRow Number(std::uint32_t id, std::uint32_t* value, const char* range, ControlCommand command, int x,
                            int y) {
  ControlRow row = Row(id, kControlNumber, kRunTime | kRowSave, command, value, "edit", nullptr);
  row = Placed(WithParam(row, range, 0, 0), x, y, 36, 20, kStyleNumberEdit);
  row.exstyle = kClientEdge;
  return row;
}

constexpr ControlRow DropList(std::uint32_t id, std::uint32_t* value, const char* items, ControlCommand command, int x,
                              int y) {
  std::uint32_t flags = kRunTime | kRowItemList | kRowLoadIndex | kRowSave;
  ControlRow row = WithParam(Row(id, kControlDropList, flags, command, value, "combobox", nullptr), items, 0, 0);
  return Placed(row, x, y, 124, 160, kStyleDropList);
}

constexpr ControlRow Custom(std::uint32_t id, ControlClass subclass, std::uint32_t flags, ControlCommand command,
                            std::uint32_t* value, int x, int y, int w, int h) {
  ControlRow row = Placed(Row(id, kControlCustom, flags, command, value, "button", nullptr), x, y, w, h, kStyleCustom);
  row.subclass = subclass;
  return row;
}

constexpr ControlRow Fill(std::uint32_t id, std::uint32_t colour, ControlCommand command, int x, int y) {
  ControlRow row = Custom(id, kClassFillSwatch, kRunTime | kRowSubclass, command, nullptr, x, y, 56, 40);
  return WithParam(row, nullptr, colour, 0);
}

// A looped gradient bar that keeps its own file; the colour is its base.
constexpr ControlRow Gradient(std::uint32_t id, std::uint32_t colour, ControlCommand command, int x, int y) {
  ControlRow row = Custom(id, kClassGradientBar, kRunTime | kRowSubclass, command, nullptr, x, y, 197, 50);
  row.caption = "FountainButtonLooped";
  return WithParam(row, nullptr, colour, kGradientPersist);
}

// Colour, direction and scroll wells: a number loaded, refreshed and saved.
constexpr ControlRow Well(std::uint32_t id, ControlClass subclass, std::uint32_t* value, ControlCommand command, int x,
                          int y, int w, int h) {
  return Custom(id, subclass, kWellFlags, command, value, x, y, w, h);
}

// The tile list names its setting, but the dialog stores the setting itself
// when the list reports a new tile; the table neither loads nor saves it.
constexpr ControlRow Mural(std::uint32_t id, std::uint32_t* value, ControlCommand command, int x, int y) {
  return Custom(id, kClassMuralList, kRunTime | kRowSubclass, command, value, x, y, 56, 40);
}

constexpr ControlRow Noise(std::uint32_t id, ControlCommand command, int x, int y) {
  ControlRow row = Custom(id, kClassNoiseSwatch, kRunTime | kRowSubclass, command, nullptr, x, y, 56, 40);
  return WithParam(row, nullptr, kColouringFromGradient259, 0);
}

}  // namespace

ControlRow ControlTable[kControlRowCount] = {
    // The dialog template: text and font, the effect and palette lists,
    // timing, and the option boxes.
    WithParam(Row(23, kControlTextEdit, kRowText | kRowSave, kNone, MainText, "edit", nullptr), nullptr, 0, kTextLimit),
    TemplateList(27, MainFontName, kRowLoad | kRowText | kRowSaveText, kFillerFontList, kRedraw, kTextLimit),
    TemplateCheck(25, "&Bold", &MainFontBold, kRedraw),
    TemplateCheck(26, "&Italic", &MainFontItalic, kRedraw),
    WithFiller(TemplateNumber(28, &MainFontSize, "4,144,24", kRedraw), kFillerFontSizeRange),
    TemplateNumber(34, nullptr, "50,150,100", kRedraw),
    TemplateList(30, &MainEffect, kRowLoad | kRowSave, kFillerEffectList, kNone, 0),
    TemplateList(13, &MainPalette, kRowLoad | kRowSave, kFillerPaletteList, kNone, 0),
    TemplateNumber(11, &MainDelay, "1,1000,10", kNone),
    TemplateNumber(33, &MainPause, "1,10000,10", kNone),
    TemplateNumber(31, &MainPadding, "0,512,0", kRedraw),
    TemplateCheck(19, "&Supercompress", &MainSupercompress, kNone),
    TemplateCheck(32, "Animat&ed", &MainRolling, kNone),
    TemplateCheck(20, "Add comme&nt", &AddDescriptiveCommentBlock, kNone),
    TemplateCheck(15, "&Dither", &MainDither, kNone),
    TemplateCheck(14, "&Custom palette", nullptr, kNone),
    TemplateCheck(10, "Tr&ue color", &Truecolour, kNone),
    TemplateCheck(29, "&Mask background", &MainMaskBackground, kRedraw),
    TemplateCheck(22, "&Antialias", &MainAntialias, kRedraw),
    TemplateCheck(46, "&Transparent", &MainTransparent, kRedraw),
    // Simple
    Check(100, "Shadow", &MainSimpleShadowEnable, kRedraw, 8, 196),
    Fill(101, 0x996633, kRedraw, 72, 220),
    Label(102, "Fill:", 8, 232, 62),
    Number(103, &MainSimpleFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(104, "Opacity:", 136, 223, 74),
    Fill(105, 0xE5E5E5, kRedraw, 72, 312),
    Label(106, "Background:", 8, 324, 62),
    Fill(107, 0x7F7F7F, kRedraw, 72, 266),
    Label(108, "Shadow:", 8, 278, 62),
    Number(109, &MainSimpleShadowOpacity, "1,256,256", kRedraw, 212, 268),
    Label(110, "Opacity:", 136, 271, 74),
    Number(111, &MainSimpleShadowSoftness, "0,40,10", kRedraw, 212, 292),
    Label(112, "Soft:", 136, 295, 74),
    Number(113, &MainSimpleShadowOffset, "1,256,256", kRedraw, 212, 316),
    Label(114, "Shadow offset:", 136, 319, 74),
    Well(115, kClassDirectionWell, &MainSimpleShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(116, "Shadow Direction:", 264, 244, 120),
    Number(117, &MainSimpleFrames, "1,32760,64", kRedraw, 212, 244),
    Label(118, "Frames:", 136, 247, 74),
    Well(119, kClassColourWell, &MainSimpleOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(120, "Outline:", 264, 223, 62),
    Check(121, "Outline", &MainSimpleOutlineEnable, kRedraw, 104, 196),
    Well(122, kClassScrollWell, &MainSimpleScrollDirection, kRedraw, 8, 374, 75, 75),
    Label(123, "Scroll:", 8, 358, 120),
    // Z-Axis Fountain
    Check(124, "Shadow", &MainFountainShadowEnable, kRedraw, 8, 196),
    Gradient(125, 0xFF0000, kRedraw, 8, 236),
    Label(126, "Fill:", 8, 220, 120),
    Fill(127, 0xE5E5E5, kRedraw, 72, 338),
    Label(128, "Background:", 8, 350, 62),
    Fill(129, 0x7F7F7F, kRedraw, 72, 292),
    Label(130, "Shadow:", 8, 304, 62),
    Number(131, &MainFountainShadowOpacity, "1,256,256", kRedraw, 212, 316),
    Label(132, "Opacity:", 136, 319, 74),
    Number(133, &MainFountainShadowSoftness, "0,40,10", kRedraw, 212, 340),
    Label(134, "Soft:", 136, 343, 74),
    Number(135, &MainFountainShadowOffset, "1,256,256", kRedraw, 212, 364),
    Label(136, "Shadow offset:", 136, 367, 74),
    Well(137, kClassDirectionWell, &MainFountainShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(138, "Shadow Direction:", 264, 244, 120),
    Number(139, &MainFountainFrames, "1,32760,64", kRedraw, 212, 292),
    Label(140, "Frames:", 136, 295, 74),
    Well(141, kClassColourWell, &MainFountainOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(142, "Outline:", 264, 223, 62),
    Check(143, "Outline", &MainFountainOutlineEnable, kRedraw, 104, 196),
    // Odometer
    Fill(144, 0x755E57, kRedraw, 72, 220),
    Label(145, "Fill:", 8, 232, 62),
    Fill(146, 0xB2B2B2, kRedraw, 72, 266),
    Label(147, "Background:", 8, 278, 62),
    Number(148, &MainOdometerSteps, "1,100,10", kRedraw, 212, 220),
    Label(149, "Steps:", 136, 223, 74),
    Check(150, "Appear", &MainOdometerAppearEnable, kRedraw, 8, 196),
    Check(151, "Disappear", &MainOdometerDisappearEnable, kRedraw, 104, 196),
    Number(152, &MainOdometerPersistence, "0,260,3", kRedraw, 212, 244),
    Label(153, "Persistence:", 136, 247, 74),
    Number(154, &MainOdometerThreshold, "1,255,96", kRedraw, 212, 268),
    Label(155, "Threshold:", 136, 271, 74),
    Well(156, kClassColourWell, &MainOdometerOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(157, "Outline:", 264, 223, 62),
    Check(158, "Outline", &MainOdometerOutlineEnable, kRedraw, 200, 196),
    // Bubbles
    Check(161, "Shadow", &MainBubbleShadowEnable, kRedraw, 8, 196),
    Fill(162, 0x593C1E, kRedraw, 72, 220),
    Label(163, "Fill:", 8, 232, 62),
    Number(164, &MainBubbleFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(165, "Opacity:", 136, 223, 74),
    Fill(166, 0xB2B2B2, kRedraw, 72, 266),
    Label(167, "Background:", 8, 278, 62),
    Fill(168, 0x000000, kRedraw, 72, 312),
    Label(169, "Shadow:", 8, 324, 62),
    Number(170, &MainBubbleShadowOpacity, "1,256,256", kRedraw, 212, 244),
    Label(171, "Opacity:", 136, 247, 74),
    Number(172, &MainBubbleShadowSoftness, "0,40,10", kRedraw, 212, 268),
    Label(173, "Soft:", 136, 271, 74),
    Number(174, &MainBubbleShadowOffset, "1,256,256", kRedraw, 212, 292),
    Label(175, "Shadow offset:", 136, 295, 74),
    Well(176, kClassDirectionWell, &MainBubbleShadowDirection, kRedraw, 264, 284, 75, 75),
    Label(177, "Shadow Direction:", 264, 268, 120),
    Number(178, &MainBubbleFrames, "1,32760,64", kRedraw, 212, 316),
    Label(179, "Frames:", 136, 319, 74),
    Well(180, kClassColourWell, &MainBubbleOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(181, "Outline:", 264, 223, 62),
    Check(182, "Outline", &MainBubbleOutlineEnable, kRedraw, 104, 196),
    Well(183, kClassColourWell, &MainBubbleBubbleColor, kRedraw, 328, 244, 40, 20),
    Label(184, "Bubble:", 264, 247, 62),
    Number(185, &MainBubbleDrift, "0,99,25", kRedraw, 212, 340),
    Label(186, "Bubble drift:", 136, 343, 74),
    Number(187, &MainBubbleSize, "10,64,18", kRedraw, 212, 364),
    Label(188, "Bubble size:", 136, 367, 74),
    Number(189, &MainBubbleDensity, "8,256,32", kRedraw, 212, 388),
    Label(190, "Bubble density:", 136, 391, 74),
    Number(191, &MainBubbleSeed, "1000,32760,10632", kRedraw, 212, 412),
    Label(192, "Random seed:", 136, 415, 74),
    // Plasma Arc
    Check(193, "Shadow", &MainArcShadowEnable, kRedraw, 8, 196),
    Fill(194, 0xB60060, kRedraw, 72, 220),
    Label(195, "Fill:", 8, 232, 62),
    Number(196, &MainArcFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(197, "Opacity:", 136, 223, 74),
    Fill(198, 0x53002C, kRedraw, 72, 266),
    Label(199, "Background:", 8, 278, 62),
    Fill(200, 0xFF2095, kRedraw, 72, 312),
    Label(201, "Shadow:", 8, 324, 62),
    Number(202, &MainArcShadowOpacity, "1,256,256", kRedraw, 212, 244),
    Label(203, "Opacity:", 136, 247, 74),
    Number(204, &MainArcShadowSoftness, "0,40,10", kRedraw, 212, 268),
    Label(205, "Soft:", 136, 271, 74),
    Number(206, &MainArcShadowOffset, "1,256,256", kRedraw, 212, 292),
    Label(207, "Shadow offset:", 136, 295, 74),
    Well(208, kClassDirectionWell, &MainArcShadowDirection, kRedraw, 264, 284, 75, 75),
    Label(209, "Shadow Direction:", 264, 268, 120),
    Number(210, &MainArcFrames, "1,32760,64", kRedraw, 212, 316),
    Label(211, "Frames:", 136, 319, 74),
    Well(212, kClassColourWell, &MainArcOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(213, "Outline:", 264, 223, 62),
    Check(214, "Outline", &MainArcOutlineEnable, kRedraw, 104, 196),
    Well(215, kClassColourWell, &MainArcArcColor, kRedraw, 328, 244, 40, 20),
    Label(216, "Arc:", 264, 247, 62),
    Number(217, &MainArcDisturbance, "0,40,16", kRedraw, 212, 340),
    Label(218, "Disturbance:", 136, 343, 74),
    Number(219, &MainArcEnergy, "1,18,8", kRedraw, 212, 364),
    Label(220, "Energy:", 136, 367, 74),
    Number(221, &MainArcComplexity, "1,10,4", kRedraw, 212, 388),
    Label(222, "Complexity:", 136, 391, 74),
    Number(223, &MainArcSeed, "1000,32760,10632", kRedraw, 212, 412),
    Label(224, "Random seed:", 136, 415, 74),
    Check(225, "Afterimage", &MainArcAfterimage, kRedraw, 200, 196),
    // Runway
    Fill(226, 0x000000, kRedraw, 72, 220),
    Label(227, "Fill:", 8, 232, 62),
    Fill(228, 0xFFFFFF, kRedraw, 72, 266),
    Label(229, "Background:", 8, 278, 62),
    Number(230, &MainRunwayStep, "1,100,10", kRedraw, 212, 220),
    Label(231, "Step size:", 136, 223, 74),
    Number(232, &MainRunwayCount, "0,260,3", kRedraw, 212, 244),
    Label(233, "Step count:", 136, 247, 74),
    Number(234, &MainRunwayMinOpacity, "1,255,96", kRedraw, 212, 268),
    Label(235, "Min. opacity:", 136, 271, 74),
    Well(236, kClassColourWell, &MainRunwayOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(237, "Outline:", 264, 223, 62),
    Check(238, "Outline", &MainRunwayOutlineEnable, kRedraw, 8, 196),
    // Spiral
    Fill(241, 0x000000, kTimer, 72, 220),
    Label(242, "Fill:", 8, 232, 62),
    Fill(243, 0x996633, kTimer, 72, 266),
    Label(244, "Final:", 8, 278, 62),
    Fill(245, 0xFFFFFF, kTimer, 72, 312),
    Label(246, "Background:", 8, 324, 62),
    Number(247, &MainSpiralStep, "1,100,10", kTimer, 212, 220),
    Label(248, "Step size:", 136, 223, 74),
    Number(249, &MainSpiralMinOpacity, "1,255,96", kTimer, 212, 244),
    Label(250, "Min. opacity:", 136, 247, 74),
    Number(251, &MainSpiralStartAngle, "16,720,100", kTimer, 212, 268),
    Label(252, "Start angle:", 136, 271, 74),
    Number(253, &MainSpiralMinScale, "5,100,100", kTimer, 212, 292),
    Label(254, "Min. scale:", 136, 295, 74),
    DropList(255, &MainSpiralJustify, "Left;Center;Right", kTimer, 264, 236),
    Label(256, "Justification:", 264, 220, 120),
    Check(257, "Use final", &MainSpiralUseFinal, kTimer, 8, 196),
    // Dragon Skin
    Check(258, "Shadow", &MainDragonShadowEnable, kRedraw, 8, 196),
    Gradient(259, 0xFF0000, kGradient, 8, 236),
    Label(260, "Fill:", 8, 220, 120),
    Noise(261, kRedraw, 72, 292),
    Label(262, "Texture:", 8, 304, 62),
    Fill(263, 0x000000, kRedraw, 72, 338),
    Label(264, "Background:", 8, 350, 62),
    Fill(265, 0xCCCCCC, kRedraw, 72, 384),
    Label(266, "Shadow:", 8, 396, 62),
    Number(267, &MainDragonShadowOpacity, "1,256,256", kRedraw, 212, 292),
    Label(268, "Opacity:", 136, 295, 74),
    Number(269, &MainDragonShadowSoftness, "0,40,10", kRedraw, 212, 316),
    Label(270, "Soft:", 136, 319, 74),
    Number(271, &MainDragonShadowOffset, "1,256,256", kRedraw, 212, 340),
    Label(272, "Shadow offset:", 136, 343, 74),
    Well(273, kClassDirectionWell, &MainDragonShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(274, "Shadow Direction:", 264, 244, 120),
    Number(275, &MainDragonFrames, "1,32760,64", kRedraw, 212, 364),
    Label(276, "Frames:", 136, 367, 74),
    Well(277, kClassColourWell, &MainDragonOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(278, "Outline:", 264, 223, 62),
    Check(279, "Outline", &MainDragonOutlineEnable, kRedraw, 104, 196),
    // Radial Fountain
    Check(280, "Shadow", &MainRadialShadowEnable, kRedraw, 8, 196),
    Gradient(281, 0xFF0000, kRedraw, 8, 236),
    Label(282, "Fill:", 8, 220, 120),
    Fill(283, 0x2B1F13, kRedraw, 72, 338),
    Label(284, "Background:", 8, 350, 62),
    Fill(285, 0xF2EAE1, kRedraw, 72, 292),
    Label(286, "Shadow:", 8, 304, 62),
    Number(287, &MainRadialShadowOpacity, "1,256,256", kRedraw, 212, 316),
    Label(288, "Opacity:", 136, 319, 74),
    Number(289, &MainRadialShadowSoftness, "0,40,10", kRedraw, 212, 340),
    Label(290, "Soft:", 136, 343, 74),
    Number(291, &MainRadialShadowOffset, "1,256,256", kRedraw, 212, 364),
    Label(292, "Shadow offset:", 136, 367, 74),
    Well(293, kClassDirectionWell, &MainRadialShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(294, "Shadow Direction:", 264, 244, 120),
    Number(295, &MainRadialFrames, "1,32760,64", kRedraw, 212, 292),
    Label(296, "Frames:", 136, 295, 74),
    Well(297, kClassColourWell, &MainRadialOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(298, "Outline:", 264, 223, 62),
    Check(299, "Outline", &MainRadialOutlineEnable, kRedraw, 104, 196),
    // Inferno
    Check(300, "Shadow", &MainInfernoShadowEnable, kRedraw, 8, 196),
    Fill(301, 0x000000, kRedraw, 72, 266),
    Label(302, "Background:", 8, 278, 62),
    Fill(303, 0x999999, kRedraw, 72, 220),
    Label(304, "Shadow:", 8, 232, 62),
    Number(305, &MainInfernoShadowOpacity, "1,256,256", kRedraw, 212, 220),
    Label(306, "Opacity:", 136, 223, 74),
    Number(307, &MainInfernoShadowSoftness, "0,40,10", kRedraw, 212, 244),
    Label(308, "Soft:", 136, 247, 74),
    Number(309, &MainInfernoShadowOffset, "1,256,256", kRedraw, 212, 268),
    Label(310, "Shadow offset:", 136, 271, 74),
    Well(311, kClassDirectionWell, &MainInfernoShadowDirection, kRedraw, 264, 332, 75, 75),
    Label(312, "Shadow Direction:", 264, 316, 120),
    Number(313, &MainInfernoFrames, "1,32760,64", kRedraw, 212, 292),
    Label(314, "Frames:", 136, 295, 74),
    Well(315, kClassColourWell, &MainInfernoOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(316, "Outline:", 264, 223, 62),
    Check(317, "Outline", &MainInfernoOutlineEnable, kRedraw, 104, 196),
    Well(318, kClassColourWell, &MainInfernoBlackColor, kRedraw, 328, 244, 40, 20),
    Label(319, "Smoke:", 264, 247, 62),
    Well(320, kClassColourWell, &MainInfernoRedColor, kRedraw, 328, 268, 40, 20),
    Label(321, "Flames:", 264, 271, 62),
    Well(322, kClassColourWell, &MainInfernoYellowColor, kRedraw, 328, 292, 40, 20),
    Label(323, "Heat:", 264, 295, 62),
    // Doppler
    Fill(324, 0x4C4C4C, kRedraw, 72, 220),
    Label(325, "Fill:", 8, 232, 62),
    Fill(326, 0xCCCCCC, kRedraw, 72, 266),
    Label(327, "Background:", 8, 278, 62),
    Number(328, &MainZoomFrames, "1,100,10", kRedraw, 212, 220),
    Label(329, "Frames:", 136, 223, 74),
    Number(332, &MainZoomRange, "20,80,75", kRedraw, 212, 244),
    Label(333, "Range:", 136, 247, 74),
    // Background Fountain
    Check(334, "Shadow", &MainFountBackShadowEnable, kRedraw, 8, 196),
    Gradient(335, 0xE5E5E5, kRedraw, 8, 236),
    Label(336, "Background:", 8, 220, 120),
    Fill(337, 0xE5E5E5, kRedraw, 72, 338),
    Label(338, "Fill:", 8, 350, 62),
    Fill(339, 0x4C4C4C, kRedraw, 72, 292),
    Label(340, "Shadow:", 8, 304, 62),
    Number(341, &MainFountBackShadowOpacity, "1,256,256", kRedraw, 212, 316),
    Label(342, "Opacity:", 136, 319, 74),
    Number(343, &MainFountBackShadowSoftness, "0,40,10", kRedraw, 212, 340),
    Label(344, "Soft:", 136, 343, 74),
    Number(345, &MainFountBackShadowOffset, "1,256,256", kRedraw, 212, 364),
    Label(346, "Shadow offset:", 136, 367, 74),
    Well(347, kClassDirectionWell, &MainFountBackShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(348, "Shadow Direction:", 264, 244, 120),
    Number(349, &MainFountBackFrames, "1,32760,64", kRedraw, 212, 292),
    Label(350, "Frames:", 136, 295, 74),
    Well(351, kClassColourWell, &MainFountBackOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(352, "Outline:", 264, 223, 62),
    Check(353, "Outline", &MainFountBackOutlineEnable, kRedraw, 104, 196),
    Well(354, kClassTwoWayWell, &MainFountBackScrollDirection, kRedraw, 8, 400, 50, 25),
    Label(355, "Scroll:", 8, 384, 120),
    // Background Mural
    Check(356, "Shadow", &MainMuralShadowEnable, kRedraw, 8, 196),
    Mural(357, &MainMuralIndex, kRedraw, 72, 220),
    Label(358, "Background:", 8, 232, 62),
    Fill(359, 0xFFFFFF, kRedraw, 72, 266),
    Label(360, "Fill:", 8, 278, 62),
    Fill(361, 0x000000, kRedraw, 72, 312),
    Label(362, "Shadow:", 8, 324, 62),
    Number(363, &MainMuralShadowOpacity, "1,256,256", kRedraw, 212, 220),
    Label(364, "Opacity:", 136, 223, 74),
    Number(365, &MainMuralShadowSoftness, "0,40,10", kRedraw, 212, 244),
    Label(366, "Soft:", 136, 247, 74),
    Number(367, &MainMuralShadowOffset, "1,256,256", kRedraw, 212, 268),
    Label(368, "Shadow offset:", 136, 271, 74),
    Well(369, kClassDirectionWell, &MainMuralShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(370, "Shadow Direction:", 264, 244, 120),
    Number(371, &MainMuralFrames, "1,32760,64", kRedraw, 212, 292),
    Label(372, "Frames:", 136, 295, 74),
    Well(373, kClassColourWell, &MainMuralOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(374, "Outline:", 264, 223, 62),
    Check(375, "Outline", &MainMuralOutlineEnable, kRedraw, 104, 196),
    Well(376, kClassScrollWell, &MainMuralScrollDirection, kRedraw, 8, 374, 75, 75),
    Label(377, "Scroll:", 8, 358, 120),
    // Background Bubbles
    Check(378, "Shadow", &MainBubBackShadowEnable, kRedraw, 8, 196),
    Fill(379, 0x996633, kRedraw, 72, 220),
    Label(380, "Background:", 8, 232, 62),
    Number(381, &MainBubBackFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(382, "Opacity:", 136, 223, 74),
    Fill(383, 0x996633, kRedraw, 72, 266),
    Label(384, "Fill:", 8, 278, 62),
    Fill(385, 0x000000, kRedraw, 72, 312),
    Label(386, "Shadow:", 8, 324, 62),
    Number(387, &MainBubBackShadowOpacity, "1,256,256", kRedraw, 212, 244),
    Label(388, "Opacity:", 136, 247, 74),
    Number(389, &MainBubBackShadowSoftness, "0,40,10", kRedraw, 212, 268),
    Label(390, "Soft:", 136, 271, 74),
    Number(391, &MainBubBackShadowOffset, "1,256,256", kRedraw, 212, 292),
    Label(392, "Shadow offset:", 136, 295, 74),
    Well(393, kClassDirectionWell, &MainBubBackShadowDirection, kRedraw, 264, 284, 75, 75),
    Label(394, "Shadow Direction:", 264, 268, 120),
    Number(395, &MainBubBackFrames, "1,32760,64", kRedraw, 212, 316),
    Label(396, "Frames:", 136, 319, 74),
    Well(397, kClassColourWell, &MainBubBackOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(398, "Outline:", 264, 223, 62),
    Check(399, "Outline", &MainBubBackOutlineEnable, kRedraw, 104, 196),
    Well(400, kClassColourWell, &MainBubBackBubbleColor, kRedraw, 328, 244, 40, 20),
    Label(401, "Bubble:", 264, 247, 62),
    Number(402, &MainBubBackDrift, "0,99,25", kRedraw, 212, 340),
    Label(403, "Bubble drift:", 136, 343, 74),
    Number(404, &MainBubBackSize, "10,64,18", kRedraw, 212, 364),
    Label(405, "Bubble size:", 136, 367, 74),
    Number(406, &MainBubBackDensity, "8,256,32", kRedraw, 212, 388),
    Label(407, "Bubble density:", 136, 391, 74),
    Number(408, &MainBubBackSeed, "1000,32760,10632", kRedraw, 212, 412),
    Label(409, "Random seed:", 136, 415, 74),
    // Mirage
    Fill(410, 0xFFFFFF, kRedraw, 72, 220),
    Label(411, "Fill:", 8, 232, 62),
    Fill(412, 0x996633, kRedraw, 72, 266),
    Label(413, "Background:", 8, 278, 62),
    Number(414, &MainMirageFrames, "8,128,32", kRedraw, 212, 220),
    Label(415, "Frames:", 136, 223, 74),
    Number(416, &MainMirageRange, "8,80,32", kRedraw, 212, 244),
    Label(417, "Range:", 136, 247, 74),
    Well(418, kClassColourWell, &MainMirageOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(419, "Outline:", 264, 223, 62),
    Check(420, "Outline", &MainMirageOutlineEnable, kRedraw, 8, 196),
    // Stripes
    Check(421, "Shadow", &MainStripesShadowEnable, kRedraw, 8, 196),
    Well(422, kClassColourWell, &MainStripesFill1, kRedraw, 328, 220, 40, 20),
    Label(423, "Fill 1:", 264, 223, 62),
    Well(424, kClassColourWell, &MainStripesFill2, kRedraw, 328, 244, 40, 20),
    Label(425, "Fill 2:", 264, 247, 62),
    Number(426, &MainStripesFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(427, "Opacity:", 136, 223, 74),
    Fill(428, 0x4C4C4C, kRedraw, 72, 266),
    Label(429, "Background:", 8, 278, 62),
    Fill(430, 0xCCCCCC, kRedraw, 72, 220),
    Label(431, "Shadow:", 8, 232, 62),
    Number(432, &MainStripesShadowOpacity, "1,256,256", kRedraw, 212, 268),
    Label(433, "Opacity:", 136, 271, 74),
    Number(434, &MainStripesShadowSoftness, "0,40,10", kRedraw, 212, 292),
    Label(435, "Soft:", 136, 295, 74),
    Number(436, &MainStripesShadowOffset, "1,256,256", kRedraw, 212, 316),
    Label(437, "Shadow offset:", 136, 319, 74),
    Well(438, kClassDirectionWell, &MainStripesShadowDirection, kRedraw, 264, 308, 75, 75),
    Label(439, "Shadow Direction:", 264, 292, 120),
    Number(440, &MainStripesFrames, "1,32760,64", kRedraw, 212, 244),
    Label(441, "Frames:", 136, 247, 74),
    Well(442, kClassColourWell, &MainStripesOutlineColor, kRedraw, 328, 268, 40, 20),
    Label(443, "Outline:", 264, 271, 62),
    Check(444, "Outline", &MainStripesOutlineEnable, kRedraw, 104, 196),
    DropList(445, &MainStripesType, "Vertical;Diagonal Back;Diagonal Forward;Chevron;Split Chevron;Reverse Chevron;Reverse Split Chevron", kRedraw, 264, 405),
    Label(446, "Type:", 264, 389, 120),
    Well(447, kClassTwoWayWell, &MainStripesScrollDirection, kRedraw, 8, 328, 50, 25),
    Label(448, "Direction:", 8, 312, 120),
    // Anaconda
    Fill(449, 0x8DFCF9, kRedraw, 72, 220),
    Label(450, "Fill:", 8, 232, 62),
    Fill(451, 0x27764F, kRedraw, 72, 266),
    Label(452, "Background:", 8, 278, 62),
    Number(453, &MainWaveFrames, "8,128,32", kRedraw, 212, 220),
    Label(454, "Frames:", 136, 223, 74),
    Number(455, &MainWaveRange, "8,60,32", kRedraw, 212, 244),
    Label(456, "Range:", 136, 247, 74),
    Well(457, kClassColourWell, &MainWaveOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(458, "Outline:", 264, 223, 62),
    Check(459, "Outline", &MainWaveOutlineEnable, kRedraw, 8, 196),
    // Liquid Metal
    Check(460, "Shadow", &MainPingShadowEnable, kRedraw, 8, 196),
    Fill(461, 0x996633, kRedraw, 72, 220),
    Label(462, "Fill:", 8, 232, 62),
    Number(463, &MainPingFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(464, "Opacity:", 136, 223, 74),
    Fill(465, 0xE5E5E5, kRedraw, 72, 266),
    Label(466, "Background:", 8, 278, 62),
    Fill(467, 0x4C4C4C, kRedraw, 72, 312),
    Label(468, "Shadow:", 8, 324, 62),
    Number(469, &MainPingShadowOpacity, "1,256,256", kRedraw, 212, 244),
    Label(470, "Opacity:", 136, 247, 74),
    Number(471, &MainPingShadowSoftness, "0,40,10", kRedraw, 212, 268),
    Label(472, "Soft:", 136, 271, 74),
    Number(473, &MainPingShadowOffset, "1,256,256", kRedraw, 212, 292),
    Label(474, "Shadow offset:", 136, 295, 74),
    Well(475, kClassDirectionWell, &MainPingShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(476, "Shadow Direction:", 264, 244, 120),
    Number(477, &MainPingFrames, "1,32760,64", kRedraw, 212, 316),
    Label(478, "Frames:", 136, 319, 74),
    Well(479, kClassColourWell, &MainPingOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(480, "Outline:", 264, 223, 62),
    Check(481, "Outline", &MainPingOutlineEnable, kRedraw, 104, 196),
    // Hot Lead
    Fill(483, 0x4C4C4C, kRedraw, 72, 220),
    Label(484, "Fill:", 8, 232, 62),
    Number(485, &MainTeletypeFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(486, "Opacity:", 136, 223, 74),
    Fill(487, 0xDADADA, kRedraw, 72, 266),
    Label(488, "Background:", 8, 278, 62),
    Check(489, "Blank frame", &MainTeletypeBlankFrameEnable, kRedraw, 8, 196),
    Number(490, &MainTeletypeSigma, "15,50,25", kRedraw, 212, 244),
    Label(491, "Radius:", 136, 247, 74),
    Number(492, &MainTeletypeEmbossdepth, "4,15,5", kRedraw, 212, 268),
    Label(493, "Depth:", 136, 271, 74),
    // Chaos
    Check(494, "Shadow", &MainChaosShadowEnable, kRedraw, 8, 196),
    Fill(495, 0x996633, kRedraw, 72, 220),
    Label(496, "Fill:", 8, 232, 62),
    Number(497, &MainChaosFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(498, "Opacity:", 136, 223, 74),
    Fill(499, 0xCCCCCC, kRedraw, 72, 266),
    Label(500, "Background:", 8, 278, 62),
    Fill(501, 0x4C4C4C, kRedraw, 72, 312),
    Label(502, "Shadow:", 8, 324, 62),
    Number(503, &MainChaosShadowOpacity, "1,256,256", kRedraw, 212, 244),
    Label(504, "Opacity:", 136, 247, 74),
    Number(505, &MainChaosShadowSoftness, "0,40,10", kRedraw, 212, 268),
    Label(506, "Soft:", 136, 271, 74),
    Number(507, &MainChaosShadowOffset, "1,256,256", kRedraw, 212, 292),
    Label(508, "Shadow offset:", 136, 295, 74),
    Well(509, kClassDirectionWell, &MainChaosShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(510, "Shadow Direction:", 264, 244, 120),
    Number(511, &MainChaosFrames, "1,32760,64", kRedraw, 212, 316),
    Label(512, "Frames:", 136, 319, 74),
    Well(513, kClassColourWell, &MainChaosOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(514, "Outline:", 264, 223, 62),
    Check(515, "Outline", &MainChaosOutlineEnable, kRedraw, 104, 196),
    // Framework
    Check(516, "Shadow", &MainFrameworkShadowEnable, kRedraw, 8, 196),
    Fill(517, 0x996633, kRedraw, 72, 220),
    Label(518, "Fill:", 8, 232, 62),
    Number(519, &MainFrameworkFillOpacity, "1,256,256", kRedraw, 212, 220),
    Label(520, "Opacity:", 136, 223, 74),
    Fill(521, 0xE5E5E5, kRedraw, 72, 266),
    Label(522, "Background:", 8, 278, 62),
    Fill(523, 0x000000, kRedraw, 72, 312),
    Label(524, "Shadow:", 8, 324, 62),
    Number(525, &MainFrameworkShadowOpacity, "1,256,256", kRedraw, 212, 244),
    Label(526, "Opacity:", 136, 247, 74),
    Number(527, &MainFrameworkShadowSoftness, "0,40,10", kRedraw, 212, 268),
    Label(528, "Soft:", 136, 271, 74),
    Number(529, &MainFrameworkShadowOffset, "1,256,256", kRedraw, 212, 292),
    Label(530, "Shadow offset:", 136, 295, 74),
    Well(531, kClassDirectionWell, &MainFrameworkShadowDirection, kRedraw, 264, 260, 75, 75),
    Label(532, "Shadow Direction:", 264, 244, 120),
    Number(533, &MainFrameworkFrames, "8,64,20", kRedraw, 212, 316),
    Label(534, "Frames:", 136, 319, 74),
    Well(535, kClassColourWell, &MainFrameworkOutlineColor, kRedraw, 328, 220, 40, 20),
    Label(536, "Outline:", 264, 223, 62),
    Check(537, "Outline", &MainFrameworkOutlineEnable, kRedraw, 104, 196),
    Check(538, "Full frame", &MainFrameworkFullFrame, kRedraw, 200, 196),
};

ControlRow* ControlRowFind(int id) {
  for (ControlRow& row : ControlTable) {
    if (static_cast<int>(row.id) == id) return &row;
  }
  return nullptr;
}
