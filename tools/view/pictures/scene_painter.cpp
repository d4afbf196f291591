#include "tools/view/pictures/scene_painter.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>

#include <algorithm>
#include <set>
#include <utility>

#include "tools/view/pictures/scene_marks.h"

namespace zel::view {
namespace {

constexpr float kEdgeWidth = 1.0F;
constexpr float kFeatureWidth = 1.6F;
constexpr float kBoundaryWidth = 2.5F;
constexpr float kNormalWidth = 1.0F;
constexpr float kPointSize = 3.0F;
constexpr float kDefectPointSize = 7.0F;
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

// Under a texture.
constexpr Colour kWhite{242, 242, 242, 255};
// The texture that is laid over all faces, or the checker pattern.
constexpr int kLaidOver = -2;

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
  for (const auto& [place, name] : textureNames_) {
    glDeleteTextures(1, &name);
  }
}

void ScenePainter::dropFaceLists() {
  for (const auto& [key, groups] : faceGroups_) {
    for (const FaceGroup& group : groups) {
      glDeleteLists(group.list, 1);
    }
  }
  faceGroups_.clear();
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
      if (options.edges || options.boundary || options.features || options.defects ||
          selection_.face) {
        pushFacesBack(options);
      }
    }
    drawLines(options);
  }
  if (options.defects) {
    drawDefects(options);
  }
  drawSelection(options);
  if (options.axes) {
    drawAxesCross(camera, options, size, left);
  }
  if (options.defects) {
    drawDefectNames(scene_.defects, options, size, left);
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
  const std::vector<FaceGroup>& groups = faceGroups(key);
  Look look;
  if (std::get<3>(key) != Colouring::kOwn) {
    // Gloss and tint would falsify what the colours tell.
    look.gloss = 0;
    look.inside = {1, 1, 1};
  }
  for (const FaceGroup& group : groups) {
    look.textured = group.texture != 0;
    glBindTexture(GL_TEXTURE_2D, group.texture);
    light_.turnOn(look);
    glCallList(group.list);
  }
  FaceLight::turnOff();
}

// Lines lie in the faces; with depths a little farther away these do not cut them up. Their colours
// are drawn before: at the outline steep faces would be pushed behind those of the far side.
void ScenePainter::pushFacesBack(const DrawOptions& options) {
  glClear(GL_DEPTH_BUFFER_BIT);
  glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1, 1);
  for (const FaceGroup& group : faceGroups(faceKey(options))) {
    glCallList(group.list);
  }
  glDisable(GL_POLYGON_OFFSET_FILL);
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

unsigned ScenePainter::textureName(int texture) {
  if (texture == SceneMaterial::kNoTexture) {
    return 0;
  }
  unsigned& name = textureNames_[texture];
  if (name == 0) {
    name = texture != kLaidOver ? uploadTexture(scene_.textures[static_cast<std::size_t>(texture)])
           : texture_.isEmpty() ? uploadTexture(checkerTexture())
                                : uploadTexture(texture_);
  }
  return name;
}

int ScenePainter::textureOf(const FaceKey& key, std::size_t face) const {
  if (!std::get<1>(key)) {
    return SceneMaterial::kNoTexture;
  }
  const bool hasOwn = texture_.isEmpty() && !scene_.textures.empty();
  return hasOwn ? scene_.faceMaterials[face].texture : kLaidOver;
}

const std::vector<ScenePainter::FaceGroup>& ScenePainter::faceGroups(const FaceKey& key) {
  std::vector<FaceGroup>& groups = faceGroups_[key];
  if (groups.empty()) {
    std::set<int> textures;
    for (std::size_t face = 0; face < scene_.faces.size(); ++face) {
      textures.insert(textureOf(key, face));
    }
    for (const int texture : textures) {
      groups.push_back({textureName(texture), glGenLists(1)});
      glNewList(groups.back().list, GL_COMPILE);
      recordFaces(key, texture);
      glEndList();
    }
  }
  return groups;
}

Colour ScenePainter::cornerColour(const FaceKey& key, std::size_t face,
                                  const std::array<float, 2>& shares) {
  const std::array<float, 3> weights{shares[0], shares[1], 1 - shares[0] - shares[1]};
  const ScalarField& field = scalars(std::get<3>(key));
  if (!field.corners.empty()) {
    float value = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      value += weights[k] * field.corners[3 * face + k];
    }
    return colourOfShare(field.shareOf(value));
  }
  if (textureOf(key, face) != SceneMaterial::kNoTexture) {
    return kWhite;
  }
  if (scene_.nodeColours.empty()) {
    return scene_.faceMaterials.empty() ? kClay : scene_.faceMaterials[face].colour;
  }
  std::array<float, 3> mean{};
  const std::array<int, 3> corners = cornersOf(scene_.faces[face]);
  for (std::size_t k = 0; k < 3; ++k) {
    const Colour& colour = scene_.nodeColours[static_cast<std::size_t>(corners[k])];
    mean = plus(mean,
                {static_cast<float>(colour.red), static_cast<float>(colour.green),
                 static_cast<float>(colour.blue)},
                weights[k]);
  }
  const auto byte = [](float value) {
    return static_cast<std::uint8_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
  };
  return {byte(mean[0]), byte(mean[1]), byte(mean[2]), 255};
}

void ScenePainter::recordFaces(const FaceKey& key, int texture) {
  const auto [smooth, textured, shaded, colouring] = key;
  std::vector<Vertex> vertices;
  for (std::size_t c = 0; c < surface_.corners.size(); ++c) {
    const std::size_t f = surface_.faces[c / 3];
    if (textureOf(key, f) != texture) {
      continue;
    }
    const Surface::Corner& corner = surface_.corners[c];
    const Surface::Sample& sample = surface_.samples[corner.sample];
    Vertex vertex{sample.point, smooth ? sample.normal : normalOf(scene_.faces[f]), {}, {}, {}};
    if (shaded) {
      vertex.open = occlusion_.samples[corner.sample];
    }
    if (textured) {
      vertex.texture = blended(&scene_.textureCoords[3 * f], corner.shares);
    }
    const Colour colour = cornerColour(key, f, corner.shares);
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

void ScenePainter::drawDefects(const DrawOptions& options) const {
  glPointSize(kDefectPointSize * options.lineScale);
  glLineWidth(kBoundaryWidth * options.lineScale);
  for (const DefectMarks& marks : scene_.defects) {
    setColour(marks.colour);
    glBegin(GL_TRIANGLES);
    for (const std::uint32_t face : marks.faces) {
      for (const int corner : cornersOf(scene_.faces[face])) {
        glVertex3fv(scene_.point(corner).data());
      }
    }
    glEnd();
    drawEdges(marks.edges);
    // Faces without area are seen by their outlines.
    glBegin(GL_LINES);
    for (const std::uint32_t face : marks.faces) {
      const std::array<int, 3> corners = cornersOf(scene_.faces[face]);
      for (std::size_t k = 0; k < 3; ++k) {
        glVertex3fv(scene_.point(corners[k]).data());
        glVertex3fv(scene_.point(corners[(k + 1) % 3]).data());
      }
    }
    glEnd();
    glBegin(GL_POINTS);
    for (const int node : marks.nodes) {
      glVertex3fv(scene_.point(node).data());
    }
    glEnd();
  }
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
