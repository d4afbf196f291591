#include "tools/zel/json.h"

#include <nlohmann/json.hpp>

namespace zel::program {

namespace {

using Tree = nlohmann::ordered_json;

Tree treeOf(const Json& json);

template <class Plain>
Tree treeOfValue(const Plain& value) {
  return value;
}

Tree treeOfValue(const Json::Elements& elements) {
  Tree tree = Tree::array();
  for (const Json& element : elements) {
    tree.push_back(treeOf(element));
  }
  return tree;
}

Tree treeOfValue(const Json::Members& members) {
  Tree tree = Tree::object();
  for (const auto& [key, value] : members) {
    tree[key] = treeOf(value);
  }
  return tree;
}

Tree treeOf(const Json& json) {
  return std::visit([](const auto& value) { return treeOfValue(value); }, json.value());
}

}  // namespace

std::string Json::line() const {
  return treeOf(*this).dump(-1, ' ', false, Tree::error_handler_t::replace) + "\n";
}

}  // namespace zel::program
