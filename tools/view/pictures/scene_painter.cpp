#include "tools/view/pictures/scene_painter.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>

#include <utility>

#include "tools/view/pictures/scene_marks.h"

namespace zel::view {
namespace {

constexpr float kEdgeWidth = 1.0F;
constexpr float kFeatureWidth = 1.6F;
constexpr float kBoundaryWidth = 2.5F;
constexpr float kNormalWidth = 1.0F;
constexpr float kPointSize = 3.0F;
constexpr float kPickedPointSize = 9.0F;

constexpr Colour kEdgeColour{40, 46, 58, 150};
constexpr Colour kEdgeColourOnDark{150, 162, 180, 150};
constexpr Colour kFeatureColour{28, 32, 40, 255};
constexpr Colour kFeatureColourOnDark{222, 228, 238, 255};
constexpr Colour kBoundaryColour{226, 74, 20, 255};
constexpr Colour kNormalColour{30, 96, 190, 255};
constexpr Colour kPointColour{70, 80, 100, 255};
constexpr Colour kPointColourOnDark{200, 208, 220, 255};
constexpr Colour kPickedColour{255, 208, 0, 255};

void setColour(const Colour& colour) {
  glColor4ub(colour.red, colour.green, colour.blue, colour.alpha);
}

// A corner of a face as OpenGL takes it.
struct Vertex {
  Vector3 point;
  Vector3 normal;
  std::array<std::uint8_t, 4> colour;
  std::array<float, 2> texture;
  Openness open;
};

void drawVertices(const std::vector<Vertex>& vertices) {
  if (vertices.empty()) {
    return;
  }
  const Vertex& first = vertices.front();
  glVertexPointer(3, GL_FLOAT, sizeof(Vertex), first.point.data());
  glNormalPointer(GL_FLOAT, sizeof(Vertex), first.normal.data());
  glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(Vertex), first.colour.data());
  glClientActiveTexture(GL_TEXTURE1);
  glTexCoordPointer(2, GL_FLOAT, sizeof(Vertex), &first.open.front);
  glEnableClientState(GL_TEXTURE_COORD_ARRAY);
  glClientActiveTexture(GL_TEXTURE0);
  glTexCoordPointer(2, GL_FLOAT, sizeof(Vertex), first.texture.data());
  for (const GLenum kind :
       {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY}) {
    glEnableClientState(kind);
  }
  glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(vertices.size()));
  for (const GLenum kind :
       {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY}) {
    glDisableClientState(kind);
  }
  glClientActiveTexture(GL_TEXTURE1);
  glDisableClientState(GL_TEXTURE_COORD_ARRAY);
  glClientActiveTexture(GL_TEXTURE0);
}

// The value at a place of a face, from those of its three corners.
template <std::size_t kSize>
std::array<float, kSize> blended(const std::array<float, kSize>* values,
                                 const std::array<float, 2>& shares) {
  std::array<float, kSize> result{};
  for (std::size_t k = 0; k < kSize; ++k) {
    result[k] = shares[0] * values[0][k] + shares[1] * values[1][k] +
                (1 - shares[0] - shares[1]) * values[2][k];
  }
  return result;
}

}  // namespace

ScenePainter::ScenePainter(const SceneMesh& scene, const TextureImage& texture)
    : scene_(scene), surface_(scene), texture_(texture) {}

ScenePainter::~ScenePainter() {
  dropFaceLists();
  for (const unsigned list : lists_) {
    if (list != 0) {
      glDeleteLists(list, 1);
    }
  }
  if (textureName_ != 0) {
    glDeleteTextures(1, &textureName_);
  }
}

void ScenePainter::dropFaceLists() {
  for (const auto& [key, list] : faceLists_) {
    glDeleteLists(list, 1);
  }
  faceLists_.clear();
}

void ScenePainter::setOcclusion(Occlusion occlusion) {
  occlusion_ = std::move(occlusion);
  dropFaceLists();
}

const EdgeLists& ScenePainter::edges() {
  if (!edges_) {
    edges_ = edgesOf(scene_);
  }
  return *edges_;
}

const ScalarField& ScenePainter::scalars(Colouring colouring) {
  const auto found = scalars_.find(colouring);
  return found != scalars_.end()
             ? found->second
             : scalars_.emplace(colouring, scalarsOf(scene_, colouring)).first->second;
}

