// Documents: the document manager, locking, queued command strings, its reactor.
// References: "OREFMAC AcApDocument" (lock modes, the current database),
// https://help.autodesk.com/cloudhelp/2017/ENU/OARXMAC-RefGuide/files/OREFMAC-AcApDocument.html
// "Document Management Classes" (acDocManager, AcApDocumentIterator, AcApDocManagerReactor),
// https://help.autodesk.com/cloudhelp/2021/ENU/OARX-DevGuide/files/GUID-DC88C34A-E7A3-4BD6-BD7F-A3CB4F7C9716.htm
// (member signatures not confirmed: lockDocument, unlockDocument, sendStringToExecute,
// newAcApDocumentIterator, the reactor callbacks, the lock mode values).
#pragma once

#include "acadstrc.h"
#include "dbmain.h"

struct AcAp {
  enum DocLockMode {
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kProtectedAutoWrite = 0x14,
    kRead = 0x20,
    kXWrite = 0x40,
  };
};

class AcApDocument : public AcRxObject {
 public:
  const ACHAR* fileName() const;
  const ACHAR* docTitle() const;
  AcDbDatabase* database() const;
  AcAp::DocLockMode myLockMode() const;
};

class AcApDocumentIterator {
 public:
  virtual ~AcApDocumentIterator();
  virtual bool done();
  virtual void step();
  virtual AcApDocument* document();
};

class AcApDocManagerReactor : public AcRxObject {
 public:
  virtual void documentActivated(AcApDocument* pActivatedDoc);
  virtual void documentToBeDestroyed(AcApDocument* pDocToDestroy);
};

class AcApDocManager : public AcRxObject {
 public:
  virtual AcApDocument* curDocument() const;
  virtual AcApDocument* mdiActiveDocument() const;
  virtual Acad::ErrorStatus lockDocument(AcApDocument* pDoc, AcAp::DocLockMode mode = AcAp::kWrite,
                                         const ACHAR* pGlobalCmdName = nullptr,
                                         const ACHAR* pLocalCmdName = nullptr,
                                         bool prompt = true);
  virtual Acad::ErrorStatus unlockDocument(AcApDocument* pDoc);
  virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* pAcTargetDocument,
                                                const ACHAR* pszExecute, bool bActivate = true,
                                                bool bWrapUpInactiveDoc = false,
                                                bool bEchoString = true);
  virtual AcApDocumentIterator* newAcApDocumentIterator();
  virtual void addReactor(AcApDocManagerReactor* pReactor);
  virtual void removeReactor(AcApDocManagerReactor* pReactor);
};
AcApDocManager* acDocManagerPtr();
#define acDocManager (acDocManagerPtr())
