// A dockable palette the module asks the front end to show (the command launcher, the table
// grid). Front ends know the concrete models they can render.
#pragma once

#include <string>

namespace veltor::od {

class Palette {
 public:
  virtual ~Palette() = default;
  // The palette's window name ("VELTOR_CTL", ...).
  virtual std::string Name() const = 0;
};

}  // namespace veltor::od
