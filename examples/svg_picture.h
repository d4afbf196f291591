#pragma once

#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "zel/curves/touch_cur.h"

inline std::string twoDigits(float value) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(2) << value;
  return text.str();
}

/// A picture in profile coordinates: z to the right, x upward.
class Picture {
 public:
  explicit Picture(const char* path) : out_(path) {
    out_ << std::fixed << std::setprecision(2)
         << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 600 550' fill='none'"
            " stroke-linecap='round' font-family='sans-serif' font-size='13'>\n"
            "<rect width='600' height='550' fill='#fcfcfa'/>\n";
  }

  void segment(float z1, float x1, float z2, float x2, const char* style) {
    begin(z1, x1) << "L";
    end(z2, x2, style);
  }
  void curve(const TouchCurD& c, const char* style) {
    float from[3];
    float to[3];
    slGetStartPnt(&c, from);
    slGetCurveEndPnt(&c, to);
    begin(from[2], from[0]);
    if (c.type == zel::kCurveLine) {
      out_ << "L";
    } else {
      out_ << "A" << kScale * c.radius1 << " " << kScale * c.radius1 << " 0 0 0 ";
    }
    end(to[2], to[0], style);
  }
  void label(float z, float x, const std::string& text) {
    out_ << "<text x='" << right(z) << "' y='" << down(x) + 4 << "' fill='#555'>" << text
         << "</text>\n";
  }
  void legend(const std::vector<std::pair<std::string, const char*>>& entries) {
    float z = -4.8F;
    for (const auto& [name, style] : entries) {
      segment(z, -1.0F, z + 0.7F, -1.0F, style);
      label(z + 0.9F, -1.0F, name);
      z += 3.1F;
    }
  }
  /// @return whether the picture is in the file.
  bool close() {
    out_ << "</svg>\n";
    out_.close();
    return !out_.fail();
  }

 private:
  static constexpr double kScale = 42.0;
  static double right(double z) { return 220.0 + kScale * z; }
  static double down(double x) { return 485.0 - kScale * x; }
  std::ostream& begin(double z, double x) {
    return out_ << "<path d='M" << right(z) << " " << down(x);
  }
  void end(double z, double x, const char* style) {
    out_ << right(z) << " " << down(x) << "' " << style << "/>\n";
  }

  std::ofstream out_;
};
