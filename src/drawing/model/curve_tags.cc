#include "drawing/model/curve_tags.h"

#include <algorithm>
#include <cmath>

#include "drawing/model/create.h"

namespace veltor::model {

namespace {

// Index of the first extended data tag, or the end.
size_t ExtendedDataStart(const Tags& tags) {
  for (size_t i = 0; i < tags.size(); ++i)
    if (tags[i].code == 1001) return i;
  return tags.size();
}

size_t FindCode(const Tags& tags, int code, size_t from = 0) {
  const size_t end = ExtendedDataStart(tags);
  for (size_t i = from; i < end; ++i)
    if (tags[i].code == code) return i;
  return end;
}

// Sets the first tag of `code` before the extended data, or inserts it at `insert_at`.
void SetOrInsert(Tags& tags, int code, double value, size_t insert_at) {
  const size_t at = FindCode(tags, code);
  if (at < ExtendedDataStart(tags)) {
    tags[at].value = FormatNumber(value);
    return;
  }
  tags.insert(tags.begin() + static_cast<long>(std::min(insert_at, tags.size())), Tag{code, FormatNumber(value)});
}

// Index just after the subclass marker `name`, or after the last common tag when the drawing
// has no markers (then the first tag of `first_code`, or the extended data).
size_t SubclassStart(const Tags& tags, const char* name, int first_code) {
  for (size_t i = 0; i < tags.size(); ++i)
    if (tags[i].code == 100 && tags[i].value == name) return i + 1;
  return FindCode(tags, first_code);
}

// Removes the tags with codes in `codes` from `from` up to the extended data; returns where
// the first one was (or the extended data's start).
size_t RemoveCodes(Tags& tags, size_t from, const std::vector<int>& codes) {
  size_t end = ExtendedDataStart(tags), first = end;
  size_t out = from;
  for (size_t i = from; i < end; ++i) {
    if (std::find(codes.begin(), codes.end(), tags[i].code) != codes.end()) {
      first = std::min(first, out);
      continue;
    }
    if (out != i) tags[out] = std::move(tags[i]);
    ++out;
  }
  tags.erase(tags.begin() + static_cast<long>(out), tags.begin() + static_cast<long>(end));
  return std::min(first, out);
}

void SetFlag(Tags& tags, int code, long long value, size_t insert_at) {
  const size_t at = FindCode(tags, code);
  if (at < ExtendedDataStart(tags)) {
    tags[at].value = std::to_string(value);
    return;
  }
  tags.insert(tags.begin() + static_cast<long>(std::min(insert_at, tags.size())), Tag{code, std::to_string(value)});
}

long long FlagValue(const Tags& tags, int code) {
  const size_t at = FindCode(tags, code);
  return at < ExtendedDataStart(tags) ? ParseInt(tags[at].value) : 0;
}

double Degrees(double radians) {
  double d = std::fmod(radians * 180.0 / geom::kPi, 360.0);
  if (d < 0.0) d += 360.0;
  return d;
}

}  // namespace

void SetPointTags(Tags& tags, int code, const geom::Vec3& p) {
  const double xyz[3] = {p.x, p.y, p.z};
  size_t after = ExtendedDataStart(tags);
  for (int k = 0; k < 3; ++k) {
    const size_t at = FindCode(tags, code + 10 * k);
    if (at < ExtendedDataStart(tags)) {
      tags[at].value = FormatNumber(xyz[k]);
      after = at + 1;
    } else {
      tags.insert(tags.begin() + static_cast<long>(after), Tag{code + 10 * k, FormatNumber(xyz[k])});
      ++after;
    }
  }
}

void WriteLine(Tags& tags, const geom::Vec3& start, const geom::Vec3& end) {
  SetPointTags(tags, 10, start);
  SetPointTags(tags, 11, end);
}

void WriteArcAngles(Tags& tags, const geom::ArcSpan& arc) {
  SetOrInsert(tags, 50, Degrees(arc.start), ExtendedDataStart(tags));
  SetOrInsert(tags, 51, Degrees(arc.end), ExtendedDataStart(tags));
}

void CircleTagsToArc(Tags& tags, const geom::ArcSpan& arc) {
  tags[0].value = "ARC";
  const bool subclassed = std::any_of(tags.begin(), tags.end(), [](const Tag& t) { return t.code == 100; });
  if (subclassed) {
    const size_t at = ExtendedDataStart(tags);
    tags.insert(tags.begin() + static_cast<long>(at), Tag{100, "AcDbArc"});
  }
  WriteArcAngles(tags, arc);
}

void WriteLwPolyline(Tags& tags, const geom::LwPolyline& polyline) {
  const size_t start = SubclassStart(tags, "AcDbPolyline", 90);
  const bool constant_width = FindCode(tags, 43) < ExtendedDataStart(tags) &&
                              ParseDouble(tags[FindCode(tags, 43)].value) != 0.0;
  size_t at = RemoveCodes(tags, start, {10, 20, 40, 41, 42, 91});
  Tags vertices;
  for (size_t i = 0; i < polyline.vertices.size(); ++i) {
    const geom::BulgeVertex& v = polyline.vertices[i];
    vertices.push_back({10, FormatNumber(v.point.x)});
    vertices.push_back({20, FormatNumber(v.point.y)});
    if (!constant_width && !polyline.widths.empty()) {
      vertices.push_back({40, FormatNumber(polyline.widths[i].start)});
      vertices.push_back({41, FormatNumber(polyline.widths[i].end)});
    }
    if (v.bulge != 0.0) vertices.push_back({42, FormatNumber(v.bulge)});
  }
  tags.insert(tags.begin() + static_cast<long>(at), vertices.begin(), vertices.end());
  SetFlag(tags, 90, static_cast<long long>(polyline.vertices.size()), start);
  SetFlag(tags, 70, FlagValue(tags, 70) & ~1LL, start);
}

void WriteSpline(Tags& tags, const geom::SplineData& spline) {
  const size_t start = SubclassStart(tags, "AcDbSpline", 70);
  size_t at = RemoveCodes(tags, start, {10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33, 40, 41});
  const bool rational =
      std::any_of(spline.weights.begin(), spline.weights.end(), [](double w) { return w != 1.0; });
  Tags data;
  for (double k : spline.knots) data.push_back({40, FormatNumber(k)});
  if (rational)
    for (double w : spline.weights) data.push_back({41, FormatNumber(w)});
  for (const geom::Vec3& p : spline.control_points) {
    data.push_back({10, FormatNumber(p.x)});
    data.push_back({20, FormatNumber(p.y)});
    data.push_back({30, FormatNumber(p.z)});
  }
  tags.insert(tags.begin() + static_cast<long>(at), data.begin(), data.end());
  long long flags = FlagValue(tags, 70) & ~(1LL | 2LL | 4LL);
  if (rational) flags |= 4;
  SetFlag(tags, 70, flags, start);
  SetFlag(tags, 71, spline.degree, start + 1);
  SetFlag(tags, 72, static_cast<long long>(spline.knots.size()), start + 2);
  SetFlag(tags, 73, static_cast<long long>(spline.control_points.size()), start + 3);
  SetFlag(tags, 74, 0, start + 4);
}

Tags CopyableTags(Tags tags) {
  Tags out;
  out.reserve(tags.size());
  bool in_group = false, in_xdata = false, handle_dropped = false;
  for (Tag& t : tags) {
    in_xdata = in_xdata || t.code == 1001;
    if (in_xdata) {
      out.push_back(std::move(t));
      continue;
    }
    if (t.code == 102 && !t.value.empty() && t.value[0] == '{') {
      in_group = true;
      continue;
    }
    if (in_group) {
      if (t.code == 102) in_group = false;
      continue;
    }
    if (t.code == 5 && !handle_dropped) {
      handle_dropped = true;
      continue;
    }
    out.push_back(std::move(t));
  }
  return out;
}

}  // namespace veltor::model
