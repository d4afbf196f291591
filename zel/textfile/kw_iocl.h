#pragma once

/// @file
/// The formatted stream through which every class of the library stores itself.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

#include "zel/core/api.h"

namespace zel {
class TextScanner;
enum class LookAhead;
}  // namespace zel

/// One stdio stream and everything needed to write and read values in a fixed textual layout, or
/// as raw little-endian bytes when it was opened with a mode that contains 'b'.
///
/// Failures of the stream are thrown as a plain `int`: 107 when a read did not deliver what was
/// asked, 108 when a write failed, 109 when a file could not be opened. Nothing is rolled back:
/// values read before a failing field stay stored. Reads without a stream in hand throw 107,
/// writes 108.
///
/// Nothing is kept in a private buffer between two calls, so the caller may use the stream of
/// GetFileDescriptM() with stdio calls of its own in between. Numbers are written and read with a
/// decimal point whatever locale the process has set, and a line may end in LF or CRLF on reading.
///
/// A copy shares the stream with its source without owning it: only the object that opened or
/// adopted the stream closes it, and its copies then have none either.
class ZEL_API KwIOCL {
 public:
  /// No stream; default formats; separator ", "; lines end by themselves; version number
  /// -2147483647, which stands for "never set".
  KwIOCL();
  /// Copies everything, sharing the stream of `other` without owning it.
  KwIOCL(const KwIOCL& other);
  /// Closes the stream in hand, then copies everything, sharing the other's stream.
  /// @throws int 108 as CloseM(), after that.
  KwIOCL& operator=(const KwIOCL& other);
  /// Closes the stream; a failure to write the rest is lost here, so call CloseM() before.
  virtual ~KwIOCL();

  // --- opening and closing ---

  /// Closes the stream in hand and opens a file.
  /// @param mode as of `fopen`; with a 'b' anywhere in it the stream is binary.
  /// @return 1.
  /// @throws int 109 when the file cannot be opened or is a directory; there is then no stream.
  /// @throws int 108 as CloseM() for the stream that was in hand; the new one is open then.
  int OpenM(const char* fileName, const char* mode);
  /// Closes the stream if there is one; may be called any number of times.
  /// @return 1.
  /// @throws int 108 when anything that was written to the stream since it was opened, by whatever
  ///         call, did not arrive; it is closed then. A stream that was only read throws nothing.
  int CloseM();
  /// Takes over an open stream, closing the one in hand. The kind of stream (text or binary) and
  /// the measured file length stay as they were, so EofM() on a fresh object says 1.
  /// @param file becomes the object's; null leaves it without a stream.
  /// @return 1.
  /// @throws int 108 as CloseM() for the stream that was in hand; the new one is taken over then.
  /// @throws int 109 when memory for it is refused; `file` is closed then.
  int CreateIndirectlyM(FILE* file, const char* fileName, const char* versionStr, int versionNum);

  // --- names and versions; longer texts are cut to 259 and 99 characters ---

  /// The name alone: no stream is opened or closed.
  void SetFileNameM(const char* fileName);
  /// @return the name, zero-terminated; empty when there is none. Valid as long as the object.
  [[nodiscard]] const char* GetFileNameM() const;
  /// Writes the directory part of the file name (see slGetPathAndName()) to a buffer of 260.
  void GetFilePathM(char* path) const;
  /// The text that tells the version of the file.
  void SetVersionStringM(const char* version);
  /// @return that text, zero-terminated. Valid as long as the object.
  [[nodiscard]] const char* GetVersionStrM() const;
  /// The number that tells the version of the file.
  void SetVersionNumM(int number);
  /// @return 1.
  int GetVersionNumM(int* number) const;
  /// @return 0 for a text stream, 1 for a binary one.
  [[nodiscard]] int GetIoTypeM() const;
  /// @return the stream in hand, null without one. It stays the object's.
  [[nodiscard]] FILE* GetFileDescriptM() const;

  // --- layout ---

  /// Restores the default format of one slot, of all for -1; other numbers do nothing.
  ///
  /// 0 char, 1 int, 2 real, 3 string, 4 two ints, 5 two reals, 6 three reals, 7 four reals,
  /// 8 pixel, 9 texture pixel, 10 four ints, 11 three ints; 12 to 19 serve no operation.
  /// @return 1.
  int LoadDefaultFmtM(int slot);
  /// Sets the printf format of one slot, cut to 49 characters. Other slots than 0 to 19 are
  /// ignored. The caller answers for a format that suits the slot's values. @return 1.
  int SetFmtM(int slot, const char* format);
  /// Writes the default int format, the separator and "%s" to a buffer of 110.
  ///
  /// It takes the default format, also when slot 1 was changed. A '%' of the separator is doubled.
  void GetFmtStrM(char* out) const;
  /// Sets what stands between two values on a line; ignored when it has 49 characters or more.
  void SetSeparatorM(const char* separator);
  /// Reads one character and drops it. @return 1. @throws int 107.
  int InputSeparatorM();
  /// @param on 1: every value written ends its line and every value read skips the rest of its
  ///           line; any other number: neither.
  void SetAutoNewLineM(int on);
  /// @return the number given to SetAutoNewLineM(); 1 on a new object.
  [[nodiscard]] int GetAutoNewLineM() const;

