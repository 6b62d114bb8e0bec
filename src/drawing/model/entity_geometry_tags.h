// The tags of one record as views, for reading geometry without copying tag values.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/geometry/vec.h"
#include "drawing/model/document.h"

namespace veltor::model {

struct TagView {
  int code = 0;
  std::string_view value;
};

// Holds the tags of one record. Values of unchanged records of ASCII files are views into
// the file's bytes; other values (binary files, changed records) are copied into this
// object. Read() again reuses its buffers. Views stay valid until the next Read() or the
// object's end, as long as the record is not changed meanwhile.
class RecordTags {
 public:
  RecordTags() = default;
  RecordTags(const Document& doc, RecordId id) { Read(doc.store(), id); }
  RecordTags(const RecordTags&) = delete;
  RecordTags& operator=(const RecordTags&) = delete;

  void Read(const dxf::RecordStore& store, RecordId id);

  size_t size() const { return tags_.size(); }
  const TagView& operator[](size_t i) const { return tags_[i]; }
  std::vector<TagView>::const_iterator begin() const { return tags_.begin(); }
  std::vector<TagView>::const_iterator end() const { return tags_.end(); }

  // The first tag of `code`, or nullptr.
  const TagView* Find(int code) const;
  std::string_view Text(int code, std::string_view fallback = {}) const;
  double Double(int code, double fallback = 0.0) const;
  long long Int(int code, long long fallback = 0) const;
  // x from the first tag of `code`, y and z from the first of code + 10 and code + 20;
  // `fallback` when there is no x.
  geom::Vec3 Point(int code, geom::Vec3 fallback = geom::Vec3()) const;
  // The extrusion direction (210/220/230), world Z when absent.
  geom::Vec3 Normal() const { return Point(210, geom::Vec3{0, 0, 1}); }
  // Points of a repeated group: every tag of `code` with the code + 10 and code + 20 tags
  // right after it, in order.
  std::vector<geom::Vec3> Points(int code) const;
  // Every value of `code`, in order.
  std::vector<double> Values(int code) const;

 private:
  std::vector<TagView> tags_;
  std::string copies_;
  std::vector<std::pair<size_t, size_t>> copied_;  // (tag index, offset in copies_)
};

}  // namespace veltor::model
