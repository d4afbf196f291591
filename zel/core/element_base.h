#pragma once

/// @file
/// The common base of everything that an element array stores.

#include <cstdio>

#include "zel/core/api.h"
#include "zel/core/constants.h"

class KwIOCL;

namespace zel {
/// Defaulted last argument of an element's operation that hides one of KwBaseCL's virtual ones
/// without overriding it. Callers leave it out.
struct NotOverriding {};
}  // namespace zel

/// A storable element: one status byte and the operations by which its array reads and writes it.
///
/// The delete tag is 30 (not available: fresh, destroyed or collapsed), 31 (available) or
/// 32 (deleted). An element is live when the tag is exactly 31. The numbers are stored in files.
/// The texture walk also uses 37 and 38 as working marks (see `TriangleArr::GetTexCoordM`).
class ZEL_API KwBaseCL {
 public:
  /// Tag 30.
  KwBaseCL() : deleteTag_(zel::kTagNotAvailable) {}
  /// @param tag the delete tag, any value.
  explicit KwBaseCL(char tag) : deleteTag_(static_cast<signed char>(tag)) {}
  /// Copies the delete tag.
  KwBaseCL(const KwBaseCL& other) = default;
  /// Copies the delete tag.
  KwBaseCL& operator=(const KwBaseCL& other) = default;

  /// Reads the delete tag from a stream. @throws int 107 when it cannot be read.
  virtual void FmInputZelFileM(KwIOCL* io);
  /// Writes the delete tag to a stream. @throws int 108 when it cannot be written.
  virtual void FmOutputZelFileM(KwIOCL* io) const;
  /// Reads the delete tag from a plain text file and skips the rest of its line. @return 1.
  virtual int FmReadZelFileM(FILE* file);
  /// Writes the delete tag, five columns wide, on a line of a plain text file. @return 1.
  virtual int FmWriteZelFileM(FILE* file) const;
  /// Hook for resetting an element; does nothing. @return 1.
  virtual int InitialM();
  /// Sets the tag back to 30.
  virtual ~KwBaseCL() { deleteTag_ = zel::kTagNotAvailable; }

  /// @return the delete tag itself, not a truth value: compare it with 31.
  [[nodiscard]] ZEL_API_INLINE char IsAvailableM() const { return static_cast<char>(deleteTag_); }
  /// @param tag the new delete tag, any value.
  ZEL_API_INLINE void SetDeleteTagM(char tag) { deleteTag_ = static_cast<signed char>(tag); }

 protected:
  /// Marks the element deleted (32).
  ZEL_API_INLINE void DelItemM() { deleteTag_ = zel::kTagDeleted; }

 private:
  signed char deleteTag_;
};