  // --- positioning; without a stream nothing happens ---

  /// Back to the start of the file.
  void RewindM();
  /// @param origin 0 start, 1 present position, 2 end.
  void SeekM(long offset, int origin);
  /// @return 1 when the end was met or the position is at or behind the length measured by
  ///         OpenM(), else 0; 1 without a stream.
  [[nodiscard]] int EofM() const;
  /// As EofM(), and also 1 when nothing is left of the file's present length.
  [[nodiscard]] int FinishedReadM() const;
  /// Drops the rest of the line; on a binary stream one string with its count.
  /// @return 1. @throws int 107.
  int SkipLineM();
  /// Calls SkipLineM() `count` times. @return 1.
  int SkipSomeLinesM(int count);
  /// Reads lines until one equals `text` as a whole (lines count up to 254 characters).
  /// @return 1 when found, the stream then stands behind that line; 0 at the end (as EofM()).
  int SearchStrM(const char* text);

  // --- output: return 1, throw int 108 ---
  //
  // Text: values are printed with their slot's format; with automatic new lines a "\n" follows.
  // Of the pointers of the nine-value calls the first must be given; null ones are skipped, the
  // others follow in order, each behind a separator. Binary: raw bytes of the first value only.

  /// Chars, printed as signed numbers.
  int OutputCM(const char* v1, const char* v2 = nullptr, const char* v3 = nullptr,
               const char* v4 = nullptr, const char* v5 = nullptr, const char* v6 = nullptr,
               const char* v7 = nullptr, const char* v8 = nullptr, const char* v9 = nullptr);
  /// Integers.
  int OutputDM(const int* v1, const int* v2 = nullptr, const int* v3 = nullptr,
               const int* v4 = nullptr, const int* v5 = nullptr, const int* v6 = nullptr,
               const int* v7 = nullptr, const int* v8 = nullptr, const int* v9 = nullptr);
  /// Numbers in single precision.
  int OutputRM(const float* v1, const float* v2 = nullptr, const float* v3 = nullptr,
               const float* v4 = nullptr, const float* v5 = nullptr, const float* v6 = nullptr,
               const float* v7 = nullptr, const float* v8 = nullptr, const float* v9 = nullptr);
  /// A string. Binary: its first `length` bytes, all of them when `length` is below 1; in that
  /// case, and when `withLength` is not 0, their number comes first as four bytes.
  int OutputSM(const char* text, int length, int withLength);
  /// A string as it stands, without a format. Binary: its length and its bytes.
  int OutputsM(const char* text);
  int OutputInt2DM(const int* values);      ///< two ints
  int OutputInt3DM(const int* values);      ///< three ints
  int OutputInt4DM(const int* values);      ///< four ints
  int OutputPoint2DM(const float* values);  ///< two reals
  int OutputPoint3DM(const float* values);  ///< three reals
  int OutputPoint4DM(const float* values);  ///< four reals
  int OutputPixel4DM(const float* values);  ///< four reals
  /// Four bytes, printed as unsigned numbers. InputTexPixel4DM() does not read this text back.
  int OutputTexPixel4DM(const unsigned char* values);
  /// Raw reals; binary streams only. @throws int 108, always on a text stream.
  void OutputRsM(const float* values, int count);

  // --- input: return 1, throw int 107 ---
  //
  // Text: white space, line ends included, is free before a number and on both sides of the
  // separator. With automatic new lines the rest of the line is skipped after the last value.
  // Binary: the nine-value calls read the first value only.

