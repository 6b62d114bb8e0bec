#include "drawing/model/entity_geometry_tags.h"

#include <functional>

namespace veltor::model {

void RecordTags::Read(const dxf::RecordStore& store, RecordId id) {
  tags_.clear();
  copies_.clear();
  copied_.clear();
  const std::string_view source = store.source();
  const char* first = source.data();
  const char* last = source.data() + source.size();
  const std::less<const char*> before;
  store.ForEachTag(id, [&](int code, std::string_view value) {
    // Views into the file's bytes live as long as the store; anything else is copied.
    if (!value.empty() && !before(value.data(), first) && !before(last, value.data() + value.size())) {
      tags_.push_back(TagView{code, value});
    } else {
      copied_.emplace_back(tags_.size(), copies_.size());
      copies_.append(value);
      tags_.push_back(TagView{code, std::string_view()});  // pointed at its copy below
    }
    return true;
  });
  // copies_ may have moved while growing: point the copied values at their final place.
  for (size_t i = 0; i < copied_.size(); ++i) {
    const size_t tag = copied_[i].first, offset = copied_[i].second;
    const size_t end = i + 1 < copied_.size() ? copied_[i + 1].second : copies_.size();
    tags_[tag].value = std::string_view(copies_.data() + offset, end - offset);
  }
}

const TagView* RecordTags::Find(int code) const {
  for (const TagView& t : tags_)
    if (t.code == code) return &t;
  return nullptr;
}

std::string_view RecordTags::Text(int code, std::string_view fallback) const {
  const TagView* t = Find(code);
  return t ? t->value : fallback;
}

double RecordTags::Double(int code, double fallback) const {
  const TagView* t = Find(code);
  return t ? ParseDouble(t->value) : fallback;
}

long long RecordTags::Int(int code, long long fallback) const {
  const TagView* t = Find(code);
  return t ? ParseInt(t->value) : fallback;
}

geom::Vec3 RecordTags::Point(int code, geom::Vec3 fallback) const {
  const TagView* x = Find(code);
  if (!x) return fallback;
  return geom::Vec3{ParseDouble(x->value), Double(code + 10), Double(code + 20)};
}

std::vector<geom::Vec3> RecordTags::Points(int code) const {
  std::vector<geom::Vec3> out;
  for (size_t i = 0; i < tags_.size(); ++i) {
    if (tags_[i].code != code) continue;
    geom::Vec3 p{ParseDouble(tags_[i].value), 0, 0};
    if (i + 1 < tags_.size() && tags_[i + 1].code == code + 10) p.y = ParseDouble(tags_[i + 1].value);
    if (i + 2 < tags_.size() && tags_[i + 2].code == code + 20) p.z = ParseDouble(tags_[i + 2].value);
    out.push_back(p);
  }
  return out;
}

std::vector<double> RecordTags::Values(int code) const {
  std::vector<double> out;
  for (const TagView& t : tags_)
    if (t.code == code) out.push_back(ParseDouble(t.value));
  return out;
}

}  // namespace veltor::model
