#include "zel/io/detail/material_file.h"

#include <algorithm>
#include <cmath>

#include "zel/io/detail/text_cursor.h"

namespace zel {

namespace {

bool takeUnit(TextCursor& text, std::uint8_t& value) {
  constexpr float kFull = 255.0F;
  float part = 0.0F;
  text.skipBlanks();
  if (!text.takeReal(part) || !std::isfinite(part)) {
    return false;
  }
  value = static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0F, 1.0F) * kFull));
  return true;
}

std::string restOfLine(TextCursor& text) {
  text.skipBlanks();
  std::string_view rest = text.takeLine();
  while (!rest.empty() && TextCursor::isBlank(rest.back())) {
    rest.remove_suffix(1);
  }
  return std::string(rest);
}

}  // namespace

int materialNamed(Appearance& appearance, const std::string& name) {
  auto& materials = appearance.materials;
  const auto found = std::ranges::find(materials, name, &Material::name);
  const auto place = static_cast<int>(found - materials.begin());
  if (found == materials.end()) {
    materials.push_back({.name = name, .texture = {}, .textureBytes = {}});
  }
  return place;
}

long long readMaterials(std::string_view content, Appearance& appearance) {
  TextCursor text(content);
  Material* material = nullptr;
  long long skipped = 0;
  text.take("\xEF\xBB\xBF");
  for (; !text.atEnd(); text.takeLine(), text.takeLineEnd()) {
    text.skipBlanks();
    if (text.atLineEnd() || text.peek() == '#') {
      continue;
    }
    const std::string_view keyword = text.takeWord();
    if (keyword == "newmtl") {
      const auto place = static_cast<std::size_t>(materialNamed(appearance, restOfLine(text)));
      material = &appearance.materials[place];
    } else if (material == nullptr) {
      ++skipped;
    } else if (keyword == "Kd") {
      Colour colour = material->diffuse;
      const bool isWhole =
          takeUnit(text, colour[0]) && takeUnit(text, colour[1]) && takeUnit(text, colour[2]);
      material->diffuse = isWhole ? colour : material->diffuse;
      skipped += isWhole ? 0 : 1;
    } else if (keyword == "d") {
      skipped += takeUnit(text, material->diffuse[3]) ? 0 : 1;
    } else if (keyword == "map_Kd") {
      material->texture = restOfLine(text);
    } else {
      ++skipped;
    }
  }
  return skipped;
}

}  // namespace zel
