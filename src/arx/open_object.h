// Opens a drawing object for the length of a scope: open, read or change, close. Nothing stays
// open between calls to the host interface.
#pragma once

#include <string>

#include "arx/object_ids.h"

#include <dbmain.h>

namespace veltor::arx {

// Holds `T` open while it lives; empty when the id does not open (null, erased, of a closed
// drawing) or names an object of another class.
template <typename T>
class OpenObject {
 public:
  OpenObject(AcDbObjectId id, AcDb::OpenMode mode) {
    AcDbObject* object = nullptr;
    if (id.isNull() || acdbOpenObject(object, id, mode) != Acad::eOk || !object) return;
    if (object->isKindOf(T::desc()))
      object_ = static_cast<T*>(object);
    else
      object->close();
  }
  OpenObject(od::ObjectId id, AcDb::OpenMode mode) : OpenObject(ToAcDbIdOrNull(id), mode) {}
  ~OpenObject() {
    if (object_) object_->close();
  }
  OpenObject(const OpenObject&) = delete;
  OpenObject& operator=(const OpenObject&) = delete;

  explicit operator bool() const { return object_ != nullptr; }
  T* get() const { return object_; }
  T* operator->() const { return object_; }
  // Gives up the object without closing it (it was handed over and is the caller's now).
  T* release() {
    T* object = object_;
    object_ = nullptr;
    return object;
  }

 private:
  T* object_ = nullptr;
};

// A host-allocated string (layer(), text(), ...) as UTF-8, freed.
std::string TakeHostString(ACHAR* text);

}  // namespace veltor::arx
