#pragma once

#include <array>
#include <variant>
#include <vector>

#include "zel/zel.h"

namespace zel::program {

/// How a class of defect is called.
struct DefectClass {
  int Defects::*count;
  const char* name;         ///< for programs and for --ignore
  const char* description;  ///< for people
  /// The member that lists what is concerned.
  std::variant<std::vector<DefectLists::Edge> DefectLists::*, std::vector<int> DefectLists::*,
               std::vector<FaceRef> DefectLists::*>
      list;
};

/// All classes, in the order of reports.
inline constexpr std::array<DefectClass, 10> kDefectClasses = {{
    {&Defects::openEdges, "openEdges", "edges of one face", &DefectLists::openEdges},
    {&Defects::crowdedEdges, "crowdedEdges", "edges of three or more faces",
     &DefectLists::crowdedEdges},
    {&Defects::mixedEdges, "mixedEdges", "edges whose two faces are wound against each other",
     &DefectLists::mixedEdges},
    {&Defects::bowTieNodes, "bowTieNodes", "nodes whose faces form several fans",
     &DefectLists::bowTieNodes},
    {&Defects::duplicateFaces, "duplicateFaces", "faces of the same nodes as one before",
     &DefectLists::duplicateFaces},
    {&Defects::degenerateFaces, "degenerateFaces", "faces with a repeated node or no area",
     &DefectLists::degenerateFaces},
    {&Defects::danglingFaces, "danglingFaces", "faces that name a deleted node",
     &DefectLists::danglingFaces},
    {&Defects::unusedNodes, "unusedNodes", "nodes that no face names", &DefectLists::unusedNodes},
    {&Defects::nonFiniteNodes, "nonFiniteNodes", "nodes with NaN or infinity",
     &DefectLists::nonFiniteNodes},
    {&Defects::insideOutComponents, "insideOutComponents", "closed components that look inward",
     &DefectLists::insideOutComponents},
}};

}  // namespace zel::program
