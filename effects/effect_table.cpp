// The 21 effect rows in the order of the effect list, with each panel's
// control ids. A number edit is followed by its up-down companion (+ U).
#include "effects/effect.h"

namespace {

constexpr std::int32_t U = kUpDownIdOffset;

constexpr std::int32_t kAnacondaControls[] = {449, 451, 453, 453 + U, 455, 455 + U, 457, 459, 0};

constexpr std::int32_t kBackgroundBubblesControls[] = {
    378, 399, 379, 381, 381 + U, 383, 385, 387, 387 + U, 389, 389 + U, 391, 391 + U, 393, 395, 395 + U,
    397, 400, 402, 402 + U, 404, 404 + U, 406, 406 + U, 408, 408 + U, 0};

constexpr std::int32_t kBackgroundFountainControls[] = {
    334, 353, 335, 349, 349 + U, 339, 341, 341 + U, 343, 343 + U, 337, 345, 345 + U, 351, 347, 354, 0};

constexpr std::int32_t kBackgroundMuralControls[] = {
    356, 375, 357, 359, 361, 363, 363 + U, 365, 365 + U, 367, 367 + U, 369, 371, 371 + U, 373, 376, 0};

constexpr std::int32_t kBubblesControls[] = {
    161, 182, 162, 164, 164 + U, 166, 168, 170, 170 + U, 172, 172 + U, 174, 174 + U, 176, 178, 178 + U,
    180, 183, 185, 185 + U, 187, 187 + U, 189, 189 + U, 191, 191 + U, 0};

constexpr std::int32_t kChaosControls[] = {
    494, 495, 497, 497 + U, 499, 501, 503, 503 + U, 505, 505 + U, 507, 507 + U, 509, 513, 515, 511, 511 + U, 0};

// 330 and 331 stand on the list with no control behind them.
constexpr std::int32_t kDopplerControls[] = {324, 326, 328, 328 + U, 332, 332 + U, 330, 331, 0};

constexpr std::int32_t kDragonSkinControls[] = {
    258, 279, 259, 261, 263, 265, 267, 267 + U, 269, 269 + U, 271, 271 + U, 273, 275, 275 + U, 277, 0};

constexpr std::int32_t kFrameworkControls[] = {516, 517, 519, 519 + U, 521, 523, 525, 525 + U, 527, 527 + U,
                                               529, 529 + U, 531, 535, 537, 533, 533 + U, 538, 0};

constexpr std::int32_t kHotLeadControls[] = {483, 485, 485 + U, 487, 489, 490, 490 + U, 492, 492 + U, 0};

constexpr std::int32_t kInfernoControls[] = {
    300, 317, 303, 301, 305, 305 + U, 307, 307 + U, 309, 309 + U, 311, 313, 313 + U, 315, 318, 320, 322, 0};

constexpr std::int32_t kLiquidMetalControls[] = {460, 481, 461, 463, 463 + U, 465, 467, 469, 469 + U,
                                                 471, 471 + U, 473, 473 + U, 475, 477, 477 + U, 479, 0};

constexpr std::int32_t kMirageControls[] = {410, 412, 414, 414 + U, 416, 416 + U, 418, 420, 0};

constexpr std::int32_t kOdometerControls[] = {150, 151, 158, 144, 146, 148, 148 + U,
                                              152, 152 + U, 154, 154 + U, 156, 0};

constexpr std::int32_t kPlasmaArcControls[] = {193, 214, 225, 194, 196, 196 + U, 198, 200, 202, 202 + U,
                                               204, 204 + U, 206, 206 + U, 208, 210, 210 + U, 212, 215,
                                               217, 217 + U, 219, 219 + U, 221, 221 + U, 223, 223 + U, 0};

constexpr std::int32_t kRadialFountainControls[] = {
    280, 299, 281, 295, 295 + U, 285, 287, 287 + U, 289, 289 + U, 283, 291, 291 + U, 297, 293, 0};

constexpr std::int32_t kRunwayControls[] = {238, 226, 228, 230, 230 + U, 232, 232 + U, 234, 234 + U, 236, 0};

constexpr std::int32_t kSimpleControls[] = {100, 121, 101, 103, 103 + U, 117, 117 + U, 107, 109, 109 + U,
                                            111, 111 + U, 105, 113, 113 + U, 119, 122, 115, 0};

constexpr std::int32_t kSpiralControls[] = {241, 243, 245, 255, 247, 247 + U, 249, 249 + U,
                                            251, 251 + U, 253, 253 + U, 257, 0};

constexpr std::int32_t kStripesControls[] = {421, 444, 422, 424, 426, 426 + U, 440, 440 + U, 430, 432, 432 + U,
                                             434, 434 + U, 428, 436, 436 + U, 442, 438, 445, 447, 0};

constexpr std::int32_t kZAxisFountainControls[] = {
    124, 143, 125, 139, 139 + U, 129, 131, 131 + U, 133, 133 + U, 127, 135, 135 + U, 141, 137, 0};

}  // namespace

