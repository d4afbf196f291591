#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/report_page/report_data.h"
#include "tools/zel/report_page/report_page.h"
#include "tools/zel/welding.h"

namespace zel::program {

namespace {

class ReportCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("MESH", file_, "Mesh file, or - for standard input").required();
    options.argument("OTHER", other_, "A second mesh, to be seen as what became of the first");
    options.value("-o,--output", "FILE", output_, "HTML file to write, or - for standard output")
        .required();
    options
        .value("--faces", "COUNT", mostFaces_, "Draw a mesh of more faces thinned to about so many")
        .within(1000, 2'000'000);
    declareFrom(options, from_);
    welding_.declare(options);
    options.note(
        "One page that opens in a browser without a network: the mesh to turn, its defects by "
        "class "
        "with places to fly to, facts, histograms and the unfolding. What is drawn of a big mesh "
        "is "
        "thinned, except for the faces about defects; all figures are those of the whole mesh.");
    options.example("zel report bunny.obj -o bunny.html");
    options.example("zel report scan.stl mended.obj -o mended.html");
  }

  ExitCode run(const Console& console) override {
    return guarded(file_, console, [&] {
      if (!canMakeReportPage()) {
        throw Failure(ExitCode::kUnwritable, output_, "cannot make a page",
                      "this program was built without three.js (Debian: libjs-three)");
      }
      if (isSameFile(output_, file_) || (!other_.empty() && isSameFile(output_, other_))) {
        throw misuse(output_, "the page is made from this");
      }
      const std::unique_ptr<OutputFile> output = outputNamed(output_);
      const Mesh mesh = read(file_, console);
      const ReportFrame frame = frameOf(mesh);
      Json::Elements meshes = {reportData(mesh, file_, frame, faceLimit(), console)};
      if (!other_.empty()) {
        meshes.push_back(reportData(read(other_, console), other_, frame, faceLimit(), console));
      }
      output->write(reportPage(Json::Members{
          {"centre", frame.centre}, {"scale", frame.scale}, {"meshes", std::move(meshes)}}));
      const auto bytes = static_cast<long long>(output->size());
      output->commit();
      if (output_ != "-" && !console.quiet) {
        console.result(output_ + ": a page of " + groupedText(bytes) + " bytes\n");
      }
      return ExitCode::kDone;
    });
  }

 private:
  [[nodiscard]] Mesh read(const std::string& file, const Console& console) const {
    Mesh mesh = readMesh(file, from_, console);
    welding_.apply(mesh, file, console);
    return mesh;
  }
  [[nodiscard]] std::size_t faceLimit() const { return static_cast<std::size_t>(mostFaces_); }

  std::string file_;
  std::string other_;
  std::string output_;
  std::string from_;
  int mostFaces_ = 100'000;
  Welding welding_;
};

}  // namespace

std::unique_ptr<Command> makeReportCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<ReportCommand>();
}

}  // namespace zel::program
