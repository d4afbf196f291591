#pragma once

/// @file
/// Helpers for the window side of a modelling program: time, sound, the mouse cursor, what a mouse
/// drag means for the view, and edit fields bound to numbers. All are stateless and reach the
/// system through zel::platform().

#include <cstdint>

#include "zel/core/api.h"
#include "zel/core/desktop_types.h"

/// @return the system's millisecond count; wraps at 2^32.
[[nodiscard]] ZEL_API std::uint32_t kwGetMMTickCount();

/// @param startTick an earlier kwGetMMTickCount().
/// @return milliseconds since then, right across one wrap of the count.
[[nodiscard]] ZEL_API std::uint32_t slGetSystemTimeAndElapse(std::uint32_t startTick);

/// Plays or stops a wave file; never waits for its end and reports no failure.
/// @param file name of the file; for the modes 1 and 2 an empty or null name does nothing.
/// @param mode 1: play in a loop; 2: play once; 3: stop what is playing, whatever `file` is; any
///             other value does nothing.
ZEL_API void slPlayWavSoundM(const char* file, int mode);

/// Glides the mouse cursor to a place in eight equal steps, so that the eye can follow.
///
/// Each step waits (|dx| + |dy|) / 150 whole milliseconds, so the call blocks for about
/// 8 x distance / 150 ms. The cursor stays where it is when the Shift key is down or was pressed
/// since it was last asked for.
/// @param target pixels of the screen.
ZEL_API void slSetCursorPos(POINT target);

/// Zoom factor of a horizontal mouse drag; y takes no part.
///
/// The scale at a position is 0.002 x (its distance to the right of `origin` + 500 pixels), at
/// least 0.0001; the factor is the scale at `current` divided by that at `previous`. 500 pixels to
/// the right of the origin doubles what the origin shows.
[[nodiscard]] ZEL_API float slGetScale(CPoint origin, CPoint previous, CPoint current);

/// Shift of the view for a mouse drag: 0.02 view units a pixel, y growing upward.
/// @param[out] dx, dy the shift; 0.02 x (to.x - from.x) and -0.02 x (to.y - from.y).
ZEL_API void slGetPanDistance(CPoint from, CPoint to, float* dx, float* dy);

/// A position as fractions of a window's client area.
/// @param[out] fx, fy x / width and y / height, in [0, 1] inside the window; infinite or NaN for a
///                    window without extent.
/// @param x, y        pixels from the upper left corner of the client area.
ZEL_API void slGetRealPosM(const CWnd* window, float* fx, float* fy, int x, int y);

/// Exchanges an edit field with an integer variable.
///
/// When loading, the value is written into the field. When saving, at most 32 characters of the
/// field are read as a decimal integer with blanks and tabs around it; text that is not one makes
/// the context fail and leaves the variable unchanged. So does the text "-0", a minus sign for an
/// unsigned variable, and a value beyond the signed 16-bit range for a 16-bit variable. Values
/// beyond 32 bits are limited to them.
/// @param context the transfer and its direction.
/// @param control identifier of the edit field.
/// @param format  '%', optionally 'l' or 's', then 'd' (signed) or another letter (unsigned). 's'
///                marks a 16-bit variable, else it has 32 bits.
/// @param prompt  taken for completeness; not shown.
/// @param ...     loading: the value, as int or unsigned int. Saving: a pointer to the variable.
ZEL_API void slDDX_TextWithFormat(CDataExchange* context, int control, const char* format,
                                  unsigned int prompt, ...);

/// Exchanges an edit field with a floating-point variable.
/// @param context  the transfer and its direction.
/// @param control  identifier of the edit field.
/// @param variable saving: receives the number; a `float` when `digits` is 6, for any other number
///                 of digits a `double`. Unchanged when the text is not a number, which makes the
///                 context fail.
/// @param value    loading: the number to show.
/// @param digits   loading: significant digits, as printf's "%.*g" takes them.
ZEL_API void slTextFloatFormat(CDataExchange* context, int control, void* variable, double value,
                               int digits);
