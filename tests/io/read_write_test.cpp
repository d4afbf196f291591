// What all formats share: where meshes come from and go to, and what is there after a failure.

#include <sys/stat.h>

#include <fstream>
#include <vector>

#include "support/comma_locale.h"
#include "tests/io/io_support.h"
#include "zel/io/formats.h"
#include "zel/io/output_file.h"

namespace zel::test {

namespace {

struct Form {
  const char* format;
  bool ascii;
};
constexpr Form kForms[] = {{"zel", false}, {"obj", false}, {"ply", false},
                           {"ply", true},  {"stl", false}, {"stl", true}};

/// Takes so many bytes, then fails; every byte it gives comes alone when asked for few at a time.
class FailingBuffer : public std::streambuf {
 public:
  FailingBuffer(std::string bytes, std::size_t failsAt)
      : bytes_(std::move(bytes)), left_(failsAt) {}

 protected:
  int_type underflow() override {
    if (at_ == bytes_.size()) {
      return traits_type::eof();
    }
    if (left_ == 0) {
      throw std::ios_base::failure("broken");
    }
    --left_;
    setg(&bytes_[at_], &bytes_[at_], &bytes_[at_] + 1);
    ++at_;
    return traits_type::to_int_type(*gptr());
  }
  int_type overflow(int_type c) override {
    if (left_ == 0) {
      return traits_type::eof();
    }
    --left_;
    return c;
  }

 private:
  std::string bytes_;
  std::size_t left_;
  std::size_t at_ = 0;
};

std::size_t filesIn(const TempDir& dir) {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator(dir.path()), {}));
}

}  // namespace

TEST(ReadWrite, filesMemoryAndStreamsGiveTheSame) {
  const TempDir dir;
  const CommaLocale comma;
  for (const Form& form : kForms) {
    const std::string bytes = bytesOf(houseMesh(), form.format, form.ascii);
    const std::string file = dir.file(std::string("a.") + form.format);
    writeMesh(houseMesh(), file, {.ascii = form.ascii});
    EXPECT_EQ(readFile(file), bytes);
    std::ostringstream out;
    writeMesh(houseMesh(), out, {.format = form.format, .ascii = form.ascii});
    EXPECT_EQ(out.str(), bytes);

    const std::string expected = document(readBytes(bytes, form.format));
    std::istringstream in(bytes);
    FailingBuffer slow(bytes, bytes.size());
    std::istream pipe(&slow);
    EXPECT_EQ(document(readMesh(file)), expected);
    EXPECT_EQ(document(readMesh(in)), expected) << form.format;
    EXPECT_EQ(document(readMesh(pipe)), expected) << form.format;
  }
}

TEST(ReadWrite, theFormatComesFromTheOptionTheNameOrTheContent) {
  const TempDir dir;
  for (const Form& form : kForms) {
    const std::string bytes = bytesOf(houseMesh(), form.format, form.ascii);
    const FileFormat* told = formatOfContent(bytes.substr(0, kFormatProbe), true);
    ASSERT_NE(told, nullptr) << form.format;
    EXPECT_EQ(told->name, form.format);
    writeFile(dir.file("nameless"), bytes);
    writeFile(dir.file("other.obj"), bytes);
    EXPECT_NO_THROW(static_cast<void>(readMesh(dir.file("nameless"))));
    EXPECT_NO_THROW(static_cast<void>(readMesh(dir.file("other.obj"), {.format = form.format})));
  }
  EXPECT_EQ(formatOfName("a/b.c/D.PLY"), findFormat("Ply"));
  EXPECT_EQ(formatOfName("a.obj/b"), nullptr);
  EXPECT_EQ(formatOfName(".obj"), nullptr);
  EXPECT_EQ(findFormat("dae"), nullptr);
  EXPECT_EQ(formatOfContent(std::string(100, '\0'), false), nullptr);
  EXPECT_EQ(formatOfContent("words of no format", true), nullptr);
  for (const auto& wrong : {"words of no format", ""}) {
    EXPECT_EQ(reasonOf(wrong), "the content tells no known format");
  }
  EXPECT_EQ(refusal("", "nonsense")->code(), ErrorCode::kArgument);
  EXPECT_THROW(writeMesh(Mesh(), dir.file("x.unknown")), Error);
}

