// The 21 effect rows in the order of the effect list, with each panel's
// control ids. A number edit is followed by its up-down companion (+ U); the
// panel's labels close the list.
#include "effects/anaconda.h"
#include "effects/background_fountain.h"
#include "effects/background_mural.h"
#include "effects/bubbles.h"
#include "effects/chaos.h"
#include "effects/doppler.h"
#include "effects/dragon_skin.h"
#include "effects/effect.h"
#include "effects/framework.h"
#include "effects/hot_lead.h"
#include "effects/inferno.h"
#include "effects/liquid_metal.h"
#include "effects/mirage.h"
#include "effects/odometer.h"
#include "effects/plasma_arc.h"
#include "effects/radial_fountain.h"
#include "effects/runway.h"
#include "effects/simple.h"
#include "effects/spiral.h"
#include "effects/stripes.h"
#include "effects/zaxis_fountain.h"
#include "fills/material.h"

namespace {

constexpr std::int32_t U = kUpDownIdOffset;

constexpr std::int32_t kAnacondaControls[] = {
    449, 451, 453, 453 + U, 455, 455 + U, 457, 459,
    // labels
    450, 452, 454, 456, 458, 0};

constexpr std::int32_t kBackgroundBubblesControls[] = {
    378, 399, 379, 381, 381 + U, 383, 385, 387, 387 + U, 389, 389 + U, 391, 391 + U, 393, 395, 395 + U,
    397, 400, 402, 402 + U, 404, 404 + U, 406, 406 + U, 408, 408 + U,
    // labels
    380, 382, 384, 386, 388, 390, 392, 394, 396, 398, 401, 403, 405, 407, 409, 0};

constexpr std::int32_t kBackgroundFountainControls[] = {
    334, 353, 335, 349, 349 + U, 339, 341, 341 + U, 343, 343 + U, 337, 345, 345 + U, 351, 347, 354,
    // labels
    336, 338, 340, 342, 344, 346, 348, 350, 352, 355, 0};

constexpr std::int32_t kBackgroundMuralControls[] = {
    356, 375, 357, 359, 361, 363, 363 + U, 365, 365 + U, 367, 367 + U, 369, 371, 371 + U, 373, 376,
    // labels
    358, 360, 362, 364, 366, 368, 370, 372, 374, 377, 0};

constexpr std::int32_t kBubblesControls[] = {
    161, 182, 162, 164, 164 + U, 166, 168, 170, 170 + U, 172, 172 + U, 174, 174 + U, 176, 178, 178 + U,
    180, 183, 185, 185 + U, 187, 187 + U, 189, 189 + U, 191, 191 + U,
    // labels
    163, 165, 167, 169, 171, 173, 175, 177, 179, 181, 184, 186, 188, 190, 192, 0};

constexpr std::int32_t kChaosControls[] = {
    494, 495, 497, 497 + U, 499, 501, 503, 503 + U, 505, 505 + U, 507, 507 + U, 509, 513, 515, 511, 511 + U,
    // labels
    496, 498, 500, 502, 504, 506, 508, 510, 512, 514, 0};

// 330 and 331 stand on the list with no control behind them.
constexpr std::int32_t kDopplerControls[] = {
    324, 326, 328, 328 + U, 332, 332 + U, 330, 331,
    // labels
    325, 327, 329, 333, 0};

constexpr std::int32_t kDragonSkinControls[] = {
    258, 279, 259, 261, 263, 265, 267, 267 + U, 269, 269 + U, 271, 271 + U, 273, 275, 275 + U, 277,
    // labels
    260, 262, 264, 266, 268, 270, 272, 274, 276, 278, 0};

constexpr std::int32_t kFrameworkControls[] = {
    516, 517, 519, 519 + U, 521, 523, 525, 525 + U, 527, 527 + U,
    529, 529 + U, 531, 535, 537, 533, 533 + U, 538,
    // labels
    518, 520, 522, 524, 526, 528, 530, 532, 534, 536, 0};

constexpr std::int32_t kHotLeadControls[] = {
    483, 485, 485 + U, 487, 489, 490, 490 + U, 492, 492 + U,
    // labels
    484, 486, 488, 491, 493, 0};

constexpr std::int32_t kInfernoControls[] = {
    300, 317, 303, 301, 305, 305 + U, 307, 307 + U, 309, 309 + U, 311, 313, 313 + U, 315, 318, 320, 322,
    // labels
    302, 304, 306, 308, 310, 312, 314, 316, 319, 321, 323, 0};

constexpr std::int32_t kLiquidMetalControls[] = {
    460, 481, 461, 463, 463 + U, 465, 467, 469, 469 + U,
    471, 471 + U, 473, 473 + U, 475, 477, 477 + U, 479,
    // labels
    462, 464, 466, 468, 470, 472, 474, 476, 478, 480, 0};

constexpr std::int32_t kMirageControls[] = {
    410, 412, 414, 414 + U, 416, 416 + U, 418, 420,
    // labels
    411, 413, 415, 417, 419, 0};

constexpr std::int32_t kOdometerControls[] = {
    150, 151, 158, 144, 146, 148, 148 + U,
    152, 152 + U, 154, 154 + U, 156,
    // labels
    145, 147, 149, 153, 155, 157, 0};

constexpr std::int32_t kPlasmaArcControls[] = {
    193, 214, 225, 194, 196, 196 + U, 198, 200, 202, 202 + U,
    204, 204 + U, 206, 206 + U, 208, 210, 210 + U, 212, 215,
    217, 217 + U, 219, 219 + U, 221, 221 + U, 223, 223 + U,
    // labels
    195, 197, 199, 201, 203, 205, 207, 209, 211, 213, 216, 218, 220, 222, 224, 0};

constexpr std::int32_t kRadialFountainControls[] = {
    280, 299, 281, 295, 295 + U, 285, 287, 287 + U, 289, 289 + U, 283, 291, 291 + U, 297, 293,
    // labels
    282, 284, 286, 288, 290, 292, 294, 296, 298, 0};

constexpr std::int32_t kRunwayControls[] = {
    238, 226, 228, 230, 230 + U, 232, 232 + U, 234, 234 + U, 236,
    // labels
    227, 229, 231, 233, 235, 237, 0};

constexpr std::int32_t kSimpleControls[] = {
    100, 121, 101, 103, 103 + U, 117, 117 + U, 107, 109, 109 + U,
    111, 111 + U, 105, 113, 113 + U, 119, 122, 115,
    // labels
    102, 104, 106, 108, 110, 112, 114, 116, 118, 120, 123, 0};

constexpr std::int32_t kSpiralControls[] = {
    241, 243, 245, 255, 247, 247 + U, 249, 249 + U,
    251, 251 + U, 253, 253 + U, 257,
    // labels
    242, 244, 246, 248, 250, 252, 254, 256, 0};

constexpr std::int32_t kStripesControls[] = {
    421, 444, 422, 424, 426, 426 + U, 440, 440 + U, 430, 432, 432 + U,
    434, 434 + U, 428, 436, 436 + U, 442, 438, 445, 447,
    // labels
    423, 425, 427, 429, 431, 433, 435, 437, 439, 441, 443, 446, 448, 0};

constexpr std::int32_t kZAxisFountainControls[] = {
    124, 143, 125, 139, 139 + U, 129, 131, 131 + U, 133, 133 + U, 127, 135, 135 + U, 141, 137,
    // labels
    126, 128, 130, 132, 134, 136, 138, 140, 142, 0};

// The background-colour callback of a row: one function, but for the id of
// the row's background fill control.
template <std::int32_t fillId>
std::int32_t BackgroundColourOf(const Controls* dialog) {
  return EffectBackgroundColourOf(dialog, fillId);
}

}  // namespace

