// Who hears of changes the session's host objects make: the session forwards them to the
// reactors of the module and front ends.
#pragma once

#include "od/ids.h"

namespace veltor::session {

class ChangeListener {
 public:
  virtual ~ChangeListener() = default;
  virtual void Appended(od::ObjectId id) = 0;
  virtual void Modified(od::ObjectId id) = 0;
  virtual void Erased(od::ObjectId id, bool erased) = 0;
};

}  // namespace veltor::session
