#include "drawing/model/extents_cache.h"

#include <algorithm>
#include <cmath>

#include "drawing/geometry/conic.h"
#include "drawing/geometry/ocs.h"
#include "drawing/geometry/polyline.h"
#include "drawing/geometry/text_box.h"
#include "drawing/geometry/wide_polyline.h"
#include "drawing/model/entity_geometry_readers.h"
#include "drawing/model/entity_geometry_tags.h"

namespace veltor::model {

namespace {

using geom::Extents;
using geom::Vec3;
using namespace geometry_internal;

// Deeper nesting of block references is taken as a reference cycle the reader missed.
constexpr int kMaxBlockDepth = 16;

std::optional<Extents> Some(const Extents& e) {
  if (!e.valid()) return std::nullopt;
  return e;
}

std::string UpperAscii(std::string_view s) {
  std::string out(s);
  for (char& c : out)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return out;
}

// The box of an entity with thickness (39) swept along its extrusion direction, as the CAD
// host draws it.
std::optional<Extents> WithThickness(std::optional<Extents> box, const RecordTags& t) {
  if (!box) return box;
  const double thickness = t.Double(39);
  if (thickness == 0.0) return box;
  return geom::Swept(*box, geom::ThicknessOffset(thickness, t.Normal()));
}

// The longest line of TEXT/MTEXT content, in characters, and the number of lines.
std::pair<size_t, size_t> TextMetrics(const Document& doc, std::string_view raw, bool mtext) {
  std::string decoded;
  std::string_view text = raw;
  // Plain ASCII without escapes reads the same in every code page.
  if (std::any_of(raw.begin(), raw.end(),
                  [](char c) { return static_cast<unsigned char>(c) >= 0x80 || c == '\\'; })) {
    decoded = doc.Decode(raw);
    text = decoded;
  }
  size_t longest = 0, current = 0, lines = 1;
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(text[i]);
    if (mtext && text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'P' || text[i + 1] == 'p')) {
      longest = std::max(longest, current);
      current = 0;
      ++lines;
      ++i;
      continue;
    }
    if ((c & 0xC0) != 0x80) ++current;  // count characters, not UTF-8 bytes
  }
  return {std::max(longest, current), lines};
}

std::optional<Extents> TextExtents(const Document& doc, const RecordTags& t, bool mtext) {
  geom::TextBoxInput in;
  in.height = t.Double(40, 1.0);
  in.normal = t.Normal();
  std::string chunks;
  std::string_view raw = t.Text(1);
  if (mtext) {
    // Long contents come as 250-byte chunks (3) before the final group 1.
    if (t.Find(3)) {
      for (const TagView& tag : t)
        if (tag.code == 3) chunks.append(tag.value);
      chunks.append(raw);
      raw = chunks;
    }
    auto [h, v] = geom::MTextAlignment(static_cast<int>(t.Int(71, 1)));
    in.h_align = h;
    in.v_align = v;
    in.wrap_width = t.Double(41);
    in.anchor = t.Point(10);
    in.rotation_deg = t.Double(50);
    if (t.Find(11)) {
      Vec3 dir = t.Point(11);
      in.rotation_deg = std::atan2(dir.y, dir.x) * 180.0 / M_PI;
    }
    // MTEXT positions are world coordinates; the box is built in the XY plane.
    in.normal = Vec3{0, 0, 1};
  } else {
    in.width_factor = t.Double(41, 1.0);
    in.rotation_deg = t.Double(50);
    int h72 = static_cast<int>(t.Int(72)), v73 = static_cast<int>(t.Int(73, t.Int(74)));
    auto [h, v] = geom::TextAlignment(h72, v73);
    in.h_align = h;
    in.v_align = v;
    bool aligned = h72 != 0 || v73 != 0;
    in.anchor = aligned && t.Find(11) ? t.Point(11) : t.Point(10);
    if (h72 == 3 || h72 == 5) {  // aligned and fit: the text spans its two points
      Vec3 a = t.Point(10), b = t.Point(11);
      in.text_width = std::hypot(b.x - a.x, b.y - a.y);
      in.anchor = a;
      in.h_align = geom::TextHAlign::kLeft;
    }
  }
  auto [chars, lines] = TextMetrics(doc, raw, mtext);
  if (chars == 0) return std::nullopt;
  in.char_count = chars;
  in.line_count = lines;
  std::optional<Extents> box = geom::EstimateTextBox(in).extents;
  return mtext ? box : WithThickness(box, t);
}

