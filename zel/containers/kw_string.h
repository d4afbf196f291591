#pragma once

/// @file
/// The storable text.

#include "zel/containers/char_arr.h"
#include "zel/core/element_base.h"

/// A storable element that holds one text of bytes.
///
/// The text is kept exactly as it was stored: AddStringM() keeps a terminating zero with it,
/// SetValueM() any bytes. Copies are deep. Its file operations are those of KwBaseCL and carry the
/// delete tag alone.
class ZEL_API KwStringCL : public KwBaseCL {
 public:
  /// Tag 30, no text.
  KwStringCL();
  /// @param tag the delete tag.
  explicit KwStringCL(char tag);
  /// Copies tag and text.
  KwStringCL(const KwStringCL& other);
  /// Takes the text over; `other` keeps its tag and has no text.
  KwStringCL(KwStringCL&& other) noexcept;
  /// Copies tag and text.
  KwStringCL& operator=(const KwStringCL& other);
  /// Takes tag and text over; `other` keeps its tag and has no text.
  KwStringCL& operator=(KwStringCL&& other) noexcept;
  ~KwStringCL() override;

  /// @return the bytes stored, a stored terminating zero included.
  [[nodiscard]] int GetLengthM() const;
  /// Marks the element deleted (32); the text stays.
  void DelItemM();
  /// Makes the text exactly `count` bytes; below 1 it becomes empty. The tag stays.
  void SetValueM(int count, const char* bytes);
  /// Replaces (does not append to) the text by `text` and its terminating zero. @return 1.
  int AddStringM(const char* text);
  /// @param[out] count bytes stored. @param[out] out those bytes, without a zero of their own.
  void GetValueM(int* count, char* out) const;
  /// @param[out] out the text up to its first zero, or all of it and a zero; untouched when there
  ///             is none. Room for GetLengthM() + 1 characters.
  /// @return 0 when there is no text, otherwise 1.
  int GetStringM(char* out) const;
  /// Compares as many bytes as are stored with the beginning of `text`. So a text stored with its
  /// zero equals only itself, one without matches every text that begins with it, and an element
  /// without text matches everything. Bytes behind the zero of `text` count as 0.
  /// @param count ignored. @param text zero-terminated; null counts as empty.
  /// @return 0 equal, -1 when `text` has the smaller byte (unsigned) at the first difference, 1
  ///         otherwise.
  [[nodiscard]] int CompareStrM(int count, const char* text) const;
  /// @return the stored bytes, null when there are none.
  operator const char*() const;  // NOLINT(google-explicit-constructor): made to convert

 private:
  CharArr text_;
};
