#include "faults/stream_operations.h"

#include <array>
#include <cstdio>
#include <string_view>
#include <type_traits>
#include <utility>

#include "textfile/random_arrays.h"
#include "zel/textfile/file_version.h"
#include "zel/textfile/keyword_lists.h"
#include "zel/textfile/keyword_values.h"

namespace zel::test {
namespace {

// --- what the operations work on ---------------------------------------------------------------

/// Single values that are read.
struct Values {
  std::array<int, 12> ints{};
  std::array<float, 12> reals{};
  std::array<char, 64> chars{};
  bool hasTold = false;

  /// Notes a result that is 1 when all went well.
  void expectOne(int result) { hasTold = hasTold || result != 1; }
};

std::string linesOf(const Values& values) {
  std::string lines;
  for (const int value : values.ints) {
    lines += std::to_string(value) + "\n";
  }
  for (const float value : values.reals) {
    lines += std::to_string(value) + "\n";
  }
  return lines + values.chars.data() + "\n";
}

template <class Object, class Work>
class RunOn : public OperationRun {
 public:
  RunOn(const Object& object, Work how, bool isReader)
      : object_(object), work_(how), isReader_(isReader) {}
  void work(KwIOCL& io) override { work_(object_, io); }
  [[nodiscard]] std::string result() const override {
    if constexpr (std::is_same_v<Object, Values>) {
      return isReader_ ? linesOf(object_) : "";
    } else {
      return isReader_ ? listingOf(object_) : "";
    }
  }
  [[nodiscard]] bool hasTold() const override {
    if constexpr (std::is_same_v<Object, Values>) {
      return object_.hasTold;
    }
    return false;
  }

 private:
  Object object_;
  Work work_;
  bool isReader_;
};

// --- the table -----------------------------------------------------------------------------------

class Table {
 public:
  template <class Object, class Work>
  void addWriter(StreamOperation operation, const Object& object, Work work) {
    add(std::move(operation), object, work);
  }
  /// A reader of what `writer` writes, or of the operation's own content.
  template <class Object, class Work>
  void addReader(StreamOperation operation, const Object& object, Work work) {
    operation.isReader = true;
    add(std::move(operation), object, work);
  }
  std::string writtenBy(const std::string& name) const {
    for (const StreamOperation& operation : operations_) {
      if (operation.name == name) {
        return runCleanly(operation).written;
      }
    }
    return "";
  }
  std::vector<StreamOperation> take() { return std::move(operations_); }

 private:
  template <class Object, class Work>
  void add(StreamOperation operation, const Object& object, Work work) {
    operation.start = [object, work, isReader = operation.isReader] {
      return std::make_unique<RunOn<Object, Work>>(object, work, isReader);
    };
    operations_.push_back(std::move(operation));
  }

