#include <optional>

#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/format_options.h"
#include "tools/zel/json.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/point_fit.h"

namespace zel::program {

namespace {

struct Fits {
  int points = 0;
  std::array<std::array<float, 2>, 3> extents{};  ///< along x, y and z
  float diameter = 0.0F;                          ///< distance of the two farthest points
  std::array<int, 2> farthest{};                  ///< their node slots
  std::optional<FittedPlane> plane;
  std::optional<FittedLine> line;
  std::optional<FittedCircle> circle;
};

template <class Shape>
std::optional<Shape> fitted(const Point3DArr& points, bool (*fit)(const Point3DArr&, Shape&)) {
  Shape shape{};
  return fit(points, shape) ? std::optional<Shape>(shape) : std::nullopt;
}

Fits fitAll(const Point3DArr& points, const std::vector<int>& slots) {
  Fits fits;
  fits.points = points.GetAvailableNumM();
  const float x[3] = {1, 0, 0};
  const float y[3] = {0, 1, 0};
  const float z[3] = {0, 0, 1};
  points.GetMaxMinM(x, y, z, fits.extents[0].data(), fits.extents[1].data(),
                    fits.extents[2].data());
  int first = 0;
  int second = 0;
  fits.diameter = static_cast<float>(slSqrt(points.GetFarthestTwoPointsM(0, -1, &first, &second)));
  fits.farthest = {kNoIndex, kNoIndex};
  if (first >= 0) {
    fits.farthest = {slots[static_cast<std::size_t>(first)],
                     slots[static_cast<std::size_t>(second)]};
  }
  fits.plane = fitted<FittedPlane>(points, fitPlane);
  fits.line = fitted<FittedLine>(points, fitLine);
  fits.circle = fitted<FittedCircle>(points, fitCircle);
  return fits;
}

Json jsonOf(const FittedPlane& plane) {
  return Json::Members{{"normal", plane.normal}, {"d", plane.d}, {"shapeError", plane.shapeError}};
}

Json jsonOf(const FittedLine& line) {
  return Json::Members{{"point", line.point},
                       {"direction", line.direction},
                       {"shapeError", line.shapeError},
                       {"averageDistance", line.averageDistance}};
}

Json jsonOf(const FittedCircle& circle) {
  return Json::Members{{"centre", circle.centre},
                       {"normal", circle.normal},
                       {"radius", circle.radius},
                       {"shapeError", circle.shapeError}};
}

Json jsonOf(const std::string& file, const Fits& fits) {
  Json::Members json;
  json.emplace_back("file", file);
  json.emplace_back("points", fits.points);
  json.emplace_back("extents", fits.points > 0 ? Json(fits.extents) : Json());
  json.emplace_back("diameter", fits.diameter);
  json.emplace_back("farthestPoints", fits.farthest[0] >= 0 ? Json(fits.farthest) : Json());
  json.emplace_back("plane", fits.plane ? jsonOf(*fits.plane) : Json());
  json.emplace_back("line", fits.line ? jsonOf(*fits.line) : Json());
  json.emplace_back("circle", fits.circle ? jsonOf(*fits.circle) : Json());
  return {std::move(json)};
}

std::string textOf(const std::string& file, const Fits& fits) {
  std::string text = file + "\n" + reportRow("points", groupedText(fits.points));
  if (fits.points == 0) {
    return text;
  }
  const char* const axes[3] = {"along x", "along y", "along z"};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    text += reportRow(axes[axis],
                      shortText(fits.extents[axis][0]) + " to " + shortText(fits.extents[axis][1]));
  }
  if (fits.farthest[0] >= 0) {
    text += reportRow("diameter", shortText(fits.diameter) + " between nodes " +
                                      std::to_string(fits.farthest[0]) + " and " +
                                      std::to_string(fits.farthest[1]));
  }
  text += reportRow("plane", !fits.plane ? "none: the points lie on a line"
                                         : "normal " + pointText(fits.plane->normal) + ", d " +
                                               shortText(fits.plane->d) + ", shape error " +
                                               shortText(fits.plane->shapeError));
  text += reportRow("line", !fits.line ? "none: the points lie in one place"
                                       : "through " + pointText(fits.line->point) + " along " +
                                             pointText(fits.line->direction) + ", shape error " +
                                             shortText(fits.line->shapeError));
  text +=
      reportRow("circle", !fits.circle ? "none: the points lie on a line"
                                       : "centre " + pointText(fits.circle->centre) + ", radius " +
                                             shortText(fits.circle->radius) + ", shape error " +
                                             shortText(fits.circle->shapeError));
  return text;
}

class FitCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("FILES", files_, "Mesh files, or - for standard input").required();
    options
        .value("--points", "NUMBERS", points_, "Node numbers to use, separated by commas; else all")
        .separatedBy(',')
        .notNegative();
    options.flag("--json", json_, "One JSON object a line for each file");
    declareFrom(options, from_);
    options.note(
        "Fits a plane, a line and a circle to the points and tells extents and shape errors (the "
        "root of the summed squared deviations from the mean distance, divided by the count).");
    options.example("zel fit bunny.obj --points 12,40,77,105 --json");
  }

  ExitCode run(const Console& console) override {
    return forEachFile(files_, console, [&](const std::string& file) {
      const MeshDocument mesh = readMesh(file, from_, console);
      std::vector<int> slots = points_;
      if (slots.empty()) {
        slots = NodeNumbering(mesh.nodes).slots;
      }
      const Fits fits = fitAll(chosenPoints(mesh, slots, file), slots);
      console.result(json_ ? jsonOf(file, fits).line() : textOf(file, fits));
      return ExitCode::kDone;
    });
  }

 private:
  static Point3DArr chosenPoints(const MeshDocument& mesh, const std::vector<int>& slots,
                                 const std::string& file) {
    Point3DArr points;
    points.InitialSizeM(static_cast<int>(slots.size()));
    for (const int slot : slots) {
      const NodeCL* const node = mesh.nodes.GetItemPM(slot);
      if (node == nullptr || !isLive(*node)) {
        throw unreadable(file, "there is no node " + std::to_string(slot));
      }
      const Point point = pointOf(mesh.nodes, slot);
      if (!isFinite(point)) {
        throw unreadable(file, "node " + std::to_string(slot) + " is not finite");
      }
      points.AddItemM(point.data());
    }
    return points;
  }

  std::vector<std::string> files_;
  std::vector<int> points_;
  std::string from_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeFitCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<FitCommand>();
}

}  // namespace zel::program