TEST(ReadWrite, noPrefixOfAFileCrashesAndThoseOfCountedFormatsAreRefused) {
  for (const Form& form : kForms) {
    const std::string bytes = bytesOf(houseMesh(), form.format, form.ascii);
    const bool isCounted = form.format != std::string("obj") && form.format != std::string("stl");
    const std::size_t lastLine = bytes.rfind('\n', bytes.size() - 2) + 1;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      Remarks remarks;
      try {
        static_cast<void>(readBytes(bytes.substr(0, size), form.format, &remarks));
        const std::string rest = bytes.substr(size, 30);
        const bool isWholeWithoutTexture = rest.starts_with("         6, TEXTURE_COORD") ||
                                           rest.starts_with("         4, QUAD_TEXTURE") ||
                                           rest.starts_with("\n         6, TEXTURE_COORD") ||
                                           rest.starts_with("\n         4, QUAD_TEXTURE");
        const bool isTold = form.ascii && size > lastLine && !remarks.empty();
        EXPECT_TRUE(!isCounted || isWholeWithoutTexture || isTold || rest == "\n")
            << form.format << form.ascii << " cut to " << size << " of " << bytes.size();
      } catch (const Error& error) {
        EXPECT_EQ(error.code(), ErrorCode::kUnreadable);
      }
    }
  }
}

TEST(ReadWrite, brokenInputsAndOutputsAreTold) {
  for (const Form& form : kForms) {
    const std::string bytes = bytesOf(houseMesh(), form.format, form.ascii);
    for (std::size_t at = 0; at < bytes.size(); at += 7) {
      FailingBuffer breaks(bytes, at);
      std::istream in(&breaks);
      std::ostream out(&breaks);
      EXPECT_THROW(static_cast<void>(readMesh(in, {.format = form.format})), Error) << at;
      EXPECT_THROW(writeMesh(houseMesh(), out, {.format = form.format, .ascii = form.ascii}),
                   Error);
    }
  }
  const TempDir dir;
  for (const char* name : {"", "missing.obj", "."}) {
    try {
      static_cast<void>(readMesh(dir.file(name), {.format = "obj"}));
      ADD_FAILURE() << name;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kUnreadable);
      EXPECT_EQ(error.file(), dir.file(name));
    }
  }
}

TEST(ReadWrite, cancellingLeavesEverythingAsItWas) {
  const TempDir dir;
  Mesh mesh;
  for (int k = 0; k < 300; ++k) {
    mesh.addNode({static_cast<float>(k), 0, 0});
    mesh.addTriangle({k, k / 2, k / 3});
  }
  for (const Form& form : kForms) {
    const std::string file = dir.file(std::string("a.") + form.format);
    const std::string bytes = bytesOf(mesh, form.format, form.ascii);
    writeFile(file, bytes);
    double last = 0;
    const Progress watch = [&](double fraction) {
      EXPECT_GE(fraction, last);
      EXPECT_LE(fraction, 1.0);
      last = fraction;
      return fraction < 0.5;
    };
    const auto code = [&](auto work) {
      last = 0;
      try {
        work();
      } catch (const Error& error) {
        return error.code();
      }
      return ErrorCode::kArgument;
    };
    EXPECT_EQ(code([&] { writeMesh(Mesh(mesh), file, {.ascii = form.ascii, .progress = watch}); }),
              ErrorCode::kCancelled);
    EXPECT_EQ(readFile(file), bytes);
    EXPECT_EQ(code([&] { static_cast<void>(readMesh(file, {.progress = watch})); }),
              ErrorCode::kCancelled)
        << form.format << form.ascii;
  }
  EXPECT_EQ(filesIn(dir), 4U);
}

TEST(ReadWrite, aMeshThatNamesDeletedNodesGoesIntoDocumentsOnly) {
  Mesh mesh = houseMesh();
  mesh.nodes.DelItemM(2);
  EXPECT_NO_THROW(static_cast<void>(document(mesh)));
  EXPECT_THROW(static_cast<void>(bytesOf(mesh, "obj")), Error);
  mesh.nodes.DelItemM(5);
  mesh.triangles.DelAllM();
  mesh.quads.DelAllM();
  EXPECT_EQ(sizesOf(readBytes(bytesOf(mesh, "obj"), "obj")), "4/0/0");
  EXPECT_EQ(sizesOf(readBytes(bytesOf(mesh, "ply"), "ply")), "4/0/0");
}

