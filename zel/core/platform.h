#pragma once

/// @file
/// The seam to the operating system and the desktop. The library asks everything that differs
/// between systems through one object, which an application or a test may replace.

#include <cstdint>
#include <string>

#include "zel/core/api.h"

namespace zel {

/// A moment in Coordinated Universal Time.
struct UtcTime {
  int year;    ///< for example 2026
  int month;   ///< 1 to 12
  int day;     ///< 1 to 31
  int hour;    ///< 0 to 23
  int minute;  ///< 0 to 59
};

/// A position on the screen in pixels, y growing downward.
struct ScreenPosition {
  std::int32_t x;  ///< from the left edge of the screen
  std::int32_t y;  ///< from its upper edge
};

/// How Platform::playSound() plays.
enum class SoundMode { kStop, kOnce, kLooped };

/// What a file's attributes allow; `kNoFile` when there is no such file.
enum class FileAccess { kNoFile, kReadOnly, kWritable };

/// What stands behind a path.
enum class PathKind { kNothing, kFile, kDirectory };

/// Services of the operating system and the desktop. The base class is the default
/// implementation of the system the library was built for; override what should differ.
/// File names are narrow strings as the application gave them.
class ZEL_API Platform {
 public:
  Platform();
  virtual ~Platform();
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;

  // --- time ---
  /// @return milliseconds since an arbitrary start, wrapping at 2^32.
  virtual std::uint32_t tickCount();
  /// @return the present moment.
  virtual UtcTime utcTime();
  /// Returns no sooner than after this time.
  virtual void sleep(std::uint32_t milliseconds);

  // --- desktop ---
  /// @return whether the Shift key is down or was pressed since the last query.
  virtual bool shiftKeyPressed();
  /// @return where the mouse cursor is; (0, 0) without a desktop.
  virtual ScreenPosition cursorPosition();
  /// Moves the mouse cursor; does nothing without a desktop.
  virtual void setCursorPosition(ScreenPosition position);
  /// Plays a wave file without waiting for its end. `file` is ignored for `kStop`.
  virtual void playSound(const char* file, SoundMode mode);
  /// Shows a notice and returns when the user has closed it.
  /// @param gbkText zero-terminated text in the GBK code page; null counts as empty. See
  ///                noticeInUtf8().
  virtual void showMessage(const char* gbkText);

  // --- files ---
  /// Looks a path up. '*' and '?' in its last part match as patterns; a trailing separator
  /// finds nothing.
  virtual PathKind findPath(const char* path);
  /// @return what the attributes of a file or directory allow; they are not tried out.
  virtual FileAccess fileAccess(const char* path);
  /// @param access `kReadOnly` or `kWritable`. @return false when it could not be set.
  virtual bool setFileAccess(const char* path, FileAccess access);
  /// Creates one directory. @return false when it could not be created.
  virtual bool createDirectory(const char* path);
  /// Copies a file, replacing an existing target. @return false when it could not be copied.
  virtual bool copyFile(const char* source, const char* target);
  /// @return the present drives, bit 0 standing for "A:"; 0 on systems without drive letters.
  virtual std::uint32_t presentDrives();
};

/// @return the services in force.
ZEL_API Platform& platform();

/// Puts in other services.
/// @param services stays the caller's and must outlive its use; null restores the default.
ZEL_API void setPlatform(Platform* services);

/// A notice of Platform::showMessage() as desktops of today want it.
/// @param gbkText text in the GBK code page, optionally followed by ": " and a file name, which may
///                be UTF-8 or GBK; null counts as empty.
/// @return UTF-8; a file name that is UTF-8 already stays as it is, and bytes that mean nothing in
///         either code become '?'.
[[nodiscard]] ZEL_API std::string noticeInUtf8(const char* gbkText);

}  // namespace zel
