// STL, text and binary.

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zel/algorithms/measure.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/block_reader.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/format_table.h"
#include "zel/io/detail/soup_builder.h"
#include "zel/io/detail/text_cursor.h"

namespace zel {

namespace {

static_assert(std::endian::native == std::endian::little,
              "facets are read as they lie in the file");

constexpr std::size_t kHeaderBytes = 80;
constexpr std::size_t kCountBytes = 4;
constexpr std::size_t kFacetBytes = 50;

std::uint32_t facetCountIn(std::string_view start) {
  std::uint32_t count = 0;
  std::memcpy(&count, start.data() + kHeaderBytes, sizeof count);
  return count;
}

// --- binary
// ---------------------------------------------------------------------------------------

class BinaryStlReader {
 public:
  explicit BinaryStlReader(ReadJob& job) : job_(job), bytes_(job.input) {
    const char* const start = bytes_.take(kHeaderBytes + kCountBytes);
    if (start == nullptr) {
      throw fault("the file ends within its header");
    }
    count_ = facetCountIn({start, kHeaderBytes + kCountBytes});
    left_ = bytes_.bytesLeft();
    if (left_ && *left_ / kFacetBytes < count_) {
      throw fault(std::to_string(count_) + " facets need " +
                  std::to_string(std::uint64_t{count_} * kFacetBytes) + " bytes, but only " +
                  std::to_string(*left_) + " follow");
    }
  }

  [[nodiscard]] std::uint32_t count() const { return count_; }
  /// Whether the count is vouched for by the size of the file.
  [[nodiscard]] bool isCountSure() const { return left_.has_value(); }

  /// Hands all facets to `take(span)`. @param from,to the part of the progress that this is.
  template <class Take>
  void forEachBlock(double from, double to, Take take) {
    constexpr std::uint32_t kBlock = 4096;
    static_assert(kBlock * kFacetBytes <= BlockReader::kLongest);
    ProgressSteps steps(job_.options.progress, count_, from, to);
    std::vector<Facet> facets(kBlock);
    for (std::uint32_t done = 0; done < count_;) {
      const std::uint32_t wanted = std::min(kBlock, count_ - done);
      const char* record = bytes_.take(wanted * kFacetBytes);
      if (record == nullptr) {
        throw fault("the file ends before its " + std::to_string(count_) + " facets do");
      }
      for (std::uint32_t k = 0; k < wanted; ++k, record += kFacetBytes) {
        std::memcpy(&facets[k], record, sizeof(Facet));
        attributes_ += record[sizeof(Facet)] != 0 || record[sizeof(Facet) + 1] != 0 ? 1 : 0;
      }
      take(std::span<const Facet>(facets).first(wanted));
      done += wanted;
      steps.reach(done);
    }
  }
  void finish() {
    const auto rest = static_cast<long long>(bytes_.countRest());
    if (count_ == 0 && rest > 0) {
      throw job_.input.fault("the header counts no facet, but " + std::to_string(rest) +
                             " bytes follow");
    }
    addRemark(job_.remarks, Remark::Kind::kLeftOut, attributes_, "left out", "facet attribute");
    addRemark(job_.remarks, Remark::Kind::kDamaged, rest, "left out", "byte",
              "they stand behind the last facet");
  }

 private:
  [[nodiscard]] Error fault(const std::string& why) const {
    return job_.input.fault(why, {.byte = static_cast<long long>(bytes_.position())});
  }

  ReadJob& job_;
  BlockReader bytes_;
  std::uint32_t count_ = 0;
  std::optional<std::uint64_t> left_;
  long long attributes_ = 0;
};

/// The distance to weld by; nothing when none is asked for, or the facets cannot be seen twice.
std::optional<double> weldDistanceOf(ReadJob& job) {
  if (!job.options.weld || !job.options.weld->isRelative) {
    return job.options.weld ? std::optional(resolve(*job.options.weld, Bounds{})) : std::nullopt;
  }
  const std::uint64_t start = job.input.position();
  if (!job.input.bytesLeft()) {
    return std::nullopt;
  }
  Bounds bounds;
  BinaryStlReader(job).forEachBlock(0.0, 0.3, [&](std::span<const Facet> facets) {
    for (const Facet& facet : facets) {
      for (const auto& point : facet.points) {
        bounds.extendTo(point);
      }
    }
  });
  if (!job.input.rewindTo(start)) {
    throw job.input.fault("the file cannot be read a second time");
  }
  return resolve(*job.options.weld, bounds);
}

Mesh readBinaryStl(ReadJob& job) {
  const bool looksTwice = job.options.weld && job.options.weld->isRelative;
  const std::optional<double> distance = weldDistanceOf(job);
  BinaryStlReader reader(job);
  const std::size_t expected = reader.isCountSure() ? reader.count() : 0;
  SoupBuilder soup(distance, expected);
  reserveSlots(soup.mesh().triangles, expected, job.input, "facets");
  if (!distance) {
    reserveSlots(soup.mesh().nodes, std::uint64_t{3} * expected, job.input, "nodes");
  }
  reader.forEachBlock(looksTwice ? 0.3 : 0.0, 1.0,
                      [&](std::span<const Facet> facets) { soup.add(facets); });
  reader.finish();
  return std::move(soup.mesh());
}

// --- text
// -----------------------------------------------------------------------------------------

class TextStlReader {
 public:
  TextStlReader(ReadJob& job, std::string_view text, double from, double to)
      : job_(job), text_(text), steps_(job.options.progress, text.size(), from, to) {
    text_.take("\xEF\xBB\xBF");
  }