// The effects' callbacks are filled in as each effect is written.
const EffectEntry EffectTable[kEffectCount] = {
    {"Anaconda", AnacondaPreview, AnacondaBuild, BackgroundColourOf<451>, kAnacondaControls, nullptr, "MainWave", 451},
    {"Background Bubbles", BackgroundBubblesPreview, BackgroundBubblesBuild, BackgroundColourOf<383>, kBackgroundBubblesControls, nullptr, "MainBubBack", 383},
    {"Background Fountain", BackgroundFountainPreview, BackgroundFountainBuild, BackgroundColourOf<337>, kBackgroundFountainControls, nullptr, "MainFountBack", 337},
    {"Background Mural", MuralPreview, MuralBuild, BackgroundColourOf<359>, kBackgroundMuralControls, nullptr, "MainMural", 359},
    {"Bubbles", BubblesPreview, BubblesBuild, BackgroundColourOf<166>, kBubblesControls, nullptr, "MainBubble", 166},
    {"Chaos", ChaosPreview, ChaosBuild, BackgroundColourOf<499>, kChaosControls, nullptr, "MainChaos", 499},
    {"Doppler", DopplerPreview, DopplerBuild, BackgroundColourOf<326>, kDopplerControls, nullptr, "MainZoom", 326},
    {"Dragon Skin", DragonSkinPreview, DragonSkinBuild, BackgroundColourOf<263>, kDragonSkinControls, nullptr, "MainDragon", 263},
    {"Framework", FrameworkPreview, FrameworkBuild, BackgroundColourOf<521>, kFrameworkControls, nullptr, "MainFramework", 521},
    {"Hot Lead", HotLeadPreview, HotLeadBuild, BackgroundColourOf<487>, kHotLeadControls, nullptr, "MainTeletype", 487},
    {"Inferno", InfernoPreview, InfernoBuild, BackgroundColourOf<301>, kInfernoControls, nullptr, "MainInferno", 301},
    {"Liquid Metal", LiquidMetalPreview, LiquidMetalBuild, BackgroundColourOf<465>, kLiquidMetalControls, nullptr, "MainPing", 465},
    {"Mirage", MiragePreview, MirageBuild, BackgroundColourOf<412>, kMirageControls, nullptr, "MainMirage", 412},
    {"Odometer", OdometerPreview, OdometerBuild, BackgroundColourOf<146>, kOdometerControls, nullptr, "MainOdometer", 146},
    {"Plasma Arc", PlasmaArcPreview, PlasmaArcBuild, BackgroundColourOf<198>, kPlasmaArcControls, nullptr, "MainArc", 198},
    {"Radial Fountain", RadialFountainPreview, RadialFountainBuild, BackgroundColourOf<283>, kRadialFountainControls, nullptr, "MainRadial", 283},
    {"Runway", RunwayPreview, RunwayBuild, BackgroundColourOf<228>, kRunwayControls, nullptr, "MainRunway", 228},
    {"Simple", SimplePreview, SimpleBuild, BackgroundColourOf<105>, kSimpleControls, nullptr, "MainSimple", 105},
    {"Spiral", SpiralPreview, SpiralBuild, BackgroundColourOf<245>, kSpiralControls, nullptr, "MainSpiral", 245},
    {"Stripes", StripesPreview, StripesBuild, BackgroundColourOf<428>, kStripesControls, nullptr, "MainStripes", 428},
    {"Z-Axis Fountain", ZAxisFountainPreview, ZAxisFountainBuild, BackgroundColourOf<127>, kZAxisFountainControls, nullptr, "MainFountain", 127},
};
