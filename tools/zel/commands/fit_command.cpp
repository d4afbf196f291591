#include <optional>

#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/report.h"

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

Fits fitAll(const std::vector<Float3>& points, const std::vector<int>& slots) {
  Fits fits;
  fits.points = static_cast<int>(points.size());
  Bounds bounds;
  Point3DArr list;
  list.InitialSizeM(fits.points);
  for (const Float3& point : points) {
    bounds.extendTo(point.data());
    list.AddItemM(point.data());
  }
  if (list.GetBoundM() != fits.points) {
    throw Error::outOfMemory();
  }
  for (std::size_t axis = 0; axis < 3; ++axis) {
    fits.extents[axis] = {bounds.low[axis], bounds.high[axis]};
  }
  int first = 0;
  int second = 0;
  fits.diameter = static_cast<float>(slSqrt(list.GetFarthestTwoPointsM(0, -1, &first, &second)));
  fits.farthest = {kNoIndex, kNoIndex};
  if (first >= 0) {
    fits.farthest = {slots[static_cast<std::size_t>(first)],
                     slots[static_cast<std::size_t>(second)]};
  }
  fits.plane = fitPlane(points);
  fits.line = fitLine(points);
  fits.circle = fitCircle(points);
  return fits;
}

std::string textOf(const FittedPlane& plane) {
  return "normal " + pointText(plane.normal) + ", d " + shortText(plane.d);
}

std::string textOf(const FittedLine& line) {
  return "through " + pointText(line.point) + " along " + pointText(line.direction);
}

std::string textOf(const FittedCircle& circle) {
  return "centre " + pointText(circle.centre) + ", radius " + shortText(circle.radius);
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

/// What was fitted, or why nothing was.
template <class Shape>
void reportShape(Report& report, const std::string& name, const std::optional<Shape>& shape,
                 const std::string& whyNot) {
  report.row(name,
             shape ? textOf(*shape) + ", shape error " + shortText(shape->shapeError) : whyNot,
             {{name, shape ? jsonOf(*shape) : Json()}});
}

Report reportOn(const std::string& file, const Fits& fits) {
  Report report(file);
  report.count("points", "points", fits.points);
  const char* const axes[3] = {"along x", "along y", "along z"};
  for (std::size_t axis = 0; axis < 3 && fits.points > 0; ++axis) {
    report.row(axes[axis],
               shortText(fits.extents[axis][0]) + " to " + shortText(fits.extents[axis][1]), {});
  }
  const bool hasDiameter = fits.farthest[0] >= 0;
  report.row("diameter",
             !hasDiameter
                 ? ""
                 : shortText(fits.diameter) + " between nodes " + std::to_string(fits.farthest[0]) +
                       " and " + std::to_string(fits.farthest[1]),
             {{"extents", fits.points > 0 ? Json(fits.extents) : Json()},
              {"diameter", fits.diameter},
              {"farthestPoints", hasDiameter ? Json(fits.farthest) : Json()}});
  const auto why = [&fits](const char* reason) { return fits.points > 0 ? reason : ""; };
  reportShape(report, "plane", fits.plane, why("none: the points lie on a line"));
  reportShape(report, "line", fits.line, why("none: the points lie in one place"));
  reportShape(report, "circle", fits.circle, why("none: the points lie on a line"));
  return report;
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
      const Mesh mesh = readMesh(file, from_, console);
      std::vector<int> slots = points_;
      if (slots.empty()) {
        slots = NodeNumbering(mesh.nodes).slots;
      }
      const Fits fits = fitAll(chosenPoints(mesh, slots, file), slots);
      console.result(reportOn(file, fits).print(json_));
      return ExitCode::kDone;
    });
  }

 private:
  static std::vector<Float3> chosenPoints(const Mesh& mesh, const std::vector<int>& slots,
                                          const std::string& file) {
    std::vector<Float3> points;
    for (const int slot : slots) {
      const NodeCL* const node = mesh.nodes.GetItemPM(slot);
      if (node == nullptr || !isLive(*node)) {
        throw unreadable(file, "there is no node " + std::to_string(slot));
      }
      const Float3 point = pointOf(mesh.nodes, slot);
      if (!isFinite(point)) {
        throw unreadable(file, "node " + std::to_string(slot) + " is not finite");
      }
      points.push_back(point);
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