// The effects' callbacks are filled in as each effect is written.
const EffectEntry EffectTable[kEffectCount] = {
    {"Anaconda", nullptr, nullptr, nullptr, kAnacondaControls, nullptr, "MainWave", 451},
    {"Background Bubbles", nullptr, nullptr, nullptr, kBackgroundBubblesControls, nullptr, "MainBubBack", 383},
    {"Background Fountain", nullptr, nullptr, nullptr, kBackgroundFountainControls, nullptr, "MainFountBack", 337},
    {"Background Mural", nullptr, nullptr, nullptr, kBackgroundMuralControls, nullptr, "MainMural", 359},
    {"Bubbles", nullptr, nullptr, nullptr, kBubblesControls, nullptr, "MainBubble", 166},
    {"Chaos", nullptr, nullptr, nullptr, kChaosControls, nullptr, "MainChaos", 499},
    {"Doppler", nullptr, nullptr, nullptr, kDopplerControls, nullptr, "MainZoom", 326},
    {"Dragon Skin", nullptr, nullptr, nullptr, kDragonSkinControls, nullptr, "MainDragon", 263},
    {"Framework", nullptr, nullptr, nullptr, kFrameworkControls, nullptr, "MainFramework", 521},
    {"Hot Lead", nullptr, nullptr, nullptr, kHotLeadControls, nullptr, "MainTeletype", 487},
    {"Inferno", nullptr, nullptr, nullptr, kInfernoControls, nullptr, "MainInferno", 301},
    {"Liquid Metal", nullptr, nullptr, nullptr, kLiquidMetalControls, nullptr, "MainPing", 465},
    {"Mirage", nullptr, nullptr, nullptr, kMirageControls, nullptr, "MainMirage", 412},
    {"Odometer", nullptr, nullptr, nullptr, kOdometerControls, nullptr, "MainOdometer", 146},
    {"Plasma Arc", nullptr, nullptr, nullptr, kPlasmaArcControls, nullptr, "MainArc", 198},
    {"Radial Fountain", nullptr, nullptr, nullptr, kRadialFountainControls, nullptr, "MainRadial", 283},
    {"Runway", nullptr, nullptr, nullptr, kRunwayControls, nullptr, "MainRunway", 228},
    {"Simple", nullptr, nullptr, nullptr, kSimpleControls, nullptr, "MainSimple", 105},
    {"Spiral", nullptr, nullptr, nullptr, kSpiralControls, nullptr, "MainSpiral", 245},
    {"Stripes", nullptr, nullptr, nullptr, kStripesControls, nullptr, "MainStripes", 428},
    {"Z-Axis Fountain", nullptr, nullptr, nullptr, kZAxisFountainControls, nullptr, "MainFountain", 127},
};