  /// Hands the whole facets to `take(facet)`.
  template <class Take>
  void forEachFacet(Take take) {
    while (takeKeyword("solid")) {
      text_.takeLine();
      ++solids_;
      Facet facet{};
      while (takeFacet(facet)) {
        take(facet);
        ++facets_;
        steps_.reach(text_.position());
      }
      if (isCut_ || !takeKeyword("endsolid")) {
        return endEarly();
      }
      text_.takeLine();
      ++closed_;
    }
    skipSpace();
  }

  void finish() {
    if (facets_ == 0 && closed_ == 0) {
      throw fault("there is no whole facet");
    }
    if (closed_ < solids_) {
      job_.remarks.push_back({Remark::Kind::kDamaged,
                              isCut_ ? "the last facet is cut off and was left out"
                                     : "the end of the solid is missing",
                              1});
    }
    addRemark(job_.remarks, Remark::Kind::kDamaged, static_cast<long long>(text_.rest().size()),
              "left out", "byte", "they stand behind the last solid");
    addRemark(job_.remarks, Remark::Kind::kLeftOut, solids_ - 1, "joined", "further solid");
  }

 private:
  [[nodiscard]] Error fault(const std::string& why) const {
    return job_.input.fault(why, {.line = text_.line()});
  }
  void skipSpace() {
    do {
      text_.skipBlanks();
    } while (text_.takeLineEnd());
  }
  /// Takes a word if it is this one, whatever the case of its letters.
  bool takeKeyword(std::string_view keyword) {
    skipSpace();
    TextCursor ahead = text_;
    const std::string_view word = ahead.takeWord();
    const bool found = std::ranges::equal(
        word, keyword, {}, [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (found) {
      text_ = ahead;
    }
    touchesEnd_ = ahead.atEnd();
    return found;
  }
  /// What must follow within a facet. @return false when the text ends within or before it.
  bool expectKeyword(std::string_view keyword) {
    if (takeKeyword(keyword)) {
      return true;
    }
    if (!touchesEnd_) {
      throw fault("'" + std::string(keyword) + "' is missing");
    }
    isCut_ = true;
    return false;
  }
  bool expectNumbers(float* values) {
    for (int k = 0; k < 3; ++k) {
      skipSpace();
      TextCursor ahead = text_;
      const std::string_view word = ahead.takeWord();
      const bool isNumber = parseWord(word, values[k]);
      if (!isNumber && !ahead.atEnd()) {
        throw fault("a number is missing, malformed or out of range");
      }
      if (!isNumber) {
        isCut_ = true;
        return false;
      }
      text_ = ahead;
    }
    return true;
  }
  bool takeFacet(Facet& facet) {
    if (!takeKeyword("facet")) {
      return false;
    }
    bool isWhole = expectKeyword("normal") && expectNumbers(facet.normal) &&
                   expectKeyword("outer") && expectKeyword("loop");
    for (auto& point : facet.points) {
      isWhole = isWhole && expectKeyword("vertex") && expectNumbers(point);
    }
    return isWhole && expectKeyword("endloop") && expectKeyword("endfacet");
  }
  /// The text ends within a solid, or something else stands where a facet or its end should.
  void endEarly() {
    if (!isCut_ && !touchesEnd_) {
      throw fault("neither a facet nor the end of the solid follows");
    }
    text_ = TextCursor({});
  }

  ReadJob& job_;
  TextCursor text_;
  ProgressSteps steps_;
  long long solids_ = 0;
  long long closed_ = 0;
  long long facets_ = 0;
  bool isCut_ = false;       // within a facet
  bool touchesEnd_ = false;  // the word last looked at ends with the text
};

Mesh readTextStl(ReadJob& job) {
  const std::string_view text = job.input.takeAll();
  std::optional<double> distance;
  double from = 0.0;
  if (job.options.weld) {
    Bounds bounds;
    if (job.options.weld->isRelative) {
      from = 0.5;
      TextStlReader(job, text, 0.0, from).forEachFacet([&](const Facet& facet) {
        for (const auto& point : facet.points) {
          bounds.extendTo(point);
        }
      });
    }
    distance = resolve(*job.options.weld, bounds);
  }
  constexpr std::size_t kUsualFacetBytes = 200;
  SoupBuilder soup(distance, text.size() / kUsualFacetBytes);
  TextStlReader reader(job, text, from, 1.0);
  reader.forEachFacet([&](const Facet& facet) { soup.add({&facet, 1}); });
  reader.finish();
  return std::move(soup.mesh());
}

}  // namespace

bool isTextStl(std::string_view start) {
  TextCursor text(start);
  text.take("\xEF\xBB\xBF");
  do {
    text.skipBlanks();
  } while (text.takeLineEnd());
  if (!text.take("solid") || !text.atWordEnd()) {
    return false;
  }
  return std::ranges::none_of(start,
                              [](char c) { return c >= 0 && c < ' ' && !TextCursor::isSpace(c); });
}

Mesh readStl(ReadJob& job) {
  const std::string_view start = job.input.peek(kFormatProbe);
  const bool hasHeader = start.size() >= kHeaderBytes + kCountBytes;
  const bool isBinarySize =
      hasHeader && job.input.bytesLeft() == kHeaderBytes + kCountBytes +
                                                std::uint64_t{kFacetBytes} * facetCountIn(start);
  Mesh mesh = isTextStl(start) && !isBinarySize ? readTextStl(job) : readBinaryStl(job);
  if (!job.options.weld && mesh.triangles.GetBoundM() > 1) {
    job.remarks.push_back({Remark::Kind::kNote,
                           "the faces share no nodes: each triangle of an STL file brings its own",
                           0});
  }
  return mesh;
}

}  // namespace zel
