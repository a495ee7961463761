// Isotemperature lines in the CIE 1960 UCS diagram: reciprocal temperature in 1/K (0 to 100 mired every
// 10, then to 600 mired every 25), u and v on the Planckian locus, slope. Source: A. R. Robertson, J. Opt.
// Soc. Am. 58 (1968) 1528; Wyszecki and Stiles, Color Science, 2nd edition, with u = 0.24792 at 325 mired.
// Kept on purpose: the first reciprocal is the smallest normal double instead of 0, so that nothing divides
// by zero (isotemperatureLines.firstReciprocal_isTheSmallestNormalDouble).
// Made by tools/generators/generate_tables.cpp from data/isotemperature_lines.csv.
#include "spectral/isotemperature_lines.h"

// clang-format off

namespace qxcms::detail {

const IsotemperatureLine kIsotemperatureLines[kIsotemperatureLineCount] = {
    {2.2250738585072014e-308, 0.18006, 0.26352, -0.24341},
    {                  10e-6, 0.18066, 0.26589, -0.25479},
    {                  20e-6, 0.18133, 0.26846, -0.26876},
    {                  30e-6, 0.18208, 0.27119, -0.28539},
    {                  40e-6, 0.18293, 0.27407, -0.30470},
    {                  50e-6, 0.18388, 0.27709, -0.32675},
    {                  60e-6, 0.18494, 0.28021, -0.35156},
    {                  70e-6, 0.18611, 0.28342, -0.37915},
    {                  80e-6, 0.18740, 0.28668, -0.40955},
    {                  90e-6, 0.18880, 0.28997, -0.44278},
    {                 100e-6, 0.19032, 0.29326, -0.47888},
    {                 125e-6, 0.19462, 0.30141, -0.58204},
    {                 150e-6, 0.19962, 0.30921, -0.70471},
    {                 175e-6, 0.20525, 0.31647, -0.84901},
    {                 200e-6, 0.21142, 0.32312,  -1.0182},
    {                 225e-6, 0.21807, 0.32909,  -1.2168},
    {                 250e-6, 0.22511, 0.33439,  -1.4512},
    {                 275e-6, 0.23247, 0.33904,  -1.7298},
    {                 300e-6, 0.24010, 0.34308,  -2.0637},
    {                 325e-6, 0.24792, 0.34655,  -2.4681},
    {                 350e-6, 0.25591, 0.34951,  -2.9641},
    {                 375e-6, 0.26400, 0.35200,  -3.5814},
    {                 400e-6, 0.27218, 0.35407,  -4.3633},
    {                 425e-6, 0.28039, 0.35577,  -5.3762},
    {                 450e-6, 0.28863, 0.35714,  -6.7262},
    {                 475e-6, 0.29685, 0.35823,  -8.5955},
    {                 500e-6, 0.30505, 0.35907,  -11.324},
    {                 525e-6, 0.31320, 0.35968,  -15.628},
    {                 550e-6, 0.32129, 0.36011,  -23.325},
    {                 575e-6, 0.32931, 0.36038,  -40.770},
    {                 600e-6, 0.33724, 0.36051,  -116.45},
};

} // namespace qxcms::detail

// clang-format on