// MLINE: each element's line runs through vertex + miter direction * the element's first
// parameter at every vertex (41; stored already scaled by the MLINE scale and shifted by its
// justification). The outermost elements bound the rest; round caps of the style (MLINESTYLE
// 70: 64 at the start, 1024 at the end) add a half circle across them on an open multiline,
// unless the MLINE suppresses them (71: 4 start, 8 end).
std::optional<Extents> MlineExtents(const Document& doc, const RecordTags& t) {
  struct Station {
    Vec3 point, miter;
    double low = 0.0, high = 0.0;
    bool offsets = false;
  };
  std::vector<Station> stations;
  long long params_left = 0;
  bool first_param = false;
  auto offset = [&](double d) {
    Station& s = stations.back();
    s.low = s.offsets ? std::min(s.low, d) : d;
    s.high = s.offsets ? std::max(s.high, d) : d;
    s.offsets = true;
  };
  for (const TagView& tag : t) {
    if (tag.code == 11) {
      stations.emplace_back();
      stations.back().point.x = ParseDouble(tag.value);
      continue;
    }
    if (stations.empty()) continue;
    Station& s = stations.back();
    switch (tag.code) {
      case 21: s.point.y = ParseDouble(tag.value); break;
      case 31: s.point.z = ParseDouble(tag.value); break;
      case 13: s.miter.x = ParseDouble(tag.value); break;
      case 23: s.miter.y = ParseDouble(tag.value); break;
      case 33: s.miter.z = ParseDouble(tag.value); break;
      case 74:
        params_left = ParseInt(tag.value);
        first_param = params_left > 0;
        if (params_left <= 0) offset(0.0);  // an element without parameters: on the vertex
        break;
      case 41:
        if (params_left-- > 0 && first_param) {
          offset(ParseDouble(tag.value));
          first_param = false;
        }
        break;
      default: break;
    }
  }
  Extents box;
  for (const Station& s : stations) {
    if (!s.offsets) {
      box.Add(s.point);
      continue;
    }
    box.Add(s.point + s.miter * s.low);
    box.Add(s.point + s.miter * s.high);
  }
  const bool closed = (t.Int(71) & 2) != 0;
  if (stations.size() >= 2 && !closed) {
    dxf::Handle style_handle = 0;
    RecordId style = dxf::ParseHandle(t.Text(340), style_handle) ? doc.Find(style_handle) : kNoRecord;
    const long long flags = style != kNoRecord ? RecordTags(doc, style).Int(70) : 0;
    const Vec3 normal = geom::ArbitraryAxes(t.Normal()).z;
    auto cap = [&](const Station& s, const Vec3& outward) {
      const Vec3 top = s.point + s.miter * s.high, bottom = s.point + s.miter * s.low;
      geom::ConicArc half;
      half.center = (top + bottom) * 0.5;
      half.u = top - half.center;
      half.v = normal.Cross(half.u);
      if (half.v.Dot(outward) < 0.0) half.v = -half.v;
      half.start = 0.0;
      half.sweep = geom::kPi;
      if (half.u.LengthSquared() > 0.0) box.Add(geom::BoundsOf(half));
    };
    const size_t n = stations.size();
    const long long suppress = t.Int(71);  // 4: no start caps, 8: no end caps
    if ((flags & 64) && !(suppress & 4)) cap(stations[0], stations[0].point - stations[1].point);
    if ((flags & 1024) && !(suppress & 8))
      cap(stations[n - 1], stations[n - 1].point - stations[n - 2].point);
  }
  return Some(box);
}

}  // namespace

ExtentsCache::ExtentsCache(const Document& doc) : doc_(doc), generation_(doc.generation()) {}

ExtentsCache::~ExtentsCache() = default;

RecordTags& ExtentsCache::Scratch(size_t slot) {
  while (scratch_.size() <= slot) scratch_.push_back(std::make_unique<RecordTags>());
  return *scratch_[slot];
}

std::optional<Extents> ExtentsCache::Measure(RecordId entity) {
  if (doc_.generation() != generation_) {
    generation_ = doc_.generation();
    blocks_.clear();
    blocks_indexed_ = false;
  }
  return MeasureAt(entity, 0);
}

void ExtentsCache::IndexBlocks() {
  blocks_indexed_ = true;
  const RecordId start = doc_.SectionStart(Section::kBlocks);
  if (start == kNoRecord) return;
  const dxf::RecordStore& s = doc_.store();
  RecordTags t;  // the scratch buffers may hold the tags of the entity being measured
  for (RecordId id = s.at(start).next; id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).section != Section::kBlocks) break;
    if (s.TypeOf(id) != "BLOCK") continue;
    t.Read(s, id);
    Block block;
    block.begin = id;
    block.base = t.Point(10);
    blocks_.emplace(UpperAscii(t.Text(2)), block);  // the first of equal names counts
  }
}

const ExtentsCache::Block* ExtentsCache::BlockContent(std::string_view raw_name, int depth) {
  if (!blocks_indexed_) IndexBlocks();
  auto it = blocks_.find(UpperAscii(raw_name));
  if (it == blocks_.end()) return nullptr;
  Block& block = it->second;
  if (block.state == BlockState::kMeasured) return &block;
  if (block.state == BlockState::kMeasuring || depth > kMaxBlockDepth) return nullptr;
  block.state = BlockState::kMeasuring;
  Extents box;
  const dxf::RecordStore& s = doc_.store();
  for (RecordId id = s.at(block.begin).next; id != kNoRecord; id = s.at(id).next) {
    const std::string& type = s.TypeOf(id);
    if (type == "ENDBLK") break;
    // Attribute definitions show through the attributes of each reference.
    if (s.at(id).sub_entity || type == "ATTDEF" || type == "BLOCK") continue;
    if (auto e = MeasureAt(id, depth + 1)) box.Add(*e);
  }
  block.content = Some(box);
  block.state = BlockState::kMeasured;
  return &block;
}

