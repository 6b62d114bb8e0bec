// Block references' names and attributes as the attribute commands see them.
#include "drawing/dxf/encoding.h"
#include "drawing/model/blocks.h"
#include "drawing/session/embedded_database.h"
#include "drawing/session/object_ids.h"

namespace veltor::session {

std::optional<std::string> EmbeddedDatabase::EffectiveBlockName(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord || doc_.TypeOf(record) != "INSERT") return std::nullopt;
  return model::EffectiveBlockName(doc_, record);
}

std::vector<od::AttributeFacts> EmbeddedDatabase::Attributes(od::EntityId block_reference) const {
  std::vector<od::AttributeFacts> out;
  model::RecordId record = Record(block_reference);
  if (record == model::kNoRecord || doc_.TypeOf(record) != "INSERT") return out;
  for (model::AttributeInfo& a : model::Attributes(doc_, record))
    out.push_back({IdOf(doc_, a.id), std::move(a.tag), std::move(a.text)});
  return out;
}

Status EmbeddedDatabase::SetAttributeText(od::ObjectId attribute, const std::string& text) {
  model::RecordId record = Record(attribute);
  if (record == model::kNoRecord || doc_.TypeOf(record) != "ATTRIB")
    return Status::Error("attribute: it cannot be opened");
  model::SetAttributeText(doc_, record, text);
  listener_.Modified(attribute);
  return Status::Ok();
}

namespace {

// The code page the drawing names, even for drawings whose own text is UTF-8.
std::unique_ptr<dxf::TextCodec> AnsiCodec(const model::Document& doc) {
  auto page = doc.HeaderVar("$DWGCODEPAGE");
  std::string code_page = page && !page->empty() ? (*page)[0].value : "ANSI_1252";
  return std::make_unique<dxf::TextCodec>(false, code_page);
}

}  // namespace

std::string EmbeddedDatabase::ToAnsiCodePage(const std::string& utf8) const {
  // The codec escapes control characters, so only the runs between tabs and line breaks go
  // through it.
  std::unique_ptr<dxf::TextCodec> codec = AnsiCodec(doc_);
  std::string out;
  size_t start = 0;
  while (start <= utf8.size()) {
    size_t end = utf8.find_first_of("\t\r\n", start);
    if (end == std::string::npos) end = utf8.size();
    out += codec->Encode(std::string_view(utf8).substr(start, end - start));
    if (end < utf8.size()) out += utf8[end];
    start = end + 1;
  }
  return out;
}

std::string EmbeddedDatabase::FromAnsiCodePage(const std::string& bytes) const {
  return AnsiCodec(doc_)->Decode(bytes);
}

}  // namespace veltor::session
