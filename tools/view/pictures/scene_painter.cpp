#include "tools/view/pictures/scene_painter.h"

#include <GL/gl.h>

#include "tools/view/pictures/lighting.h"

namespace zel::view {
namespace {

constexpr float kEdgeWidth = 1.0F;
constexpr float kBoundaryWidth = 2.5F;
constexpr float kNormalWidth = 1.0F;
constexpr float kPointSize = 3.0F;

constexpr Colour kBoundaryColour{226, 74, 20, 255};
constexpr Colour kNormalColour{30, 96, 190, 255};
constexpr Colour kPointColour{70, 80, 100, 255};

void setColour(const Colour& colour) {
  glColor4ub(colour.red, colour.green, colour.blue, colour.alpha);
}

}  // namespace

ScenePainter::ScenePainter(const SceneMesh& scene, const TextureImage& texture)
    : scene_(scene), texture_(texture) {}

ScenePainter::~ScenePainter() {
  for (const unsigned list : lists_) {
    if (list != 0) {
      glDeleteLists(list, 1);
    }
  }
  if (textureName_ != 0) {
    glDeleteTextures(1, &textureName_);
  }
}

void ScenePainter::draw(const DrawOptions& options, const Camera& camera, ViewSize size) {
  glViewport(0, 0, size.width, size.height);
  paintBackground(options.backgroundTop, options.backgroundBottom);
  placeLights();
  camera.loadProjection(size);
  camera.loadModelView();
  if (scene_.faces.empty()) {
    drawPoints(kPointSize * options.lineScale);
    return;
  }
  if (options.faces) {
    drawFaces(options);
    if (options.edges || options.boundary) {
      pushFacesBack(options);
    }
  }
  drawLines(options);
}

ScenePainter::Layer ScenePainter::faceLayer(const DrawOptions& options) const {
  if (options.textured && !scene_.textureCoords.empty()) {
    return options.smooth ? kTexturedSmoothFaces : kTexturedFlatFaces;
  }
  return options.smooth ? kSmoothFaces : kFlatFaces;
}

void ScenePainter::drawFaces(const DrawOptions& options) {
  const Layer layer = faceLayer(options);
  const bool textured = layer == kTexturedFlatFaces || layer == kTexturedSmoothFaces;
  setFaceMaterial(textured);
  if (textured) {
    if (textureName_ == 0) {
      textureName_ = uploadTexture(texture_.isEmpty() ? checkerTexture() : texture_);
    }
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, textureName_);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  }
  callLayer(layer);
  glDisable(GL_TEXTURE_2D);
}

// Lines lie in the faces; with depths a little farther away these do not cut them up. Their colours
// are drawn before: at the outline steep faces would be pushed behind those of the far side.
void ScenePainter::pushFacesBack(const DrawOptions& options) {
  glClear(GL_DEPTH_BUFFER_BIT);
  glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
  glDisable(GL_LIGHTING);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1, 1);
  callLayer(faceLayer(options));
  glDisable(GL_POLYGON_OFFSET_FILL);
  glEnable(GL_LIGHTING);
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

void ScenePainter::drawLines(const DrawOptions& options) {
  if (options.edges) {
    glLineWidth(kEdgeWidth * options.lineScale);
    setLineLight();
    callLayer(kEdges);
  }
  glDisable(GL_LIGHTING);
  if (options.boundary) {
    glLineWidth(kBoundaryWidth * options.lineScale);
    setColour(kBoundaryColour);
    callLayer(kBoundary);
  }
  if (options.normals) {
    glLineWidth(kNormalWidth * options.lineScale);
    setColour(kNormalColour);
    callLayer(kNormals);
  }
}

void ScenePainter::callLayer(Layer layer) {
  if (lists_[layer] == 0) {
    record(layer);
  }
  glCallList(lists_[layer]);
}

void ScenePainter::record(Layer layer) {
  if (layer >= kEdges) {
    edgeLists();
  }
  lists_[layer] = glGenLists(1);
  glNewList(lists_[layer], GL_COMPILE);
  switch (layer) {
    case kFlatFaces:
      drawFlatFaces();
      break;
    case kSmoothFaces:
      drawCorners(true, false);
      break;
    case kTexturedFlatFaces:
      drawCorners(false, true);
      break;
    case kTexturedSmoothFaces:
      drawCorners(true, true);
      break;
    case kEdges:
      drawEdges(edges_.all);
      break;
    case kBoundary:
      drawEdges(edges_.boundary);
      break;
    case kNormals:
      drawNormals();
      break;
    case kLayers:
      break;
  }
  glEndList();
}

void ScenePainter::drawFlatFaces() const {
  for (const SceneFace& face : scene_.faces) {
    face.triangle.ShowM(scene_.points);
  }
}

void ScenePainter::drawCorners(bool smooth, bool textured) const {
  const std::vector<Vector3> normals = smooth ? cornerNormals(scene_) : std::vector<Vector3>();
  glBegin(GL_TRIANGLES);
  for (std::size_t f = 0; f < scene_.faces.size(); ++f) {
    const TriangleCL& triangle = scene_.faces[f].triangle;
    std::array<int, 3> corners{};
    Vector3 own{};
    triangle.GetTriangleM(corners.data());
    triangle.GetNormM(own.data());
    for (std::size_t k = 0; k < 3; ++k) {
      glNormal3fv(smooth ? normals[3 * f + k].data() : own.data());
      if (textured) {
        glTexCoord2fv(scene_.textureCoords[3 * f + k].data());
      }
      glVertex3fv(scene_.point(corners[k]).data());
    }
  }
  glEnd();
}

void ScenePainter::drawEdges(const std::vector<Edge>& edges) const {
  glBegin(GL_LINES);
  for (const Edge& edge : edges) {
    glVertex3fv(scene_.point(edge[0]).data());
    glVertex3fv(scene_.point(edge[1]).data());
  }
  glEnd();
}

void ScenePainter::drawNormals() {
  const float length = normalLength(scene_, edges_.all);
  glBegin(GL_LINES);
  for (const auto& [foot, normal] : normalsOf(scene_)) {
    glVertex3fv(foot.data());
    glVertex3f(foot[0] + length * normal[0], foot[1] + length * normal[1],
               foot[2] + length * normal[2]);
  }
  glEnd();
}

void ScenePainter::drawPoints(float size) const {
  glDisable(GL_LIGHTING);
  glPointSize(size);
  setColour(kPointColour);
  glBegin(GL_POINTS);
  for (const int node : scene_.shownNodes) {
    glVertex3fv(scene_.point(node).data());
  }
  glEnd();
}

const EdgeLists& ScenePainter::edgeLists() {
  if (!hasEdges_) {
    edges_ = edgesOf(scene_);
    hasEdges_ = true;
  }
  return edges_;
}

std::size_t ScenePainter::boundaryCount() { return edgeLists().boundary.size(); }

}  // namespace zel::view