TEST(OutputFile, appearsWholeOrNotAtAll) {
  const TempDir dir;
  const std::string file = dir.file("target");
  writeFile(file, "old");
  {
    OutputFile output(file);
    output.write("new");
    EXPECT_EQ(readFile(file), "old");
    EXPECT_EQ(filesIn(dir), 2U);
  }
  EXPECT_EQ(readFile(file), "old");
  EXPECT_EQ(filesIn(dir), 1U);
  OutputFile output(file);
  output.write("new");
  output.write(" content");
  EXPECT_EQ(output.size(), 11U);
  output.commit();
  EXPECT_EQ(readFile(file), "new content");
  EXPECT_EQ(filesIn(dir), 1U);
}

TEST(OutputFile, refusesTargetsThatTakeNothing) {
  const TempDir dir;
  for (const char* target : {"", ".", "no/where", "a/b"}) {
    try {
      OutputFile output(dir.file(target));
      ADD_FAILURE() << target;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kUnwritable) << error.what();
    }
  }
}

#if !defined(_WIN32)

TEST(OutputFile, isRemovedWhileItIsOpen) {
  const TempDir dir;
  OutputFile left(dir.file("other"));
  EXPECT_EQ(filesIn(dir), 1U);
  removeUnfinishedOutputs();
  EXPECT_EQ(filesIn(dir), 0U);
}

TEST(OutputFile, keepsRightsAndFollowsLinks) {
  const TempDir dir;
  const std::string file = dir.file("target");
  namespace fs = std::filesystem;
  const auto put = [](const std::string& name) {
    OutputFile output(name);
    output.write("new");
    output.commit();
  };
  writeFile(file, "old");
  chmod(file.c_str(), 04750);
  fs::create_symlink("target", dir.file("link"));
  fs::create_symlink("later", dir.file("dangling"));
  fs::create_symlink("loop", dir.file("loop"));
  put(dir.file("link"));
  put(dir.file("dangling"));
  EXPECT_TRUE(fs::is_symlink(dir.file("link")));
  EXPECT_EQ(readFile(file), "new");
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0750));
  EXPECT_TRUE(fs::is_symlink(dir.file("dangling")));
  EXPECT_EQ(readFile(dir.file("later")), "new");
  EXPECT_THROW(put(dir.file("loop")), Error);
  chmod(file.c_str(), 0444);
  EXPECT_THROW(put(file), Error);
}

TEST(OutputFile, aFullDeviceIsTold) {
  OutputFile output("/dev/full");
  output.write("some bytes");
  EXPECT_THROW(output.commit(), Error);
}

#endif

// Whatever an appearance holds comes back or is remarked, in every format there is.
TEST(ReadWrite, noFormatLosesLooksWithoutAWord) {
  Mesh mesh;
  Appearance looks;
  looks.materials.push_back({.name = "red", .texture = {}, .textureBytes = {}});
  for (int node = 0; node < 3; ++node) {
    mesh.addNode({node == 1 ? 1.0F : 0.0F, node == 2 ? 1.0F : 0.0F, 0.0F});
    looks.setColour(node, {static_cast<std::uint8_t>(node), 20, 30, 128});
  }
  looks.setTriangleMaterial(mesh.addTriangle({0, 1, 2}), 0);
  for (const FileFormat& format : fileFormats()) {
    Remarks remarks;
    const std::string bytes =
        meshBytes(mesh, {.format = std::string(format.name), .appearance = &looks}, &remarks);
    Appearance read;
    static_cast<void>(readMesh(std::as_bytes(std::span(bytes)),
                               {.format = std::string(format.name), .appearance = &read}));
    Colour expected = looks.colourOf(2);
    if (isSaid(remarks, Remark::Kind::kLeftOut, "alpha value", 3)) {
      expected[3] = 255;
    }
    EXPECT_TRUE(read.colourOf(2) == expected ||
                isSaid(remarks, Remark::Kind::kLeftOut, "node colour", 3))
        << format.name << ": " << textOf(remarks);
    EXPECT_TRUE(!read.materials.empty() || isSaid(remarks, Remark::Kind::kLeftOut, "material", 1))
        << format.name << ": " << textOf(remarks);
  }
}

}  // namespace zel::test
