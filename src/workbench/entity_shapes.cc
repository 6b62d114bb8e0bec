#include "workbench/entity_shapes.h"

#include <cmath>

#include "drawing/geometry/flatten.h"
#include "drawing/geometry/matrix.h"
#include "drawing/geometry/ocs.h"
#include "drawing/geometry/text_box.h"
#include "drawing/model/blocks.h"
#include "drawing/model/entity_geometry.h"
#include "drawing/model/entity_geometry_readers.h"
#include "drawing/model/entity_geometry_tags.h"
#include "drawing/model/tables.h"
#include "drawing/session/mtext_plain.h"
#include "workbench/aci_colors.h"
#include "workbench/hatch_outline.h"

namespace veltor::workbench {

namespace {

// Segments per full turn are four times this: smooth at screen sizes, cheap for big drawings.
constexpr int kPrecision = 12;
// Blocks nested deeper than this are not drawn (a drawing may nest them without end).
constexpr int kMaxDepth = 16;
// One entity draws at most this many shapes: blocks of blocks multiply, and a drawing must
// not be able to exhaust memory that way.
constexpr size_t kMaxShapes = 1000000;

using geom::Vec2;
using geom::Vec3;
using model::RecordId;
using model::RecordTags;

std::string Upper(std::string text) {
  for (char& c : text)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return text;
}

Vec2 Xy(const Vec3& p) { return {p.x, p.y}; }

Shape PathShape(const std::vector<Vec3>& points, bool closed) {
  Shape shape;
  shape.kind = Shape::Kind::kPath;
  shape.closed = closed;
  shape.points.reserve(points.size());
  for (const Vec3& p : points) shape.points.push_back(Xy(p));
  return shape;
}

// TEXT's special characters: "%%d" degree, "%%c" diameter, "%%p" plus-minus, "%%%" percent;
// the underline and overline switches ("%%u", "%%o") show nothing.
std::string TextCodes(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text.compare(i, 2, "%%") != 0 || i + 2 >= text.size()) {
      out += text[i];
      continue;
    }
    char code = static_cast<char>(std::tolower(static_cast<unsigned char>(text[i + 2])));
    if (code == 'd') out += "\xC2\xB0";
    else if (code == 'c') out += "\xE2\x8C\x80";
    else if (code == 'p') out += "\xC2\xB1";
    else if (code == '%') out += '%';
    else if (code != 'u' && code != 'o') out += text.substr(i, 3);
    i += 2;
  }
  return out;
}

// TEXT and ATTRIB: the text at its insertion point (10), in its OCS, with its height and
// rotation (degrees).
Shape TextShape(const model::Document& doc, const RecordTags& t) {
  Shape shape;
  shape.kind = Shape::Kind::kText;
  Vec3 at = t.Point(10);
  double rotation = t.Double(50) * M_PI / 180.0;
  const Vec3 normal = t.Normal();
  if (!geom::IsWorldNormal(normal)) {
    const geom::Matrix3d to_wcs = geom::OcsToWcs(normal);
    at = to_wcs.Apply(at);
    const Vec3 direction = to_wcs.ApplyVector({std::cos(rotation), std::sin(rotation), 0});
    rotation = std::atan2(direction.y, direction.x);
  }
  shape.points.push_back(Xy(at));
  shape.height = t.Double(40, 1.0);
  shape.rotation = rotation;
  shape.text = TextCodes(doc.Decode(t.Text(1)));
  return shape;
}

