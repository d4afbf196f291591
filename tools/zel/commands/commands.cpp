#include "tools/zel/commands/commands.h"

namespace zel::program {

const std::vector<CommandEntry>& commands() {
  static const std::vector<CommandEntry> table = {
      {"info", "Tell what is in mesh files", makeInfoCommand},
      {"check", "Look for defects of meshes", makeCheckCommand},
      {"convert", "Write a mesh in another format", makeConvertCommand},
      {"diff", "Compare two meshes", makeDiffCommand},
      {"weld", "Merge nodes within a tolerance", makeWeldCommand},
      {"normals", "Give faces and nodes normals", makeNormalsCommand},
      {"unfold", "Lay triangles out flat as texture coordinates", makeUnfoldCommand},
      {"fit", "Fit a plane, a line and a circle to points", makeFitCommand},
      {"formats", "List the file formats", makeFormatsCommand},
      {"render", "Draw a mesh into a PNG picture", makeRenderCommand},
      {"report", "Write a page that shows a mesh in a browser", makeReportCommand},
      {"view", "Show a mesh in a window", makeViewCommand},
      {"demo", "Make, weld, save, read back and compare a mesh", makeDemoCommand},
      {"help", "Tell how the program or a subcommand is used", makeHelpCommand},
      {"version", "Tell the version", makeVersionCommand},
      {"completion", "Print what completes command lines in a shell", makeCompletionCommand},
  };
  return table;
}

}  // namespace zel::program
