// One drawing entity reduced to the view's shapes: curves flattened with the geometry code,
// texts placed at their insertion point, block references expanded into their block's
// shapes (transformed) and their attributes, dimensions as the block they name, hatches as
// their boundary outlines.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "drawing/model/document.h"
#include "workbench/display_list.h"

namespace veltor::workbench {

// Turns entities of one document into shapes, remembering each block's shapes. The document
// must outlive it and stay unchanged while it is used.
class EntityShapes {
 public:
  explicit EntityShapes(const model::Document& doc);

  // The shapes of a model space entity with its colour resolved; empty when the entity has
  // nothing to draw or lies on a layer that is off or frozen.
  std::vector<Shape> Of(model::RecordId entity);

 private:
  struct Layer {
    uint32_t rgb = 0xFFFFFF;
    bool hidden = false;  // off or frozen
  };
  // How a shape's colour is found: fixed, or taken from the block reference that draws it
  // (ByBlock, and ByLayer on layer "0" inside a block).
  struct Styled {
    Shape shape;
    bool by_block = false;
  };

  void Collect(model::RecordId entity, bool in_block, int depth, std::vector<Styled>& out);
  void CollectInsert(model::RecordId entity, int depth, std::vector<Styled>& out);
  const std::vector<Styled>& BlockShapes(const std::string& name, int depth);
  const Layer& LayerNamed(const std::string& name) const;

  const model::Document& doc_;
  std::unordered_map<std::string, Layer> layers_;  // by upper-case name
  std::unordered_map<std::string, std::vector<Styled>> blocks_;  // by upper-case name
  std::unordered_map<std::string, bool> expanding_;  // blocks being expanded (self-reference)
};

}  // namespace veltor::workbench
