// The editor and its reactor. Reference: "Reactor Classes" (an editor reactor's only notifier
// is the AcEditor object),
// https://help.autodesk.com/cloudhelp/2018/KOR/OARX-DevGuide/files/GUID-BB1A5826-9584-43A5-A1D5-BF64211EE7EA.htm
// and "Using Reactors" (AcEditorReactor),
// https://help.autodesk.com/cloudhelp/2025/ESP/OARXMAC-DevGuide/files/GUID-8C93E824-4974-4FF7-9278-5BFE5318340F.htm
// (pickfirstModified, AcEditor::addReactor/removeReactor and acedEditor are not confirmed).
#pragma once

#include "rxobject.h"

class AcEditorReactor : public AcRxObject {
 public:
  virtual void pickfirstModified();
};

class AcEditor : public AcRxObject {
 public:
  virtual void addReactor(AcEditorReactor* reactor);
  virtual void removeReactor(AcEditorReactor* reactor);
};
AcEditor* acedEditorPtr();
#define acedEditor (acedEditorPtr())
