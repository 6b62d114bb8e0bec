// Extents of many entities of one drawing, measuring each block definition once.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "drawing/geometry/extents.h"
#include "drawing/model/document.h"

namespace veltor::model {

class RecordTags;

// Measures entities as EntityExtents does, remembering for each block definition where it
// is and the extents of its contents, so that every reference to a block costs a transform
// of one box. The cache belongs to one document, which must outlive it; it starts over by
// itself when the document has changed since (Document::generation). Not thread-safe: one
// cache per thread.
class ExtentsCache {
 public:
  explicit ExtentsCache(const Document& doc);
  ~ExtentsCache();
  ExtentsCache(const ExtentsCache&) = delete;
  ExtentsCache& operator=(const ExtentsCache&) = delete;

  // World extents of an entity, or nothing for entities without measurable geometry.
  std::optional<geom::Extents> Measure(RecordId entity);

 private:
  enum class BlockState : uint8_t { kUnmeasured, kMeasuring, kMeasured };
  struct Block {
    RecordId begin = kNoRecord;  // the BLOCK record
    geom::Vec3 base;
    BlockState state = BlockState::kUnmeasured;
    std::optional<geom::Extents> content;
  };

  std::optional<geom::Extents> MeasureAt(RecordId entity, int depth);
  std::optional<geom::Extents> InsertExtents(RecordId entity, const RecordTags& t, int depth);
  // The block's contents in block coordinates, with its base point; nothing for a missing
  // block, an empty one, or one that contains itself.
  const Block* BlockContent(std::string_view raw_name, int depth);
  void IndexBlocks();
  RecordTags& Scratch(size_t slot);

  const Document& doc_;
  uint64_t generation_;
  bool blocks_indexed_ = false;
  std::unordered_map<std::string, Block> blocks_;  // by upper-case raw name
  // Reusable tag buffers: one per nesting depth, and one for sub-entities.
  std::vector<std::unique_ptr<RecordTags>> scratch_;
};

}  // namespace veltor::model