// MTEXT: its plain text placed by its attachment point (71), each line 5/3 of the height
// below the one before, the width estimated as geom::EstimateTextBox does.
Shape MTextShape(const model::Document& doc, const RecordTags& t) {
  Shape shape;
  shape.kind = Shape::Kind::kText;
  std::string raw;
  for (const model::TagView& tag : t)
    if (tag.code == 3 || tag.code == 1) raw += tag.value;
  shape.text = session::MTextPlainText(doc.Decode(raw));
  shape.height = t.Double(40, 1.0);
  const Vec3 x_dir = t.Point(11, {0, 0, 0});
  shape.rotation = (x_dir.x != 0 || x_dir.y != 0) ? std::atan2(x_dir.y, x_dir.x) : t.Double(50);
  size_t lines = 1, longest = 0, current = 0;
  for (char c : shape.text) {
    if (c == '\n') {
      ++lines;
      current = 0;
    } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
      longest = std::max(longest, ++current);
    }
  }
  const double h = shape.height;
  const double width = geom::kGlyphWidthRatio * h * static_cast<double>(longest);
  const double tall = h + static_cast<double>(lines - 1) * geom::kDefaultLineSpacing * h;
  const int attachment = static_cast<int>(t.Int(71, 1));
  const int column = (attachment >= 1 && attachment <= 9) ? (attachment - 1) % 3 : 0;
  const int row = (attachment >= 1 && attachment <= 9) ? (attachment - 1) / 3 : 0;
  const double dx = column == 0 ? 0.0 : column == 1 ? -width / 2 : -width;
  const double dy = row == 0 ? -h : row == 1 ? tall / 2 - h : tall - h;
  const Vec2 along{std::cos(shape.rotation), std::sin(shape.rotation)};
  const Vec2 up{-along.y, along.x};
  shape.points.push_back(Xy(t.Point(10)) + along * dx + up * dy);
  return shape;
}

void Transform(Shape& shape, const geom::Matrix3d& m) {
  for (Vec2& p : shape.points) p = Xy(m.Apply(Vec3(p.x, p.y, 0)));
  if (shape.kind != Shape::Kind::kText) return;
  const Vec3 along = m.ApplyVector({std::cos(shape.rotation), std::sin(shape.rotation), 0});
  const Vec3 up = m.ApplyVector({-std::sin(shape.rotation), std::cos(shape.rotation), 0});
  shape.rotation = std::atan2(along.y, along.x);
  shape.height *= std::hypot(up.x, up.y);
}

// SOLID, TRACE and 3DFACE: their corner outline (a SOLID's third and fourth corners cross).
Shape FaceShape(const RecordTags& t, bool solid) {
  Vec3 c[4] = {t.Point(10), t.Point(11), t.Point(12), t.Point(13, t.Point(12))};
  if (solid) std::swap(c[2], c[3]);
  Shape shape = PathShape({c[0], c[1], c[2], c[3]}, true);
  if (solid && !geom::IsWorldNormal(t.Normal())) Transform(shape, geom::OcsToWcs(t.Normal()));
  return shape;
}

}  // namespace

EntityShapes::EntityShapes(const model::Document& doc) : doc_(doc) {
  for (const model::LayerInfo& layer : model::Layers(doc)) {
    Layer& entry = layers_[Upper(layer.name)];
    entry.rgb = AciToRgb(std::abs(layer.color));
    entry.hidden = layer.off || layer.frozen;
  }
}

const EntityShapes::Layer& EntityShapes::LayerNamed(const std::string& name) const {
  static const Layer kUnknown;
  auto it = layers_.find(Upper(name));
  return it == layers_.end() ? kUnknown : it->second;
}

std::vector<Shape> EntityShapes::Of(RecordId entity) {
  std::vector<Styled> styled;
  Collect(entity, false, 0, styled);
  std::vector<Shape> shapes;
  shapes.reserve(styled.size());
  // ByBlock outside a block draws in the default colour.
  for (Styled& s : styled) {
    if (s.by_block) s.shape.rgb = 0xFFFFFF;
    shapes.push_back(std::move(s.shape));
  }
  return shapes;
}