  std::vector<StreamOperation> operations_;
};

template <class Array>
Array sample(int count = 40) {
  Random random(12);
  Array array;
  fill(random, &array, count);
  return array;
}

constexpr auto kWriteTagged = [](const auto& array, KwIOCL& io) {
  array.FmOutputZelLstM(&io, "l");
};
constexpr auto kReadTagged = [](auto& array, KwIOCL& io) { array.FmInputZelLstM(&io); };

/// Writes and reads the tagged list; `text` is what readers of text get when it is not that.
template <class Array>
void addTagged(Table& table, const std::string& name, std::string text = "") {
  const Array array = sample<Array>();
  table.addWriter({name + " writes text"}, array, kWriteTagged);
  table.addWriter({name + " writes bytes", true}, array, kWriteTagged);
  if (text.empty()) {
    text = table.writtenBy(name + " writes text");
  }
  table.addReader({.name = name + " reads text", .content = text}, Array(), kReadTagged);
  table.addReader({.name = name + " reads bytes",
                   .isBinary = true,
                   .content = table.writtenBy(name + " writes bytes")},
                  Array(), kReadTagged);
}

std::string repeated(int count, const std::string& head, const std::string& tail,
                     const std::function<std::string(int)>& entry) {
  std::string text = std::to_string(count) + head;
  for (int i = 0; i < count; ++i) {
    text += entry(i);
  }
  return text + tail;
}

/// A list in the layout that the readers of faces take.
std::string facesToRead(const std::string& corners) {
  return repeated(30, ", l_LIST_BEGIN\n", "l_LIST_END\n", [&](int i) {
    return std::to_string(i) + ", INDEX_OF_l_LIST\n   31\n" + std::to_string(100 + i) + corners +
           "\n 1.5, 2.5, 3.5\n 1\n";
  });
}

void addTaggedLists(Table& table) {
  addTagged<CharArr>(table, "CharArr");
  addTagged<IntArr>(table, "IntArr");
  addTagged<Int2DArr>(table, "Int2DArr", repeated(30, ", b\n", "e\n", [](int i) {
                        return std::to_string(i) + ", i\n " + std::to_string(i * 1001) + ", 777\n";
                      }));
  addTagged<Int4DArr>(table, "Int4DArr");
  addTagged<RealArr>(table, "RealArr");
  addTagged<Point2DArr>(table, "Point2DArr");
  addTagged<Point3DArr>(table, "Point3DArr");
  addTagged<NodeArr>(table, "NodeArr");
  addTagged<KwStringArr>(table, "KwStringArr");
  addTagged<TriangleArr>(table, "TriangleArr", facesToRead(", 200, 300"));
  addTagged<QuadArr>(table, "QuadArr", facesToRead(", 200, 300, 400"));
}

/// A list on a plain stream: `write(array, file)` and `read(array, file)`.
template <class Array, class Write, class Read>
void addPlain(Table& table, const std::string& name, Write write, Read read) {
  table.addWriter({.name = name + " is written", .isPlain = true}, sample<Array>(),
                  [write](const Array& array, KwIOCL& io) { write(array, io.GetFileDescriptM()); });
  table.addReader({.name = name + " is read",
                   .isPlain = true,
                   .content = table.writtenBy(name + " is written")},
                  Array(),
                  [read](Array& array, KwIOCL& io) { read(array, io.GetFileDescriptM()); });
}

void addPlainLists(Table& table) {
  addPlain<TriangleArr>(
      table, "plain triangle list",
      [](const TriangleArr& faces, FILE* file) { faces.FmWriteTriangleLstToFileM(file); },
      [](TriangleArr& faces, FILE* file) { faces.FmReadTriangleLstM(file); });
  addPlain<QuadArr>(
      table, "plain quad list",
      [](const QuadArr& faces, FILE* file) { faces.FmWriteQuadLstToFileM(file); },
      [](QuadArr& faces, FILE* file) { faces.FmReadQuadLstM(file); });
  addPlain<TriangleArr>(
      table, "triangle export",
      [](const TriangleArr& faces, FILE* file) { faces.ExportTriangleLstDBFileM(file, nullptr); },
      [](TriangleArr& faces, FILE* file) { faces.FmReadTriangleLstM(file); });
  addPlain<QuadArr>(
      table, "quad export",
      [](const QuadArr& faces, FILE* file) { faces.ExportQuadLstDBFileM(file); },
      [](QuadArr& faces, FILE* file) { faces.FmReadQuadLstM(file); });
  addPlain<NodeArr>(
      table, "plain node list",
      [](const NodeArr& nodes, FILE* file) {
        slFprintfD(file, "%d, BEGIN\n", nodes.GetBoundM());
        for (int i = 0; i < nodes.GetBoundM(); ++i) {
          slFprintfD(file, "%d, INDEX\n", i);
          nodes.ElementAtM(i).FmWriteZelFileM(file);
        }
        slFprintfS(file, "%s\n", "END");
      },
      [](NodeArr& nodes, FILE* file) { nodes.FmReadNodeLstM(file); });
  addPlain<IntArr>(
      table, "IntArr container list",
      [](const IntArr& array, FILE* file) { slFprintfIntArr(file, array, "l"); },
      [](IntArr& array, FILE* file) { slFscanfIntArr(file, &array); });
  addPlain<Int2DArr>(
      table, "Int2DArr container list",
      [](const Int2DArr& array, FILE* file) { slFprintfInt2dArr(file, array, "l"); },
      [](Int2DArr& array, FILE* file) { slFscanfInt2dArr(file, &array); });
  addPlain<Point2DArr>(
      table, "Point2DArr container list",
      [](const Point2DArr& array, FILE* file) { slFprintfPoint2DArr(file, array, "l"); },
      [](Point2DArr& array, FILE* file) { slFscanfPoint2DArr(file, &array); });
  addPlain<Point3DArr>(
      table, "point dump", [](const Point3DArr& points, FILE* file) { points.FmOutputLstM(file); },
      [](Point3DArr& points, FILE* file) { points.FmInputLstM(file, 40); });
}

void readValues(Values& v, KwIOCL& io) {
  io.InputDM(&v.ints[0], &v.ints[1], &v.ints[2]);
  io.InputCM(&v.chars[0], &v.chars[1]);
  io.InputRM(&v.reals[0], &v.reals[1]);
  io.InputInt2DM(&v.ints[3]);
  io.InputInt3DM(&v.ints[5]);
  io.InputInt4DM(&v.ints[8]);
  io.InputPoint2DM(&v.reals[2]);
  io.InputPoint3DM(&v.reals[4]);
  io.InputPoint4DM(&v.reals[7]);
}

void writeValues(Values& /*none*/, KwIOCL& io) {
  const int n[] = {123456, 234567, 345678, 456789};
  const char c[] = {65, 66};
  const float r[] = {1.25F, 23456.75F, 3e20F, 4};
  io.OutputDM(n, n + 1, n + 2);
  io.OutputCM(c, c + 1);
  io.OutputRM(r, r + 1);
  io.OutputInt2DM(n);
  io.OutputInt3DM(n);
  io.OutputInt4DM(n);
  io.OutputPoint2DM(r);
  io.OutputPoint3DM(r);
  io.OutputPoint4DM(r);
}

void addStreamValues(Table& table) {
  for (const bool isBinary : {false, true}) {
    const std::string form = isBinary ? " as bytes" : " as text";
    table.addWriter({"values are written" + form, isBinary}, Values(), writeValues);
    table.addReader({.name = "values are read" + form,
                     .isBinary = isBinary,
                     .content = table.writtenBy("values are written" + form)},
                    Values(), readValues);
    table.addWriter({"strings are written" + form, isBinary}, Values(),
                    [](Values& /*none*/, KwIOCL& io) {
                      io.OutputSM("first", 0, 1);
                      io.OutputsM("the second of these strings");
                      io.OutputSM("third", 0, 0);
                      io.OutputsM("fourth");
                    });
    table.addReader({.name = "strings are read" + form,
                     .isBinary = isBinary,
                     .content = table.writtenBy("strings are written" + form)},
                    Values(), [](Values& v, KwIOCL& io) {
                      io.InputSM(v.chars.data(), 0, 1);
                      io.SkipLineM();
                      io.InputSM(v.chars.data() + 8, 0, 1);
                      v.chars[5] = v.chars[13] = ' ';
                      io.InputGetsM(v.chars.data() + 16, 20);
                    });
  }
  table.addWriter({"custom formats are written"}, Values(), [](Values& v, KwIOCL& io) {
    io.SetFmtM(1, "%d");
    io.SetFmtM(2, "%.3f");
    io.SetFmtM(3, "<%s>");
    io.SetFmtM(10, "%d %d %d %d");
    writeValues(v, io);
    io.OutputSM("text", 0, 1);
  });
  table.addReader(
      {.name = "values run together", .content = "123, 456,789\n-1.5,2.5 77, 888\nword"}, Values(),
      [](Values& v, KwIOCL& io) {
        io.SetAutoNewLineM(0);
        io.InputInt3DM(v.ints.data());
        io.InputPoint2DM(v.reals.data());
        io.InputDM(&v.ints[3], "%d");
        io.InputSeparatorM();
        io.InputDM(&v.ints[4], nullptr);
        io.InputSM(v.chars.data(), 0, 1);
      });
  std::string lines;
  for (int i = 0; i < 40; ++i) {
    lines += "line number " + std::to_string(i) + "\n";
  }
  table.addReader({.name = "a line is searched", .content = lines + "zel4.7\n12345"}, Values(),
                  [](Values& v, KwIOCL& io) {
                    io.SkipSomeLinesM(3);
                    do {
                      io.InputGetsM(v.chars.data(), 64);
                    } while (std::string_view(v.chars.data()) != "line number 39");
                    io.InputGetsM(v.chars.data(), 64);
                    v.ints[0] = slGetFileVersion(v.chars.data());
                    io.InputDM(&v.ints[1]);
                  });
}

void addKeywordValues(Table& table) {
  const StreamOperation plainWriter{.name = "keyword values are written", .isPlain = true};
  table.addWriter(plainWriter, Values(), [](Values& v, KwIOCL& io) {
    FILE* file = io.GetFileDescriptM();
    const int n[] = {12345, 23456};
    const float r[] = {1.5F, 2.5F, 345.25F, 4567.5F};
    const unsigned char pixel[] = {1, 20, 255, 4};
    v.expectOne(slFprintfC(file, "%d\n", 'A'));
    v.expectOne(slFprintfD(file, "%d\n", 1234567));
    v.expectOne(slFprintfR(file, "%f\n", 1.25F));
    v.expectOne(slFprintfS(file, "%s\n", "keyword"));
    v.expectOne(slFprintfInt2D(file, "%d %d\n", n));
    v.expectOne(slFprintfPoint2D(file, "%f %f\n", r));
    v.expectOne(slFprintfPoint3D(file, "%f %f %f\n", r));
    v.expectOne(slFprintfPoint4D(file, "%f %f %f %f\n", r));
    v.expectOne(slFprintfPixel4D(file, "%f %f %f %f\n", r));
    v.expectOne(slFprintfTexPixel4D(file, "%u %u %u %u\n", pixel));
  });
  table.addReader({.name = "keyword values are read",
                   .isPlain = true,
                   .content = table.writtenBy("keyword values are written")},
                  Values(), [](Values& v, KwIOCL& io) {
                    FILE* file = io.GetFileDescriptM();
                    unsigned char pixel[4]{};
                    v.expectOne(slFscanfC(file, "%d", v.chars.data()));
                    v.expectOne(slFscanfD(file, "%d", v.ints.data()));
                    v.expectOne(slFscanfR(file, "%f", v.reals.data()));
                    v.expectOne(slFscanfS(file, "%20s", v.chars.data() + 1));
                    v.expectOne(slFscanfInt2D(file, "%d %d", &v.ints[1]));
                    v.expectOne(slFscanfPoint2D(file, "%f %f", &v.reals[1]));
                    v.expectOne(slFscanfPoint3D(file, "%f %f %f", &v.reals[3]));
                    v.expectOne(slFscanfPoint4D(file, "%f %f %f %f", &v.reals[6]));
                    v.expectOne(slFscanfPixel4D(file, "%f %f %f %f", &v.reals[6]));
                    v.expectOne(slFscanfTexPixel4D(file, "%d %d %d", pixel));
                    v.ints[3] = pixel[0] + 1000 * pixel[2];
                  });
  table.addReader(
      {.name = "words and lines are read",
       .isPlain = true,
       .content = "some words before the keyword  and\nbehind\n\nthe end of the text\nx"},
      Values(), [](Values& v, KwIOCL& io) {
        FILE* file = io.GetFileDescriptM();
        v.expectOne(slSearchStrM(file, "keyword"));
        v.expectOne(slSkipLine(file));
        slFgets(file, v.chars.data(), 20);
        v.expectOne(slSkipLine(file));
        slFgets(file, v.chars.data() + 6, 20);
        v.chars[6] = v.chars[6] == 0 ? '-' : v.chars[6];
      });
}

std::vector<StreamOperation> makeOperations() {
  Table table;
  addTaggedLists(table);
  addPlainLists(table);
  addStreamValues(table);
  addKeywordValues(table);
  return table.take();
}

}  // namespace

const std::vector<StreamOperation>& streamOperations() {
  static const std::vector<StreamOperation> kOperations = makeOperations();
  return kOperations;
}

// Only OpenM() makes a stream binary.
void takeStream(KwIOCL& io, std::FILE* file, bool isBinary) {
  io.OpenM("/dev/null", isBinary ? "rb" : "r");
  io.CreateIndirectlyM(file, "", "", 0);
}

CleanRun runCleanly(const StreamOperation& operation) {
  FaultyBytes bytes({}, operation.content);
  KwIOCL io;
  takeStream(io, bytes.open(operation.isReader ? "r" : "w", true), operation.isBinary);
  const auto run = operation.start();
  run->work(io);
  io.CloseM();
  return {run->result(), operation.isReader ? "" : bytes.bytes()};
}

}  // namespace zel::test