  /// Numbers, of which the low 8 bits are stored.
  int InputCM(char* v1, char* v2 = nullptr, char* v3 = nullptr, char* v4 = nullptr,
              char* v5 = nullptr, char* v6 = nullptr, char* v7 = nullptr, char* v8 = nullptr,
              char* v9 = nullptr);
  /// A number that no `int` can hold is a read failure.
  int InputDM(int* v1, int* v2 = nullptr, int* v3 = nullptr, int* v4 = nullptr, int* v5 = nullptr,
              int* v6 = nullptr, int* v7 = nullptr, int* v8 = nullptr, int* v9 = nullptr);
  /// One int. Same as the call without the null.
  int InputDM(int* value, std::nullptr_t);
  /// One int, scanned with the caller's scanf format, which must hold one conversion to `int`.
  int InputDM(int* value, const char* format);
  /// Numbers in single precision.
  int InputRM(float* v1, float* v2 = nullptr, float* v3 = nullptr, float* v4 = nullptr,
              float* v5 = nullptr, float* v6 = nullptr, float* v7 = nullptr, float* v8 = nullptr,
              float* v9 = nullptr);
  /// Text: one word, whose length is not checked. Binary: `length` bytes, or as many as a count
  /// before them says when `length` is below 1 or `withLength` is not 0; only then is a
  /// terminating zero stored. A count beyond the end of the file throws before anything is stored.
  int InputSM(char* text, int length, int withLength);
  int InputInt2DM(int* values);      ///< two ints
  int InputInt3DM(int* values);      ///< three ints
  int InputInt4DM(int* values);      ///< four ints
  int InputPoint2DM(float* values);  ///< two reals
  int InputPoint3DM(float* values);  ///< three reals
  int InputPoint4DM(float* values);  ///< four reals
  int InputPixel4DM(float* values);  ///< four reals
  /// Text: four reals are read and the bytes of the first one, as a `float`, are stored; the rest
  /// is dropped. Binary: four bytes.
  int InputTexPixel4DM(unsigned char* values);
  /// Text: one line without its end; what exceeds `size` - 1 characters is dropped. At the end of
  /// the file the text is empty. Binary: a string with its count, whatever `size` says.
  int InputGetsM(char* text, int size);
  /// Raw reals; binary streams only. @throws int 108, also for a short read.
  void InputRsM(float* values, int count);

 private:
  /// The stream in hand; a copy of a handle shares the stream without owning it.
  class Handle {
   public:
    Handle() = default;
    Handle(const Handle& other) noexcept;
    /// @throws int 108 as settle(), with the other's stream taken.
    Handle& operator=(const Handle& other);
    ~Handle();
    [[nodiscard]] FILE* get() const { return shared_ != nullptr ? shared_->file : nullptr; }
    /// @param isReadOnly whether the stream is known to take no writes.
    /// @param isWritten whether it is opened to be written, or was written to.
    void adopt(FILE* file, bool isReadOnly, bool isWritten);
    void noteWrite() const { shared_->isWritten = true; }
    /// Remembers a failed write, which the error flag tells of, and clears the flag.
    void noteFailure() const;
    /// As fseek(); a failed write, of what was buffered too, is remembered.
    void seek(std::int64_t offset, int origin) const;
    /// A loss that this meets is told by the next settle().
    void close() noexcept;
    /// @throws int 108 once when a stream closed since the last call had lost anything.
    void settle();

   private:
    struct Stream {
      FILE* file;
      bool isReadOnly;
      bool isWritten;
      bool hasLost;
    };
    std::shared_ptr<Stream> shared_;
    bool isOwner_ = false;
    bool owesFailure_ = false;
  };
  static constexpr int kSlots = 20;
  static constexpr int kFormatSize = 50;

  [[nodiscard]] bool isText() const { return ioType_ != 1; }
  [[nodiscard]] FILE* writable() const;
  [[nodiscard]] FILE* readable() const;

  template <class T, std::size_t N>
  int outputNine(int slot, const T* const (&values)[N]);
  template <class T>
  int outputTuple(int slot, const T* values, int count);
  int outputText(const char* format, std::string_view text);
  [[nodiscard]] std::string_view lineEnd() const;
  void endLine(FILE* file) const;
  void writeBytes(const void* bytes, std::size_t size);
  void writeString(const char* text, std::size_t size);

  template <class T, std::size_t N>
  int inputNine(T* const (&values)[N]);
  template <class T>
  int inputTuple(T* values, int count);
  [[nodiscard]] zel::LookAhead lookAhead() const;
  void finishRead(zel::TextScanner& scanner) const;
  void readBytes(void* bytes, std::size_t size);
  int readCount();
  void readString(char* text);
  bool nextStringEquals(std::string_view text);

  char defaultFmts_[kSlots][kFormatSize];
  char fmts_[kSlots][kFormatSize];
  bool isDefaultFmt_[kSlots];
  int ioType_ = 0;
  int autoNewLine_ = 1;
  char separator_[kFormatSize] = ", ";
  char fileName_[260] = "";
  char versionStr_[100] = "";
  int versionNum_;
  std::int64_t fileLength_ = 0;
  Handle stream_;  // the last: its assignment may throw, everything else is taken then
};