void EntityShapes::Collect(RecordId entity, bool in_block, int depth, std::vector<Styled>& out) {
  const dxf::RecordStore& store = doc_.store();
  if (store.at(entity).erased) return;
  const std::string& type = doc_.TypeOf(entity);
  RecordTags t(doc_, entity);
  const std::string layer_name = doc_.Decode(t.Text(8, "0"));
  const bool on_layer_zero = in_block && layer_name == "0";
  const Layer& layer = LayerNamed(layer_name);
  if (layer.hidden && !on_layer_zero) return;

  Styled style;
  const long long color = t.Int(62, 256);
  if (const model::TagView* true_color = t.Find(420)) {
    style.shape.rgb = static_cast<uint32_t>(model::ParseInt(true_color->value)) & 0xFFFFFF;
  } else if (color == 0 || (color == 256 && on_layer_zero)) {
    style.by_block = true;
  } else if (color == 256) {
    style.shape.rgb = layer.rgb;
  } else {
    style.shape.rgb = AciToRgb(static_cast<int>(std::llabs(color)));
  }
  auto add = [&](Shape shape) {
    shape.rgb = style.shape.rgb;
    out.push_back({std::move(shape), style.by_block});
  };

  if (type == "INSERT") {
    std::vector<Styled> inserted;
    CollectInsert(entity, depth, inserted);
    for (Styled& s : inserted) {
      // What the block leaves to its reference takes this reference's colour.
      if (s.by_block) {
        s.shape.rgb = style.shape.rgb;
        s.by_block = style.by_block;
      }
      out.push_back(std::move(s));
    }
  } else if (type == "DIMENSION") {
    // A dimension draws the anonymous block it names, whose entities are already placed in
    // world coordinates.
    if (depth >= kMaxDepth) return;
    for (const Styled& s : BlockShapes(model::BlockName(doc_, entity), depth)) {
      if (out.size() >= kMaxShapes) break;
      Styled copy = s;
      if (copy.by_block) {
        copy.shape.rgb = style.shape.rgb;
        copy.by_block = style.by_block;
      }
      out.push_back(std::move(copy));
    }
  } else if (type == "TEXT" || type == "ATTRIB") {
    if (type == "ATTRIB" && (t.Int(70) & 1)) return;  // invisible attribute
    add(TextShape(doc_, t));
  } else if (type == "MTEXT") {
    add(MTextShape(doc_, t));
  } else if (type == "POINT") {
    Shape point;
    point.kind = Shape::Kind::kPoint;
    point.points.push_back(Xy(t.Point(10)));
    add(std::move(point));
  } else if (type == "HATCH") {
    for (Shape& outline : HatchOutlines(t, kPrecision)) add(std::move(outline));
  } else if (type == "SOLID" || type == "TRACE" || type == "3DFACE") {
    add(FaceShape(t, type != "3DFACE"));
  } else if (auto path = model::FlattenEntity(doc_, entity, kPrecision)) {
    if (!path->points.empty()) add(PathShape(path->points, path->closed));
  }
}

void EntityShapes::CollectInsert(RecordId entity, int depth, std::vector<Styled>& out) {
  if (depth >= kMaxDepth) return;
  RecordTags t(doc_, entity);
  const std::string name = model::BlockName(doc_, entity);
  const std::vector<Styled>& block = BlockShapes(name, depth);
  if (!block.empty()) {
    geom::BlockReference ref = model::geometry_internal::ReadBlockReference(t);
    RecordId begin = model::FindBlockBegin(doc_, name);
    if (begin != model::kNoRecord) ref.base_point = RecordTags(doc_, begin).Point(10);
    const geom::Matrix3d m = geom::BlockTransform(ref);
    if (out.size() + block.size() > kMaxShapes) return;
    for (const Styled& s : block) {
      Styled copy = s;
      Transform(copy.shape, m);
      out.push_back(std::move(copy));
    }
  }
  // Attributes follow the reference in the file and are drawn where they stand.
  const dxf::RecordStore& store = doc_.store();
  for (RecordId sub = store.at(entity).next; sub != model::kNoRecord && store.at(sub).sub_entity;
       sub = store.at(sub).next)
    if (doc_.TypeOf(sub) == "ATTRIB") Collect(sub, true, depth + 1, out);
}

const std::vector<EntityShapes::Styled>& EntityShapes::BlockShapes(const std::string& name,
                                                                   int depth) {
  static const std::vector<Styled> kNone;
  const std::string key = Upper(name);
  if (auto it = blocks_.find(key); it != blocks_.end()) return it->second;
  if (expanding_[key]) return kNone;  // a block that contains itself
  expanding_[key] = true;
  std::vector<Styled> shapes;
  const dxf::RecordStore& store = doc_.store();
  for (RecordId id : model::BlockEntities(doc_, name)) {
    const std::string& type = store.TypeOf(id);
    if (type == "ATTDEF" || type == "BLOCK") continue;
    Collect(id, true, depth + 1, shapes);
  }
  expanding_[key] = false;
  return blocks_[key] = std::move(shapes);
}

}  // namespace veltor::workbench
