#include "tools/view/pictures/lighting.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>

#include <string>
#include <string_view>

#include "tools/view/pictures/graphics_error.h"

namespace zel::view {
namespace {

constexpr const char* kVertexSource = R"(#version 120
varying vec3 place;   // before the eye
varying vec3 fromMiddle;
varying vec3 normal;
varying vec2 open;
void main() {
  vec4 seen = gl_ModelViewMatrix * gl_Vertex;
  place = seen.xyz;
  fromMiddle = seen.xyz - gl_ModelViewMatrix[3].xyz;
  normal = gl_NormalMatrix * gl_Normal;
  open = gl_MultiTexCoord1.xy;
  gl_TexCoord[0] = gl_MultiTexCoord0;
  gl_FrontColor = gl_Color;
  gl_BackColor = gl_Color;
  gl_Position = ftransform();
}
)";

// Colours are multiplied as amounts of light and made bytes for the screen at the end.
constexpr const char* kFragmentSource = R"(#version 120
varying vec3 place;
varying vec3 fromMiddle;
varying vec3 normal;
varying vec2 open;
uniform bool textured;
uniform sampler2D picture;
uniform vec3 inside;
uniform float gloss;

vec3 toLight(vec3 bytes) { return pow(bytes, vec3(2.2)); }

void main() {
  vec3 eye = gl_ProjectionMatrix[3][3] == 1.0 ? vec3(0.0, 0.0, 1.0) : normalize(-place);
  vec3 n = dot(normal, normal) > 0.0 ? normalize(normal) : eye;
  float sky = open.x;
  vec3 surface = toLight(gl_Color.rgb);
  if (textured) {
    vec4 texel = texture2D(picture, gl_TexCoord[0].xy);
    surface *= toLight(mix(vec3(1.0), texel.rgb, texel.a));
  }
  if (!gl_FrontFacing) {
    n = -n;
    sky = open.y;
    surface *= toLight(inside);
  }
  sky = pow(sky, 1.4);
  // Faces seen edge-on may bear a smooth normal that looks away.
  n = normalize(n + eye * max(0.0, 0.02 - dot(n, eye)));

  vec3 keyWay = vec3(-1.35, 1.95, 2.15) - fromMiddle;
  vec3 fillWay = vec3(2.1, 0.6, 1.5) - fromMiddle;
  vec3 toKey = normalize(keyWay);
  vec3 toFill = normalize(fillWay);
  vec3 toBack = normalize(vec3(1.0, 1.6, -2.6) - fromMiddle);
  float shade = mix(1.0, sky, 0.55);
  float key = max(0.0, (dot(n, toKey) + 0.12) / 1.12) * shade * 3.2 / length(keyWay);
  float fill = max(0.0, (dot(n, toFill) + 0.35) / 1.35) * sky * 2.6 / length(fillWay);
  float back = max(0.0, dot(n, toBack)) * sky;
  float above = 0.5 + 0.5 * n.y;
  vec3 around = mix(vec3(0.105, 0.095, 0.09), vec3(0.27, 0.29, 0.32), above) * sky *
                (1.0 + 0.18 * clamp(fromMiddle.y, -1.0, 1.0));
  vec3 light = around + key * vec3(0.80, 0.765, 0.70) + fill * vec3(0.115, 0.13, 0.16) +
               back * vec3(0.16, 0.17, 0.19);
  float edge = pow(1.0 - max(0.0, dot(n, eye)), 3.0);
  float glint = pow(max(0.0, dot(n, normalize(toKey + eye))), 36.0) * gloss * shade;
  vec3 seen = surface * light + edge * (0.3 + 0.7 * above) * 0.10 * sky + vec3(glint) * 0.5;
  gl_FragColor = vec4(pow(clamp(seen, 0.0, 1.0), vec3(1.0 / 2.2)), gl_Color.a);
}
)";

GLuint compiled(GLenum kind, const char* source) {
  const GLuint shader = glCreateShader(kind);
  glShaderSource(shader, 1, &source, nullptr);
  glCompileShader(shader);
  return shader;
}

bool hasShaders() {
  const auto* const text = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  const std::string_view version = text != nullptr ? text : "";
  return !version.empty() && version.front() >= '2' && version.front() <= '9';
}

}  // namespace

void paintBackground(const Colour& top, const Colour& bottom) {
  glClear(GL_DEPTH_BUFFER_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_TEXTURE_2D);
  glDisable(GL_BLEND);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glShadeModel(GL_SMOOTH);
  glBegin(GL_QUADS);
  glColor4ub(bottom.red, bottom.green, bottom.blue, bottom.alpha);
  glVertex2i(-1, -1);
  glVertex2i(1, -1);
  glColor4ub(top.red, top.green, top.blue, top.alpha);
  glVertex2i(1, 1);
  glVertex2i(-1, 1);
  glEnd();
  glEnable(GL_DEPTH_TEST);
}

FaceLight::FaceLight() {
  if (!hasShaders()) {
    throw GraphicsError("OpenGL 2.0 or later is needed");
  }
  program_ = glCreateProgram();
  for (const GLuint shader :
       {compiled(GL_VERTEX_SHADER, kVertexSource), compiled(GL_FRAGMENT_SHADER, kFragmentSource)}) {
    glAttachShader(program_, shader);
    glDeleteShader(shader);
  }
  glLinkProgram(program_);
  GLint isLinked = GL_FALSE;
  glGetProgramiv(program_, GL_LINK_STATUS, &isLinked);
  if (isLinked != GL_TRUE) {
    std::string reason(1024, '\0');
    GLsizei size = 0;
    glGetProgramInfoLog(program_, static_cast<GLsizei>(reason.size()), &size, reason.data());
    glDeleteProgram(program_);
    reason.resize(static_cast<std::size_t>(size));
    throw GraphicsError("OpenGL does not take the shading program: " + reason);
  }
}

FaceLight::~FaceLight() { glDeleteProgram(program_); }

void FaceLight::turnOn(const Look& look) {
  glUseProgram(program_);
  glUniform1i(glGetUniformLocation(program_, "textured"), look.textured ? 1 : 0);
  glUniform1i(glGetUniformLocation(program_, "picture"), 0);
  glUniform3fv(glGetUniformLocation(program_, "inside"), 1, look.inside.data());
  glUniform1f(glGetUniformLocation(program_, "gloss"), look.gloss);
}

void FaceLight::turnOff() { glUseProgram(0); }

}  // namespace zel::view