bool ScenePainter::isColoured(const DrawOptions& options) {
  return options.faces && !scalars(options.colouring).corners.empty();
}

void ScenePainter::draw(const DrawOptions& options, const Camera& camera, ViewSize size, int left) {
  glViewport(left, 0, size.width, size.height);
  paintBackground(options.backgroundTop, options.backgroundBottom);
  camera.loadProjection(size);
  camera.loadModelView();
  glEnable(GL_BLEND);
  glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  if (options.grid) {
    drawGroundGrid(scene_, camera.up(), options);
  }
  if (options.shadow && options.faces && camera.isAbove(occlusion_.shadow.height)) {
    drawGroundShadow(occlusion_.shadow, camera.up());
  }
  if (scene_.faces.empty()) {
    drawPoints(options);
  } else {
    if (options.faces) {
      drawFaces(options);
      if (options.edges || options.boundary || options.features || selection_.face) {
        pushFacesBack(options);
      }
    }
    drawLines(options);
  }
  drawSelection(options);
  if (options.axes) {
    drawAxesCross(camera, options, size, left);
  }
  if (isColoured(options)) {
    drawLegend(scalars(options.colouring), options, size, left);
  }
  glDisable(GL_BLEND);
}

ScenePainter::FaceKey ScenePainter::faceKey(const DrawOptions& options) {
  const bool coloured = isColoured(options);
  return {options.smooth, options.textured && !coloured && !scene_.textureCoords.empty(),
          options.occlusion && !occlusion_.samples.empty(),
          coloured ? options.colouring : Colouring::kOwn};
}

void ScenePainter::drawFaces(const DrawOptions& options) {
  const FaceKey key = faceKey(options);
  const bool textured = std::get<1>(key);
  if (textured) {
    if (textureName_ == 0) {
      textureName_ = uploadTexture(texture_.isEmpty() ? checkerTexture() : texture_);
    }
    glBindTexture(GL_TEXTURE_2D, textureName_);
  }
  Look look;
  look.textured = textured;
  if (std::get<3>(key) != Colouring::kOwn) {
    // Gloss and tint would falsify what the colours tell.
    look.gloss = 0;
    look.inside = {1, 1, 1};
  }
  light_.turnOn(look);
  glCallList(faceList(key));
  FaceLight::turnOff();
}

// Lines lie in the faces; with depths a little farther away these do not cut them up. Their colours
// are drawn before: at the outline steep faces would be pushed behind those of the far side.
void ScenePainter::pushFacesBack(const DrawOptions& options) {
  glClear(GL_DEPTH_BUFFER_BIT);
  glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1, 1);
  glCallList(faceList(faceKey(options)));
  glDisable(GL_POLYGON_OFFSET_FILL);
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

unsigned ScenePainter::faceList(const FaceKey& key) {
  unsigned& list = faceLists_[key];
  if (list == 0) {
    list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    recordFaces(key);
    glEndList();
  }
  return list;
}

void ScenePainter::recordFaces(const FaceKey& key) {
  const auto [smooth, textured, shaded, colouring] = key;
  const ScalarField& field = scalars(colouring);
  std::vector<Vertex> vertices;
  vertices.reserve(surface_.corners.size());
  for (std::size_t c = 0; c < surface_.corners.size(); ++c) {
    const Surface::Corner& corner = surface_.corners[c];
    const Surface::Sample& sample = surface_.samples[corner.sample];
    const std::size_t f = surface_.faces[c / 3];
    const SceneFace& face = scene_.faces[f];
    Vertex vertex{sample.point, smooth ? sample.normal : normalOf(face), {}, {}, {}};
    if (shaded) {
      vertex.open = occlusion_.samples[corner.sample];
    }
    if (textured) {
      vertex.texture = blended(&scene_.textureCoords[3 * f], corner.shares);
    }
    Colour colour = textured ? Colour{242, 242, 242, 255} : kClay;
    if (!field.corners.empty()) {
      const float* values = &field.corners[3 * f];
      colour =
          colourOfShare(field.shareOf(corner.shares[0] * values[0] + corner.shares[1] * values[1] +
                                      (1 - corner.shares[0] - corner.shares[1]) * values[2]));
    }
    vertex.colour = {colour.red, colour.green, colour.blue, 255};
    vertices.push_back(vertex);
  }
  drawVertices(vertices);
}

