#pragma once

/// @file
/// The numbers that the whole library shares. Every value is meant to the bit: results of the
/// geometry depend on them, so none may be replaced by a "better" one (std::numbers::pi, 1e-8f).

namespace zel {

// --- delete tags of stored elements ------------------------------------------------------------

/// Fresh, destroyed or collapsed element: its slot holds no valid data.
inline constexpr signed char kTagNotAvailable = 30;
/// The element holds valid data. Only this value counts as live.
inline constexpr signed char kTagAvailable = 31;
/// The element was deleted and waits for its array's purge.
inline constexpr signed char kTagDeleted = 32;

// --- marks -----------------------------------------------------------------------------------

/// Unset or not-found index, and the mark of a hole in an integer array.
inline constexpr int kNoIndex = -2147483647;
/// Mark of a hole in a float array; also "minus infinity".
inline constexpr float kFloatMark = -1.0e18F;  // DD5E0B6B
/// Stands for infinity: vertical tangents, start of minimum searches.
inline constexpr float kInfinity = 1.0e18F;  // 5D5E0B6B
/// Liveness threshold just above the mark (kFloatMark x 0.9999).
inline constexpr float kLiveNearMark = -9.999e17F;  // DD5E05BC
/// Liveness threshold half way to the mark.
inline constexpr float kLiveHalfMark = -5.0e17F;  // DCDE0B6B

// --- tolerances ------------------------------------------------------------------------------

/// General tolerance for lengths, components, parameters and determinants.
inline constexpr float kTolerance = 0.0001F;  // 38D1B717
/// Tolerance for squared lengths and squared distances; deliberately not 1e-8F.
inline constexpr float kSquareTolerance = 9.999999e-9F;  // 322BCC76
/// Fine tolerance of the double-precision absolute value and of the square root.
inline constexpr double kFineTolerance = 1e-8;

/// Below this sum of components two nodes of a grid coincide.
inline constexpr float kGridDegenerate = 0.00099999993F;  // 3A83126E

// --- angles ----------------------------------------------------------------------------------

/// The library's pi, one unit in the last place below the nearest float.
inline constexpr float kPi = 3.1415925F;  // 40490FDA
/// Half of the library's pi.
inline constexpr float kHalfPi = 1.5707963F;  // 3FC90FDA
/// Twice the library's pi.
inline constexpr float kTwoPi = 6.283185F;  // 40C90FDA
/// Three times the library's pi.
inline constexpr float kThreePi = 9.424778F;  // 4116CBE4
/// Ends of an arc that lie closer together may mean a short arc or nearly a full turn.
inline constexpr float kSixDegrees = 0.10471975F;  // 3DD6774F
/// 1 / 180 in single precision.
inline constexpr float kPer180 = 0.0055555557F;  // 3BB60B61
/// 1 / pi in single precision.
inline constexpr float kPerPi = 0.3183099F;  // 3EA2F984

// --- limits ----------------------------------------------------------------------------------

/// Room for a path name, its terminator included.
inline constexpr unsigned kPathLimit = 260;

// --- mouse drags -------------------------------------------------------------------------------

/// Zoom factor per pixel of a horizontal drag.
inline constexpr float kZoomPerPixel = 0.002F;  // 3B03126F
/// Pixels of a horizontal drag that lie between the factors 0 and 1.
inline constexpr int kZoomOriginPixels = 500;
/// View units per pixel of a panning drag.
inline constexpr float kPanPerPixel = 0.02F;

// --- errors ------------------------------------------------------------------------------------

/// What kwErrorMessage() hears of an exhausted heap.
inline constexpr int kOutOfMemory = 40;

// --- file errors, thrown as plain int ----------------------------------------------------------

inline constexpr int kReadFailure = 107;     ///< input that cannot be read or is no such value
inline constexpr int kWriteFailure = 108;    ///< output that cannot be written
inline constexpr int kOpenFailure = 109;     ///< a file that cannot be opened
inline constexpr int kVersionFailure = 111;  ///< a file of another version than the one asked for

}  // namespace zel