std::optional<Extents> ExtentsCache::InsertExtents(RecordId entity, const RecordTags& t, int depth) {
  Extents box;
  const Block* block = BlockContent(t.Text(2), depth);
  if (block && block->content) {
    geom::BlockReference ref = ReadBlockReference(t);
    ref.base_point = block->base;
    const geom::Matrix3d m = geom::BlockTransform(ref);
    // A MINSERT repeats the block in rows and columns along the block's rotated axes; the
    // outermost copies bound the rest.
    const long long columns = std::max(1LL, t.Int(70, 1)), rows = std::max(1LL, t.Int(71, 1));
    const double column_step = t.Double(44), row_step = t.Double(45);
    const double angle = ref.rotation_deg * M_PI / 180.0;
    const Vec3 col_dir{std::cos(angle), std::sin(angle), 0}, row_dir{-std::sin(angle), std::cos(angle), 0};
    const geom::Matrix3d ocs = geom::OcsToWcs(ref.normal);
    const Extents content = m.Apply(*block->content);
    for (long long r : {0LL, rows - 1})
      for (long long c : {0LL, columns - 1}) {
        const Vec3 shift = ocs.ApplyVector(col_dir * (column_step * static_cast<double>(c)) +
                                           row_dir * (row_step * static_cast<double>(r)));
        box.Add(geom::Extents(content.min() + shift, content.max() + shift));
      }
  }
  const dxf::RecordStore& s = doc_.store();
  RecordTags& a = Scratch(2 * static_cast<size_t>(depth) + 1);
  for (RecordId sub = s.at(entity).next; sub != kNoRecord && s.at(sub).sub_entity; sub = s.at(sub).next) {
    if (s.TypeOf(sub) != "ATTRIB") continue;
    a.Read(s, sub);
    if (a.Int(70) & 1) continue;  // invisible attribute
    if (auto e = TextExtents(doc_, a, false)) box.Add(*e);
  }
  return Some(box);
}

std::optional<Extents> ExtentsCache::MeasureAt(RecordId entity, int depth) {
  const std::string& type = doc_.TypeOf(entity);
  RecordTags& t = Scratch(2 * static_cast<size_t>(depth));
  t.Read(doc_.store(), entity);
  if (type == "LINE") return WithThickness(Extents(t.Point(10), t.Point(11)), t);
  if (type == "POINT") return WithThickness(Extents(t.Point(10), t.Point(10)), t);
  if (type == "CIRCLE") return WithThickness(Some(geom::BoundsOf(ReadCircle(t))), t);
  if (type == "ARC") return WithThickness(Some(geom::BoundsOf(ReadArc(t))), t);
  if (type == "ELLIPSE") return Some(geom::BoundsOf(ReadEllipse(t)));
  if (type == "LWPOLYLINE") return WithThickness(Some(geom::BoundsOf(ReadLwPolyline(t))), t);
  if (type == "POLYLINE") {
    PolylineShape shape = ReadPolyline(doc_, entity, t, Scratch(2 * static_cast<size_t>(depth) + 1));
    if (shape.three_d || shape.mesh) return Some(geom::BoundsOf(shape.space));
    return WithThickness(Some(geom::BoundsOf(shape.flat)), t);
  }
  if (type == "SPLINE") {
    auto curve = ReadSpline(t);
    if (!curve) return std::nullopt;
    return Some(geom::BoundsOf(*curve));
  }
  if (type == "TEXT" || type == "ATTRIB" || type == "ATTDEF") return TextExtents(doc_, t, false);
  if (type == "MTEXT") return TextExtents(doc_, t, true);
  if (type == "INSERT") return InsertExtents(entity, t, depth);
  if (type == "MLINE") return MlineExtents(doc_, t);
  if (type == "LEADER") {
    Extents box;
    for (const Vec3& p : t.Points(10)) box.Add(p);
    return Some(box);
  }
  if (type == "SOLID" || type == "TRACE" || type == "3DFACE") {
    Extents box;
    const bool face = type == "3DFACE";
    const geom::Matrix3d to_wcs = geom::OcsToWcs(t.Normal());
    for (int code : {10, 11, 12, 13}) {
      Vec3 p = t.Point(code, t.Point(12));
      box.Add(face ? p : to_wcs.Apply(p));
    }
    return face ? Some(box) : WithThickness(Some(box), t);
  }
  if (type == "DIMENSION") {
    // The dimension's picture is an anonymous block drawn in world coordinates.
    const Block* block = BlockContent(t.Text(2), depth);
    return block ? block->content : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace veltor::model
