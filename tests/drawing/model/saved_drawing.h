// Saving a drawing and reading it back, and checking that a save rewrote only what changed.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "../dxf/test_files.h"
#include "drawing/model/document.h"

namespace veltor::testing {

inline std::unique_ptr<model::Document> OpenOrDie(const std::string& path) {
  auto doc = model::Document::Open(path);
  EXPECT_TRUE(doc.ok()) << doc.message();
  return doc.ok() ? std::move(doc.value()) : nullptr;
}

// Saves `doc` as `name` in `dir` and opens the saved file.
inline std::unique_ptr<model::Document> SaveAndReload(model::Document& doc, const ScratchDir& dir,
                                                      const std::string& name = "saved.dxf") {
  Status saved = doc.Save(dir.File(name));
  EXPECT_TRUE(saved.ok()) << saved.message();
  return OpenOrDie(dir.File(name));
}

inline std::string_view RecordBytes(const dxf::RecordStore& store, dxf::RecordId id) {
  return store.RecordBytes(store.at(id));
}

inline size_t ChangedRecords(const dxf::RecordStore& store) {
  size_t n = 0;
  for (dxf::RecordId id = store.first(); id != dxf::kNoRecord; id = store.at(id).next)
    n += store.IsChanged(id) ? 1 : 0;
  return n;
}

// `saved` is `doc` after a save and reload: the same records in the same order, every record
// `doc` did not change holding its original bytes, every other holding `doc`'s tags.
inline void ExpectSavedAsInMemory(const model::Document& doc, const model::Document& saved) {
  const dxf::RecordStore& a = doc.store();
  const dxf::RecordStore& b = saved.store();
  dxf::RecordId x = a.first(), y = b.first();
  size_t index = 0;
  for (; x != dxf::kNoRecord && y != dxf::kNoRecord; x = a.at(x).next, y = b.at(y).next, ++index) {
    ASSERT_EQ(a.at(x).handle, b.at(y).handle) << "record " << index;
    if (a.IsChanged(x))
      ASSERT_EQ(a.TagsOf(x), b.TagsOf(y)) << "record " << index;
    else
      ASSERT_EQ(RecordBytes(a, x), RecordBytes(b, y)) << "record " << index;
  }
  EXPECT_EQ(x, dxf::kNoRecord);
  EXPECT_EQ(y, dxf::kNoRecord);
}

}  // namespace veltor::testing