void ScenePainter::drawLines(const DrawOptions& options) {
  const bool onDark = options.isDark();
  if (options.edges) {
    glLineWidth(kEdgeWidth * options.lineScale);
    setColour(onDark && !options.faces ? kEdgeColourOnDark : kEdgeColour);
    callLayer(kEdges, options);
  }
  if (options.features) {
    glLineWidth(kFeatureWidth * options.lineScale);
    setColour(onDark && !options.faces ? kFeatureColourOnDark : kFeatureColour);
    callLayer(kFeatures, options);
  }
  if (options.boundary) {
    glLineWidth(kBoundaryWidth * options.lineScale);
    setColour(kBoundaryColour);
    callLayer(kBoundary, options);
  }
  if (options.normals) {
    glLineWidth(kNormalWidth * options.lineScale);
    setColour(kNormalColour);
    callLayer(kNormals, options);
  }
}

void ScenePainter::callLayer(Layer layer, const DrawOptions& options) {
  if (layer == kFeatures && recordedAngle_ != options.featureAngle && lists_[layer] != 0) {
    glDeleteLists(lists_[layer], 1);
    lists_[layer] = 0;
  }
  if (lists_[layer] == 0) {
    record(layer, options);
  }
  glCallList(lists_[layer]);
}

void ScenePainter::record(Layer layer, const DrawOptions& options) {
  const EdgeLists& lists = edges();
  lists_[layer] = glGenLists(1);
  glNewList(lists_[layer], GL_COMPILE);
  switch (layer) {
    case kEdges:
      drawEdges(lists.all);
      break;
    case kFeatures:
      drawFeatures(options.featureAngle);
      break;
    case kBoundary:
      drawEdges(lists.boundary);
      break;
    case kNormals:
      drawNormals();
      break;
    case kLayers:
      break;
  }
  glEndList();
}

void ScenePainter::drawEdges(const std::vector<Edge>& edges) const {
  glBegin(GL_LINES);
  for (const Edge& edge : edges) {
    glVertex3fv(scene_.point(edge[0]).data());
    glVertex3fv(scene_.point(edge[1]).data());
  }
  glEnd();
}

void ScenePainter::drawFeatures(double angle) {
  recordedAngle_ = angle;
  const EdgeLists& lists = edges();
  std::vector<Edge> sharp;
  for (std::size_t i = 0; i < lists.all.size(); ++i) {
    if (static_cast<double>(lists.bends[i]) >= angle) {
      sharp.push_back(lists.all[i]);
    }
  }
  drawEdges(sharp);
}

void ScenePainter::drawNormals() {
  const float size = normalLength(scene_, edges().all);
  glBegin(GL_LINES);
  for (const auto& [foot, normal] : normalsOf(scene_)) {
    glVertex3fv(foot.data());
    glVertex3fv(plus(foot, normal, size).data());
  }
  glEnd();
}

void ScenePainter::drawPoints(const DrawOptions& options) const {
  glPointSize(kPointSize * options.lineScale);
  setColour(options.isDark() ? kPointColourOnDark : kPointColour);
  glBegin(GL_POINTS);
  for (const int node : scene_.shownNodes) {
    glVertex3fv(scene_.point(node).data());
  }
  glEnd();
}

void ScenePainter::drawSelection(const DrawOptions& options) const {
  setColour(kPickedColour);
  if (selection_.face) {
    glLineWidth(kBoundaryWidth * options.lineScale);
    glBegin(GL_LINE_LOOP);
    for (const int corner : cornersOf(scene_.faces[*selection_.face])) {
      glVertex3fv(scene_.point(corner).data());
    }
    glEnd();
  }
  if (selection_.node) {
    glDisable(GL_DEPTH_TEST);
    glPointSize(kPickedPointSize * options.lineScale);
    glBegin(GL_POINTS);
    glVertex3fv(scene_.point(*selection_.node).data());
    glEnd();
    glEnable(GL_DEPTH_TEST);
  }
}

}  // namespace zel::view
